// Affinities: which packages, cores or threads a test runs on.
//
//   affinity  a text that begins with a keyword in any case: "All", "Random", ...
//             "Specific:" and a list, such as "Specific:0,2-4"
//             a list alone, such as "0,1" (packages and cores only)
//   list      numbers and ranges joined by ",", without blanks; brackets around them are removed
//
// The result is the code of the mode, followed by the listed numbers. A bad number is left out and
// discards the numbers before it. Any thread may call.
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

// Parses an affinity of packages: "All", "Any", "Random", "Specific:" and a list, or a list alone,
// which gets the mode "All". Any other text gives "All"; for empty text, that code is returned
// twice. Throws std::length_error for a list of more than 16,777,216 numbers.
VEXOR_EXPORT std::vector<int> ParsePkgAffinity(std::string_view text);

// Parses an affinity of cores: "All", "Random", "BigCores", "SmallCores", "EvenCores", "OddCores",
// "sCores", "cCores", "cCoreAtom", "Specific:" and a list, or a list alone, which gets the mode
// "All". Any other text gives "All", and so does any text if `enabled` is 0. "Any" also gives
// "All", with a warning on standard output. Throws std::length_error like `ParsePkgAffinity`.
VEXOR_EXPORT std::vector<int> ParseUnitAffinity(std::string_view text, int enabled);

// Parses an affinity of threads: "All", "Random", or "Any:" or "Specific:" and a list. Any other
// text, including a list alone, gives "All". The codes of "All" and "Random" are returned twice.
// Throws std::length_error like `ParsePkgAffinity`.
VEXOR_EXPORT std::vector<int> ParseThreadAffinity(std::string_view text);

// Returns the name of a mode. Any other number, and the modes of even and odd cores, are returned
// as a number of at least three digits: "005".
VEXOR_EXPORT std::string GetAffinityString(int code);

// Returns whether the affinity's mode is "All" or the number is in the list. The code of the mode
// counts as part of the list. False for an empty affinity.
VEXOR_EXPORT bool IsInAffinity(const std::vector<int>& affinity, int number);
