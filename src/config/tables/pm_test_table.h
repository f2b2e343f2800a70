// All power-management tests that have options, in the order of a written file.
#pragma once

#include <span>
#include <string_view>

#include "config/tables/option_table.h"
#include "vexor/config/pm_tests.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {

struct PmTestRow : RecordRow<_GLOBALPM_XMLCFG, _PM_TEST_NODE> {
  // How the options stand in the test's element.
  enum class Shape : std::uint8_t {
    kElements,   // <name>text</name>
    kArguments,  // <arg name="name" val="text"/>
  };
  VEXOR_PM_TEST_ID id = PM_TEST_MAX;
  Shape shape = Shape::kElements;
  std::string_view knob_hint;                // what the writer puts into KnobHint first
  bool ConfigRecord::*from_older = nullptr;  // set by a reading under the older name
};

inline constexpr std::size_t kPmTestCount = 31;

// Comments at the head of the section, for options that nearly every test has.
inline constexpr HintedName kPmTestHints[] = {
    {"Log_Level",
     {.kind = Hint::Kind::kSingle, .texts = {"No-Log,Critical,Error,Warning,Information,Debug"}}},
    {"TestMode", {.kind = Hint::Kind::kSingle, .texts = {"Verify;Exercise"}}},
};

std::span<const PmTestRow> PmTests();

// Returns the test's row, null for an id without a section.
const PmTestRow* FindPmTest(VEXOR_PM_TEST_ID id);

}  // namespace vexor
