// What is wrong with an option text that is a number or a word; nothing for a good
// one. Empty text is good: nothing is asked for.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

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

// What is doubtful about a good boolean: a "false" that is not written exactly so.
std::optional<Fault> DoubtBoolean(std::string_view text);

// A word that `ParseTestModeID` reads.
std::optional<Fault> CheckTestMode(std::string_view text);

// A word that `ParseS0ixStatesID` reads.
std::optional<Fault> CheckS0ixState(std::string_view text);

}  // namespace vexor
