// Rows of the options that most tests share. The tests' tables include them, some with changes.
#pragma once

#include "config/tables/option_table.h"
#include "vexor/config/pm_tests.h"

namespace vexor {

// Sets an empty SwitchTime to the sum of ActiveTime and InStateTime.
void DeriveSwitchTime(_PM_TEST_NODE& test);

namespace common {

using Row = OptionOf<_PM_TEST_NODE>;

// clang-format off
inline constexpr Row kPxMxCxScope{.name = "PxMxCxScope", .text = &_PM_TEST_NODE::PxMxCxScope,
    .syntax = Syntax::kScope, .reset = "100:0:0",
    .about = "Percentages of packages, modules and cores that take part."};
inline constexpr Row kPxMxCxTxScope{.name = "PxMxCxTxScope", .text = &_PM_TEST_NODE::PxMxCxTxScope,
    .syntax = Syntax::kScope,
    .about = "Percentages of packages, modules, cores and threads that take part.",
    .flow = Flow::kReadOnly};
inline constexpr Row kPkgAffinity{.name = "PkgAffinity", .text = &_PM_TEST_NODE::PkgAffinity,
    .syntax = Syntax::kPkgAffinity, .reset = "All", .about = "Packages that run the test."};
inline constexpr Row kModuleAffinity{.name = "ModuleAffinity",
    .text = &_PM_TEST_NODE::ModuleAffinity, .syntax = Syntax::kUnitAffinity, .reset = "All",
    .about = "Modules that run the test."};
inline constexpr Row kCoreAffinity{.name = "CoreAffinity", .text = &_PM_TEST_NODE::CoreAffinity,
    .syntax = Syntax::kUnitAffinity, .reset = "All", .about = "Cores that run the test."};
inline constexpr Row kActiveTime{.name = "ActiveTime", .text = &_PM_TEST_NODE::ActiveTime,
    .syntax = Syntax::kDuration, .reset = "Invalid",
    .about = "Active time between two state entries."};
inline constexpr Row kInStateTime{.name = "InStateTime", .text = &_PM_TEST_NODE::InStateTime,
    .syntax = Syntax::kDuration, .reset = "Invalid",
    .about = "Time to stay in the requested state."};
inline constexpr Row kSwitchTime{.name = "SwitchTime", .text = &_PM_TEST_NODE::SwitchTime,
    .syntax = Syntax::kDuration, .reset = "Invalid", .about = "Time between two state switches."};
inline constexpr Row kExeCycles{.name = "ExeCycles", .text = &_PM_TEST_NODE::ExeCycles,
    .syntax = Syntax::kExeCycles, .reset = "100",
    .about = "Number of test cycles, or duration of the test."};
inline constexpr Row kConfigLoop{.name = "ConfigLoop", .text = &_PM_TEST_NODE::ConfigLoop,
    .syntax = Syntax::kCount, .reset = "1", .about = "Number of configuration loops."};
inline constexpr Row kStartDelayTime{.name = "StartDelayTime",
    .text = &_PM_TEST_NODE::StartDelayTime, .syntax = Syntax::kDuration, .reset = "msec:10",
    .about = "Delay before the test starts."};
inline constexpr Row kFailTolerance{.name = "FailTolerance", .text = &_PM_TEST_NODE::FailTolerance,
    .syntax = Syntax::kCount, .reset = "5",
    .about = "Number of failures tolerated before the test fails."};
inline constexpr Row kSanityEarlyExit{.name = "SanityEarlyExit",
    .text = &_PM_TEST_NODE::SanityEarlyExit, .syntax = Syntax::kCount, .reset = "0",
    .about = "Whether a failed sanity check ends the test early."};
inline constexpr Row kTestMode{.name = "TestMode", .text = &_PM_TEST_NODE::TestMode,
    .syntax = Syntax::kTestMode, .reset = "Verify",
    .about = "Whether the test verifies the states or only exercises them."};
inline constexpr Row kLogLevel{.name = "Log_Level", .text = &_PM_TEST_NODE::Log_Level,
    .syntax = Syntax::kLogLevel, .reset = "Information",
    .about = "Least severe level that the test logs."};
inline constexpr Row kKnobs{.name = "KNOBS", .text = &_PM_TEST_NODE::KNOBS,
    .syntax = Syntax::kKnobs, .about = "Knob settings passed to the test, joined by \";\"."};

// KNOBS with the record's KnobHint as hint comment.
inline constexpr Row kKnobsOfRecord = kKnobs.HintedBy({.kind = Hint::Kind::kRecord});

// KNOBS of a test with knobs of its own, which are also listed in the hint comment.
constexpr Row KnobsOf(std::string_view words) {
  return kKnobs.OfWords(words).HintedBy({.kind = Hint::Kind::kOptions, .texts = {words}});
}

// The switch time of tests that derive a missing one. Options are stored in row order, so this row
// must follow ActiveTime and InStateTime. It must precede other rows for the same members, such as
// RC0Time: the sum is that of the common options.
inline constexpr Row kDerivedSwitchTime =
    kSwitchTime.AdjustedBy(kAdjustment<DeriveSwitchTime>)
        .Meaning(
            "Time between two state switches; empty for the sum of active and in-state time.");

// All members of the common node, for the reset of a test record: a test's own table lacks those
// that the test neither reads nor writes.
inline constexpr auto kAllFields = Finish(Options<_PM_TEST_NODE>({
    kPxMxCxScope,
    kPxMxCxTxScope,
    kPkgAffinity,
    kModuleAffinity,
    kCoreAffinity,
    kActiveTime,
    kInStateTime,
    kSwitchTime,
    kExeCycles,
    kConfigLoop,
    kStartDelayTime,
    kFailTolerance,
    kSanityEarlyExit,
    kTestMode,
    kLogLevel,
    kKnobs,
    {.name = "KnobHint", .text = &_PM_TEST_NODE::KnobHint, .about = "Hint comment of KNOBS.",
     .flow = Flow::kResetOnly},
    {.name = "AllOptions", .text = &_PM_TEST_NODE::AllOptions, .about = "All options in one text.",
     .flow = Flow::kResetOnly},
    {.name = "SpareTime", .text = &_PM_TEST_NODE::SpareTime, .syntax = Syntax::kDuration,
     .reset = "msec:10", .about = "Spare time.", .flow = Flow::kResetOnly},
}));
// clang-format on

// Which affinities a test writes. It reads all of them.
enum class Writes : std::uint8_t { kNoAffinity, kPackages, kAllAffinities };

// The common options that select where a test runs.
template <class Record>
consteval auto Affinities(Writes writes) {
  const Flow packages = writes == Writes::kNoAffinity ? Flow::kReadOnly : Flow::kReadWrite;
  const Flow others = writes == Writes::kAllAffinities ? Flow::kReadWrite : Flow::kReadOnly;
  return Options<Record>({
      kPkgAffinity.Flowing(packages),
      kModuleAffinity.Flowing(others),
      kCoreAffinity.Flowing(others),
      kPxMxCxScope.Flowing(others),
  });
}

// The common options that control how a test runs.
template <class Record>
consteval auto Control(Row cycles = kExeCycles, Row tolerance = kFailTolerance,
                       Row early_exit = kSanityEarlyExit) {
  return Options<Record>({
      cycles,
      kStartDelayTime,
      kConfigLoop,
      tolerance,
      early_exit,
      kTestMode,
      kLogLevel,
      kKnobsOfRecord,
  });
}

}  // namespace common
}  // namespace vexor
