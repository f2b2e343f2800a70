// Affinities: which packages, cores or threads a test runs on.
//
//   affinity  a keyword, in any case, that the text begins with: "All", "Random", ...
//             "Specific:" and a list, such as "Specific:0,2-4"
//             a list alone, such as "0,1" (packages and cores only)
//   list      numbers and ranges joined by ",", without blanks; brackets around them are removed
//
// The result begins with the code of the mode; the listed numbers follow. A number that cannot be
// read is left out, and with it what stands before it in the list. Any thread may call.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

namespace vexor {

// The codes of the modes.
inline constexpr int kAffinityAll = 0x7FFF;
inline constexpr int kAffinityAnyPackage = 0x7FFD;
inline constexpr int kAffinityAnyOfList = 0x7FFC;
inline constexpr int kAffinityRandom = 0x7FFB;
inline constexpr int kAffinityBigCores = 0x7FFA;
inline constexpr int kAffinitySmallCores = 0x7FF9;
inline constexpr int kAffinityEvenCores = 0x7FF8;
inline constexpr int kAffinityOddCores = 0x7FF7;
inline constexpr int kAffinitySCores = 0x7FF6;
inline constexpr int kAffinityCCores = 0x7FF5;
inline constexpr int kAffinityCCoreAtom = 0x7FF4;
inline constexpr int kAffinitySpecific = 0x7FF3;

}  // namespace vexor

// Returns the packages of a text: "All", "Any", "Random", "Specific:" and a list, or a list alone,
// whose mode is "All"; "All" for any other text, given twice for an empty one.
// Throws std::length_error for a list of more than 16,777,216 numbers.
VEXOR_EXPORT std::vector<int> ParsePkgAffinity(std::string_view text);

// Returns the cores of a text: "All", "Random", "BigCores", "SmallCores", "EvenCores", "OddCores",
// "sCores", "cCores", "cCoreAtom", "Specific:" and a list, or a list alone, whose mode is "All";
// "All" for any other text and, whatever the text, when `enabled` is 0. "Any" is replaced by "All",
// with a warning on standard output. Throws std::length_error like `ParsePkgAffinity`.
VEXOR_EXPORT std::vector<int> ParseUnitAffinity(std::string_view text, int enabled);

// Returns the threads of a text: "All", "Random", "Any:" and a list or "Specific:" and a list;
// "All" for any other text. "All" and "Random" are given twice. A list alone is no affinity here.
// Throws std::length_error like `ParsePkgAffinity`.
VEXOR_EXPORT std::vector<int> ParseThreadAffinity(std::string_view text);

// Returns the name of a mode; any other number, and the modes of even and odd cores, as at least
// three digits: "005".
VEXOR_EXPORT std::string GetAffinityString(int code);

// Returns whether the affinity's mode is "All" or the number stands in it; the code of its mode
// counts as a number. False for an empty list.
VEXOR_EXPORT bool IsInAffinity(const std::vector<int>& affinity, int number);
