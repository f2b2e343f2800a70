// The checks of option texts: each returns what is wrong with a text, nothing for a good one. It
// reads with the very parser of the exported function that it names, and finds fault where that
// goes on with a neutral value. Empty text is good everywhere: nothing is asked for. A doubt is
// about a good text that was probably meant otherwise.
//
// The words of a grammar that consists of words stand beside its check.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Numbers and words.

// A number that `String2Integer` reads.
std::optional<Fault> CheckCount(std::string_view text);

// The same, as a mask.
std::optional<Fault> CheckMask(std::string_view text);

// The same or "Default".
std::optional<Fault> CheckAddress(std::string_view text);

// Such numbers, joined by ";" or ",".
std::optional<Fault> CheckNumbers(std::string_view text);

// "true" exactly, or "false" in any case and with any white space around it: whatever is not
// exactly "true" reads as false.
std::optional<Fault> CheckBoolean(std::string_view text);
extern const Expectation kBooleanWords;

// What is doubtful about a good boolean: a "false" that is not written exactly so.
std::optional<Fault> DoubtBoolean(std::string_view text);

// A word that `ParseTestModeID` reads.
std::optional<Fault> CheckTestMode(std::string_view text);

// A word that `ParseS0ixStatesID` reads.
std::optional<Fault> CheckS0ixState(std::string_view text);

// Times.

// Of `ParseOnTimeType`. Empty and "Invalid" are good.
std::optional<Fault> CheckDuration(std::string_view text);

// Of `ParseExeCycleTimeType`. Empty is good.
std::optional<Fault> CheckExeCycles(std::string_view text);

// Affinities. Empty text means "All".

// Of `ParsePkgAffinity`.
std::optional<Fault> CheckPkgAffinity(std::string_view text);
extern const Expectation kPkgAffinityWords;

// Of `ParseUnitAffinity`. "Any", which is replaced, is a fault.
std::optional<Fault> CheckUnitAffinity(std::string_view text);
extern const Expectation kUnitAffinityWords;

// Of `ParseThreadAffinity`.
std::optional<Fault> CheckThreadAffinity(std::string_view text);
extern const Expectation kThreadAffinityWords;

// What is doubtful about a good affinity of packages or units: numbers without "Specific:" are
// read, but the mode is "All".
std::optional<Fault> DoubtListAlone(std::string_view text);

// C-states.

// Of `ParseExeCstates`.
std::optional<Fault> CheckExeCstates(std::string_view text);
extern const Expectation kCstateWords;

// Of `ParseLimitCstates`.
std::optional<Fault> CheckLimitCstates(std::string_view text);

// Of `ParsePerStateConditions`.
std::optional<Fault> CheckPerStateConditions(std::string_view text);

// Of `ParsePerCStateSetting` for numbers.
std::optional<Fault> CheckPerCStateNumbers(std::string_view text);

// Of `ParsePerCStateSetting` for lists of numbers that are hexadecimal only behind "0x".
std::optional<Fault> CheckPerCStateLists(std::string_view text);

// Device states.

// Of `ParseIceState`. Empty text and "None" are good: no state is asked for.
std::optional<Fault> CheckIceStates(std::string_view text);
extern const Expectation kIceStateWords;

// Of `ParseExeIceSleepStates`. Empty text is good.
std::optional<Fault> CheckExeIceSleepStates(std::string_view text);
extern const Expectation kExeIceStateWords;

// Ratios. Empty text means all of them.

// Of `ParseTrendRatios`.
std::optional<Fault> CheckTrendRatios(std::string_view text);

// Of `ParseExePstates`.
std::optional<Fault> CheckExePstates(std::string_view text);

// Of `ParseSagvRatios`.
std::optional<Fault> CheckSagvRatios(std::string_view text);
extern const Expectation kSagvPoints;

// Of `ParseSagvRatios`, for a test that knows "Low" and "High" only.
std::optional<Fault> CheckLowHighRatios(std::string_view text);
extern const Expectation kLowHighPoints;

// Of `ParseTurboActivationRatios`.
std::optional<Fault> CheckTurboActivationRatios(std::string_view text);

// Numbers joined by ":".

// Of `ParseScope`.
std::optional<Fault> CheckScope(std::string_view text);

// Of `ParseRatioSpread`.
std::optional<Fault> CheckRatioBytes(std::string_view text);

// Of `ParseTimeout`.
std::optional<Fault> CheckTimeout(std::string_view text);

// Sleep states.

// Of `ParseGandSStates`.
std::optional<Fault> CheckGandSState(std::string_view text);

// Of `ParseSleepStates`.
std::optional<Fault> CheckSleepStates(std::string_view text);
extern const Expectation kSleepFlowWords;

// Power plans and sources. "Default" asks for no change.

// Of `ParsePowerScheme`.
std::optional<Fault> CheckPowerScheme(std::string_view text);
extern const Expectation kPowerSchemeWords;

// Of `ParseBatteryOptions`.
std::optional<Fault> CheckBatteryOption(std::string_view text);
extern const Expectation kPowerSourceWords;

// Wake events.

// Of `ParseWakeEvents`.
std::optional<Fault> CheckWakeEvents(std::string_view text);
extern const Expectation kWakeEventWords;

// PECI.

// Of `ParsePeciInterface`.
std::optional<Fault> CheckPeciInterface(std::string_view text);

// Of `ParsePECIMajorCmdsList`.
std::optional<Fault> CheckPeciCommands(std::string_view text);
extern const Expectation kPeciCommandWords;

// Of the services of `ParsePECIRdPkgCfgCmdsList` and `ParsePECIWrPkgCfgCmdsList`.
std::optional<Fault> CheckPeciServices(std::string_view text);

// Of their parameters.
std::optional<Fault> CheckPeciParameters(std::string_view text);

// Of what is written, and of masks.
std::optional<Fault> CheckPeciData(std::string_view text);

// Of `ParsePECIRdMSRCmdsList`.
std::optional<Fault> CheckPeciRegisters(std::string_view text);

// Of `ParsePECIPciCfgCmdsList`.
std::optional<Fault> CheckPeciPciConfigs(std::string_view text);

// Knobs.

// Finds the first item of a list at ";" that is neither a keyword nor one of the test's own knobs.
// A lab may have more knobs, so an unknown one is never a fault.
std::optional<Fault> DoubtKnobs(std::string_view text, std::span<const std::string_view> own);
std::optional<Fault> DoubtKnobs(std::string_view text);
extern const Expectation kKnobWords;  // the knobs of command lines

}  // namespace vexor
