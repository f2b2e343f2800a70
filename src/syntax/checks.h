// The checks of option texts. Each returns what is wrong with a text, nothing for a valid one. A
// check uses the parser of the exported function that it names, and reports a fault where that
// function uses a neutral value. Empty text is always valid: the option is not given. The `Doubt`
// functions report what is suspicious about a valid text.
//
// Where a grammar consists of words, their list is declared after its check.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Numbers and words.

// A number, as read by `String2Integer`.
std::optional<Fault> CheckCount(std::string_view text);

// The same, as a mask.
std::optional<Fault> CheckMask(std::string_view text);

// The same, or "Default".
std::optional<Fault> CheckAddress(std::string_view text);

// Such numbers, separated by ";" or ",".
std::optional<Fault> CheckNumbers(std::string_view text);

// "true" exactly, or "false" in any case and with white space around it. Other texts are faults, as
// they read as false.
std::optional<Fault> CheckBoolean(std::string_view text);
extern const Expectation kBooleanWords;

// Reports a "false" with other letter case or with white space.
std::optional<Fault> DoubtBoolean(std::string_view text);

// A word, as read by `ParseTestModeID`.
std::optional<Fault> CheckTestMode(std::string_view text);

// A word, as read by `ParseS0ixStatesID`.
std::optional<Fault> CheckS0ixState(std::string_view text);

// Times.

// For `ParseOnTimeType`. "Invalid" is valid.
std::optional<Fault> CheckDuration(std::string_view text);

// For `ParseExeCycleTimeType`.
std::optional<Fault> CheckExeCycles(std::string_view text);

// Reports a length of zero.
std::optional<Fault> DoubtExeCycles(std::string_view text);

// Affinities. Empty text means "All".

// For `ParsePkgAffinity`.
std::optional<Fault> CheckPkgAffinity(std::string_view text);
extern const Expectation kPkgAffinityWords;

// For `ParseUnitAffinity`. "Any", which it replaces by "All", is a fault.
std::optional<Fault> CheckUnitAffinity(std::string_view text);
extern const Expectation kUnitAffinityWords;

// For `ParseThreadAffinity`.
std::optional<Fault> CheckThreadAffinity(std::string_view text);
extern const Expectation kThreadAffinityWords;

// These report a number that stands twice behind "Specific:". Of packages and units they also
// report a list without "Specific:": the numbers are read, but the mode is "All".
std::optional<Fault> DoubtPkgAffinity(std::string_view text);
std::optional<Fault> DoubtUnitAffinity(std::string_view text);
std::optional<Fault> DoubtThreadAffinity(std::string_view text);

// C-states.

// For `ParseExeCstates`.
std::optional<Fault> CheckExeCstates(std::string_view text);
extern const Expectation kCstateWords;

// For `ParseLimitCstates`.
std::optional<Fault> CheckLimitCstates(std::string_view text);

// For `ParsePerStateConditions`.
std::optional<Fault> CheckPerStateConditions(std::string_view text);

// For `ParsePerCStateSetting` for numbers.
std::optional<Fault> CheckPerCStateNumbers(std::string_view text);

// For `ParsePerCStateSetting` for lists of numbers, which are decimal unless they begin with "0x".
std::optional<Fault> CheckPerCStateLists(std::string_view text);

// Reports an item of either that later items replace, in all states that it is for.
std::optional<Fault> DoubtPerCStateItems(std::string_view text);

// Device states.

// For `ParseIceState`. "None" is valid: no state is requested.
std::optional<Fault> CheckIceStates(std::string_view text);

// Reports a list of several states.
std::optional<Fault> DoubtIceStates(std::string_view text);
extern const Expectation kIceStateWords;

// For `ParseExeIceSleepStates`.
std::optional<Fault> CheckExeIceSleepStates(std::string_view text);
extern const Expectation kExeIceStateWords;

// Ratios. Empty text means all of them.

// For `ParseTrendRatios`.
std::optional<Fault> CheckTrendRatios(std::string_view text);

// For `ParseExePstates`.
std::optional<Fault> CheckExePstates(std::string_view text);

// For `ParseSagvRatios`.
std::optional<Fault> CheckSagvRatios(std::string_view text);
extern const Expectation kSagvPoints;

// For `ParseSagvRatios`, for a test that supports only "Low" and "High".
std::optional<Fault> CheckLowHighRatios(std::string_view text);
extern const Expectation kLowHighPoints;

// For `ParseTurboActivationRatios`.
std::optional<Fault> CheckTurboActivationRatios(std::string_view text);

// Numbers separated by ":".

// For `ParseScope`.
std::optional<Fault> CheckScope(std::string_view text);

// Reports a scope of 0 % at all levels.
std::optional<Fault> DoubtScope(std::string_view text);

// For `ParseRatioSpread`.
std::optional<Fault> CheckRatioBytes(std::string_view text);

// For `ParseTimeout`.
std::optional<Fault> CheckTimeout(std::string_view text);

// Sleep states.

// For `ParseGandSStates`.
std::optional<Fault> CheckGandSState(std::string_view text);

// For `ParseSleepStates`.
std::optional<Fault> CheckSleepStates(std::string_view text);
extern const Expectation kSleepFlowWords;

// Power plans and sources. "Default" requests no change.

// For `ParsePowerScheme`.
std::optional<Fault> CheckPowerScheme(std::string_view text);
extern const Expectation kPowerSchemeWords;

// For `ParseBatteryOptions`.
std::optional<Fault> CheckBatteryOption(std::string_view text);
extern const Expectation kPowerSourceWords;

// Wake events.

// For `ParseWakeEvents`.
std::optional<Fault> CheckWakeEvents(std::string_view text);
extern const Expectation kWakeEventWords;

// PECI.

// For `ParsePeciInterface`.
std::optional<Fault> CheckPeciInterface(std::string_view text);

// For `ParsePECIMajorCmdsList`.
std::optional<Fault> CheckPeciCommands(std::string_view text);
extern const Expectation kPeciCommandWords;

// For the services of `ParsePECIRdPkgCfgCmdsList` and `ParsePECIWrPkgCfgCmdsList`.
std::optional<Fault> CheckPeciServices(std::string_view text);

// For their parameters.
std::optional<Fault> CheckPeciParameters(std::string_view text);

// For the data to write, and for masks.
std::optional<Fault> CheckPeciData(std::string_view text);

// For `ParsePECIRdMSRCmdsList`.
std::optional<Fault> CheckPeciRegisters(std::string_view text);

// For `ParsePECIPciCfgCmdsList`.
std::optional<Fault> CheckPeciPciConfigs(std::string_view text);

// Knobs.

// Reports the first item of a list separated by ";" that is neither a keyword nor one of the test's
// own knobs. An unknown knob is a doubt and not a fault, as a lab may have knobs of its own.
std::optional<Fault> DoubtKnobs(std::string_view text, std::span<const std::string_view> own);
std::optional<Fault> DoubtKnobs(std::string_view text);
extern const Expectation kKnobWords;  // the knobs that a command line can switch

// Reports an item of a list of words that equals an earlier one.
std::optional<Fault> DoubtRepeatedWord(std::string_view text);

}  // namespace vexor
