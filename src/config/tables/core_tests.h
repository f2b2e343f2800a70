// The tests of the "CORE" and "ICE" groups.
#pragma once

#include "config/tables/common_node.h"

namespace vexor {

inline constexpr std::string_view kPerStateTolerances = "C1:5;C3:5;C6:5;C7:5;C8:5;C9:5;C10:5";
inline constexpr std::string_view kPerStateExits = "C1:0;C3:0;C6:0;C7:0;C8:0;C9:0;C10:0";
inline constexpr std::string_view kPerStateNoCores = "C1:[];C3:[];C6:[];C7:[];C8:[];C9:[];C10:[]";

// clang-format off
inline constexpr auto kCstatesOptions = Finish(Concatenate(
    common::Affinities<_CSTATES_CFG>(common::Writes::kAllAffinities),
    common::Control<_CSTATES_CFG>(
        common::kExeCycles.ResetTo("10"),
        common::kFailTolerance.In(Syntax::kPerStateCounts).ResetTo(kPerStateTolerances),
        common::kSanityEarlyExit.In(Syntax::kPerStateCounts).ResetTo(kPerStateExits)),
    Options<_CSTATES_CFG>({
        common::kActiveTime.ResetTo("msec:200"),
        common::kInStateTime.ResetTo("msec:200"),
        {.name = "RandomPkgVoting", .text = &_CSTATES_CFG::RandomPkgVoting,
         .about = "Packages whose cores vote for random, differing states."},
        {.name = "ExeCstates", .text = &_CSTATES_CFG::ExeCstates, .syntax = Syntax::kCstates,
         .about = "C-states to enter, joined by \";\"; empty for all."},
        {.name = "IceState", .text = &_CSTATES_CFG::IceState, .syntax = Syntax::kIceState,
         .reset = "None", .about = "Idle state of the image-compute engine during the test."},
        {.name = "PerStateCond", .text = &_CSTATES_CFG::PerStateCond,
         .syntax = Syntax::kPerStateCondition, .reset = "0x00000000",
         .about = "Condition bits of the C-states, one nibble per state."},
        {.name = "CoreExclusion", .text = &_CSTATES_CFG::CoreExclusion,
         .syntax = Syntax::kPerStateLists, .reset = kPerStateNoCores,
         .about = "Excluded cores, listed for each C-state."},
        {.name = "SubStates", .text = &_CSTATES_CFG::SubStates, .syntax = Syntax::kPerStateLists,
         .reset = kPerStateNoCores, .about = "Sub-states to enter, listed for each C-state."},
        {.name = "IdleMethod", .text = &_CSTATES_CFG::IdleMethod, .reset = "OS-Native",
         .about = "Method of entering idle states.", .flow = Flow::kResetOnly},
    })));

// Common options that most tests read and never write.
template <class Record>
consteval auto CommonReadOnly() {
  return Options<Record>({
      common::kPxMxCxTxScope,
      common::kActiveTime.ReadOnly(),
      common::kInStateTime.ReadOnly(),
  });
}

inline constexpr auto kPstatesOptions = Finish(Concatenate(
    common::Affinities<_PSTATES_CFG>(common::Writes::kAllAffinities),
    common::Control<_PSTATES_CFG>(),
    CommonReadOnly<_PSTATES_CFG>(),
    Options<_PSTATES_CFG>({
        {.name = "LimitReasonMask", .text = &_PSTATES_CFG::LimitReasonMask,
         .syntax = Syntax::kMask, .reset = "0xFFFFFFFF",
         .about = "Limit reasons that the test checks."},
        {.name = "TurboLimitCores", .text = &_PSTATES_CFG::TurboLimitCores,
         .syntax = Syntax::kUnitAffinity, .reset = "All",
         .about = "Cores whose turbo limit is checked."},
        {.name = "ExePstates", .text = &_PSTATES_CFG::ExePstates, .syntax = Syntax::kPstates,
         .reset = "P0...Pn", .about = "P-states to run."},
        {.name = "RatioDistLoMeHi", .text = &_PSTATES_CFG::RatioDistLoMeHi,
         .syntax = Syntax::kRatioBytes, .reset = "FF:FF:FF",
         .about = "Distribution of the low, medium and high ratios over the cores."},
        {.name = "FreqTolerance", .text = &_PSTATES_CFG::FreqTolerance, .syntax = Syntax::kCount,
         .reset = "2", .about = "Tolerated deviation of the measured frequency, in percent."},
        {.name = "ExitOnPassRatios", .text = &_PSTATES_CFG::ExitOnPassRatios,
         .syntax = Syntax::kExitRatios, .reset = "ALL",
         .about = "Ratios that must pass before the test may end early."},
        common::kDerivedSwitchTime,
        {.name = "RegressionKnobs", .text = &_PSTATES_CFG::RegressionKnobs,
         .about = "Further knobs of regression runs.", .flow = Flow::kReadOnly},
    })));

inline constexpr auto kHwpOptions = Finish(Concatenate(
    common::Affinities<_HWP_CFG>(common::Writes::kAllAffinities),
    common::Control<_HWP_CFG>(),
    CommonReadOnly<_HWP_CFG>(),
    Options<_HWP_CFG>({
        {.name = "LimitReasonMask", .text = &_HWP_CFG::LimitReasonMask, .syntax = Syntax::kMask,
         .reset = "0xFFFFFFFF", .about = "Limit reasons that the test checks."},
        {.name = "TurboLimitCores", .text = &_HWP_CFG::TurboLimitCores,
         .syntax = Syntax::kUnitAffinity, .reset = "All",
         .about = "Cores whose turbo limit is checked."},
        {.name = "ExeValueSet", .text = &_HWP_CFG::ExeValueSet,
         .about = "Request values to use instead of P-states."},
        {.name = "ExePstates", .text = &_HWP_CFG::ExePstates, .syntax = Syntax::kPstates,
         .reset = "P0...Pn", .about = "P-states to run."},
        {.name = "RatioDistLoMeHi", .text = &_HWP_CFG::RatioDistLoMeHi,
         .syntax = Syntax::kRatioBytes, .reset = "FF:FF:FF",
         .about = "Distribution of the low, medium and high ratios over the cores."},
        {.name = "FreqTolerance", .text = &_HWP_CFG::FreqTolerance, .syntax = Syntax::kCount,
         .reset = "2", .about = "Tolerated deviation of the measured frequency, in percent."},
        {.name = "HwpPkgThreadAffinity", .text = &_HWP_CFG::HwpPkgThreadAffinity,
         .syntax = Syntax::kThreadAffinity, .reset = "All",
         .about = "Threads that send the package request."},
        {.name = "BigCorePerfScaler", .text = &_HWP_CFG::BigCorePerfScaler,
         .about = "Factor between performance level and frequency of the big cores."},
        {.name = "AtomPerfScaler", .text = &_HWP_CFG::AtomPerfScaler,
         .about = "Factor between performance level and frequency of the small cores."},
        {.name = "HwpPkgMode", .text = &_HWP_CFG::HwpPkgMode, .syntax = Syntax::kBoolean,
         .reset = "false", .about = "Whether the package request overrides the thread requests."},
        {.name = "HwpEppValid", .text = &_HWP_CFG::HwpEppValid, .syntax = Syntax::kBoolean,
         .reset = "true", .about = "Whether the energy preference of the thread request is valid."},
        {.name = "HwpMinValid", .text = &_HWP_CFG::HwpMinValid, .syntax = Syntax::kBoolean,
         .reset = "true", .about = "Whether the minimum of the thread request is valid."},
        {.name = "HwpMaxValid", .text = &_HWP_CFG::HwpMaxValid, .syntax = Syntax::kBoolean,
         .reset = "true", .about = "Whether the maximum of the thread request is valid."},
        {.name = "HwpDesiredValid", .text = &_HWP_CFG::HwpDesiredValid, .syntax = Syntax::kBoolean,
         .reset = "true", .about = "Whether the desired level of the thread request is valid."},
        {.name = "ExitOnPassRatios", .text = &_HWP_CFG::ExitOnPassRatios,
         .syntax = Syntax::kExitRatios, .reset = "ALL",
         .about = "Ratios that must pass before the test may end early."},
        common::kDerivedSwitchTime,
        {.name = "ThreadAffinity", .text = &_HWP_CFG::ThreadAffinity,
         .syntax = Syntax::kThreadAffinity, .reset = "All", .about = "Threads that run the test.",
         .flow = Flow::kReadOnly},
    })));

inline constexpr auto kTstatesOptions = Finish(Options<_TSTATES_CFG>({
    {.name = "RatioDistLoMeHi", .text = &_TSTATES_CFG::RatioDistLoMeHi,
     .syntax = Syntax::kRatioBytes, .reset = "FF:FF:FF",
     .about = "Distribution of the low, medium and high ratios over the cores."},
    common::kPxMxCxScope,
    common::kPkgAffinity,
    common::kModuleAffinity,
    common::kCoreAffinity,
    common::kSwitchTime,
    common::kStartDelayTime,
    common::kExeCycles,
    common::kConfigLoop,
    common::kFailTolerance,
    common::kSanityEarlyExit,
    common::kTestMode,
    common::kLogLevel,
    common::KnobsOf("Random;ExitOnFail"),
    {.name = "DutyCycles", .text = &_TSTATES_CFG::DutyCycles,
     .about = "Clock duty cycles to run; empty for all."},
    {.name = "ExitOnPassRatios", .text = &_TSTATES_CFG::ExitOnPassRatios,
     .syntax = Syntax::kExitRatios, .reset = "ALL",
     .about = "Ratios that must pass before the test may end early."},
    common::kInStateTime.ReadOnly(),
    common::kActiveTime.ReadOnly(),
    {.name = "FailOnExit", .text = &_TSTATES_CFG::FailOnExit, .syntax = Syntax::kBoolean,
     .reset = "false", .about = "Whether an unrequested exit from a T-state is a failure.",
     .flow = Flow::kReadOnly},
}));

inline constexpr auto kSdcOptions = Finish(Options<_SDC_CFG>({
    common::kPkgAffinity,
    common::kSwitchTime,
    common::kStartDelayTime,
    common::kExeCycles,
    common::kConfigLoop,
    common::kFailTolerance,
    common::kTestMode,
    common::kLogLevel,
    common::KnobsOf("Random;ExitOnFail"),
    {.name = "DutyCycles", .text = &_SDC_CFG::DutyCycles,
     .about = "Duty cycles to run; empty for all."},
    common::kInStateTime.ReadOnly(),
    common::kActiveTime.ReadOnly(),
}));

inline constexpr auto kFactOptions = Finish(Concatenate(
    common::Affinities<_FACT_CFG>(common::Writes::kAllAffinities),
    common::Control<_FACT_CFG>(),
    CommonReadOnly<_FACT_CFG>(),
    Options<_FACT_CFG>({
        common::kSwitchTime,
        {.name = "ConfigState", .list = &_FACT_CFG::ConfigState,
         .about = "A configuration state of the test; may be repeated.",
         .flow = Flow::kWriteOnly},
    })));

inline constexpr auto kIceCstatesOptions = Finish(Concatenate(
    common::Affinities<_ICE_CSTATES_CFG>(common::Writes::kPackages),
    common::Control<_ICE_CSTATES_CFG>(),
    Options<_ICE_CSTATES_CFG>({
        {.name = "AllPerICEIDScope", .text = &_ICE_CSTATES_CFG::AllPerICEIDScope,
         .syntax = Syntax::kScope, .reset = "100:0:0",
         .about = "Percentage of the engines that take part."},
        {.name = "ICeIDAffinity", .text = &_ICE_CSTATES_CFG::ICeIDAffinity,
         .syntax = Syntax::kUnitAffinity, .reset = "All", .about = "Engines that run the test."},
        {.name = "ExeStates", .text = &_ICE_CSTATES_CFG::ExeStates,
         .syntax = Syntax::kExeIceStates,
         .about = "Idle states to enter, joined by \";\"; empty for all.", .keyword = "ExeCstates"},
        common::kActiveTime,
        common::kInStateTime,
        common::kPxMxCxTxScope,
        common::kDerivedSwitchTime.ReadOnly(),
    })));

inline constexpr auto kIcePstatesOptions = Finish(Concatenate(
    common::Affinities<_ICE_PSTATES_CFG>(common::Writes::kPackages),
    common::Control<_ICE_PSTATES_CFG>(),
    CommonReadOnly<_ICE_PSTATES_CFG>(),
    Options<_ICE_PSTATES_CFG>({
        {.name = "AllPerICEIDScope", .text = &_ICE_PSTATES_CFG::AllPerICEIDScope,
         .syntax = Syntax::kScope, .reset = "100:0:0",
         .about = "Percentage of the engines that take part."},
        {.name = "ICeIDAffinity", .text = &_ICE_PSTATES_CFG::ICeIDAffinity,
         .syntax = Syntax::kUnitAffinity, .reset = "All", .about = "Engines that run the test."},
        {.name = "ExePstates", .text = &_ICE_PSTATES_CFG::ExePstates, .syntax = Syntax::kPstates,
         .reset = "P0...Pn", .about = "P-states to run.",
         .hint = {.kind = Hint::Kind::kSingle, .texts = {"P0...Pn, P1...Pn, Turbo, Specific:"}}},
        common::kSwitchTime.FallingBackTo("msec:80"),
        {.name = "StatusCheckDelay", .text = &_ICE_PSTATES_CFG::StatusCheckDelay,
         .syntax = Syntax::kDuration, .reset = "msec:10",
         .about = "Delay before the requested state is checked."},
        {.name = "LimitReasonMask", .text = &_ICE_PSTATES_CFG::LimitReasonMask,
         .syntax = Syntax::kMask, .reset = "0xFFFFFFFF",
         .about = "Limit reasons that the test checks."},
        {.name = "RatioTolerance", .text = &_ICE_PSTATES_CFG::RatioTolerance,
         .syntax = Syntax::kCount, .reset = "1",
         .about = "Tolerated deviation of the measured ratio."},
    })));
// clang-format on

}  // namespace vexor
