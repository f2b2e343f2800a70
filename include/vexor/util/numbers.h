// Converts text to numbers and number lists, and numbers and bit masks to text.
//
//   number  decimal digits, or "0x" or "0X" and hexadecimal digits; no sign, no blanks
//   list    items joined by a delimiter, each a number or a range "low-high"; "[" and "]" are
//           ignored: "[1,3-5]" is 1, 3, 4, 5
//
// The functions do not depend on the locale and have no state: any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

namespace vexor {

// Mean "no valid number": the default that callers pass to detect bad text, the result of the bit
// scans for zero, and a mask for which the mask formatters return empty text.
inline constexpr std::uint32_t kNoNumber32 = 0xDEADBEEF;
inline constexpr std::uint64_t kNoNumber64 = 0xDEADBEEFDEADBEEF;

// The most values that the ranges of a list may have in all.
inline constexpr std::uint64_t kMaxRangeValues = 16'777'216;

}  // namespace vexor

// Returns the number; `default_value` for any other text. With `before_colon`, uses only the first
// non-empty item of the text split at ":", without the blanks around it: "12:34" gives 12.
// Throws std::out_of_range "stoull argument out of range" for a number beyond 64 bits.
VEXOR_EXPORT std::uint64_t String2Integer(std::string_view text, std::uint64_t default_value,
                                          bool before_colon = false);

// Returns the number that the text begins with, 0 if it begins with none: "1-2" gives 1. Sets `ok`
// to false and returns 0 if the text is empty or has characters other than digits, points and minus
// signs. A number that is too large gives infinity.
VEXOR_EXPORT float String2Float(std::string_view text, bool& ok);

// Returns 1 for "true", "yes", "active" and texts that begin with "enable", 0 for "false", "no",
// "inactive" and texts that begin with "disable", `default_value` for "n/a", all in any case. For
// other texts, returns the floating-point number that the text begins with, as std::stod does.
// Throws std::invalid_argument "invalid stod argument" if there is none, and std::out_of_range
// ("stod argument out of range"; for whole hexadecimal numbers that of `String2Integer`).
VEXOR_EXPORT double GetDoubleValue(std::string_view text, double default_value);

// Returns the values of a list, truncated to 32 bits, with ranges expanded in ascending order. With
// `hexadecimal`, numbers are hexadecimal even without "0x". A bad item (including an empty or
// negative one, and `vexor::kNoNumber64`) discards the numbers before it: the result is then
// `default_value` followed by the numbers after the last bad item.
// Throws std::out_of_range like `String2Integer`, and std::length_error for ranges of more than
// 16,777,216 values in all.
VEXOR_EXPORT std::vector<int> GetIntegerList(std::string_view text, char delimiter,
                                             int default_value, bool hexadecimal = false);

// Returns the values of a list of numbers such as "0.5"; a range "low-high" stands for low,
// low + step, low + 2 step and so on, not above high. If an item is bad, or there is a range and
// `step` is not positive, returns only `default_value`.
// Throws std::length_error for ranges of more than 16,777,216 values in all.
VEXOR_EXPORT std::vector<double> GetDoubleList(std::string_view text, char delimiter,
                                               double default_value, double step);

// Returns the number, or the two numbers around the first "-" in the order written; the range is
// not expanded. A bad number gives 0. Throws std::out_of_range like `String2Integer`.
VEXOR_EXPORT std::vector<int> GetIntergerRange(std::string_view text);

// Returns the values in hexadecimal, such as "0x1; 0x1f". Values of 0 or below are left out unless
// `keep_all` is set.
VEXOR_EXPORT std::string IntergerList2HexString(const std::vector<int>& values, bool keep_all);

// Returns the values in decimal, such as "1; 31". Values of 0 or below are left out unless
// `keep_all` is set.
VEXOR_EXPORT std::string IntergerList2DecString(const std::vector<int>& values, bool keep_all);

// Returns the indices of `count` bits, such as "0,1,2"; empty for 0 and for no number.
// Throws std::length_error for a count above 16,777,216.
VEXOR_EXPORT std::string BitsCount2List(std::uint64_t count);

// Returns the positions of the set bits, such as "0,2,4" for 0x15; empty for 0 and for no number.
VEXOR_EXPORT std::string BitsMaskConvert(std::uint64_t mask);

// Returns a mask of the lowest `length` bits, all 64 from 64 on. `length` must be below 255.
VEXOR_EXPORT std::uint64_t GetMaskByLen(std::uint8_t length);

// Returns the number of set bits.
VEXOR_EXPORT std::uint32_t CountHighBits(std::uint32_t value);

// Returns the index of the lowest set bit; `vexor::kNoNumber32` for zero.
VEXOR_EXPORT std::uint32_t BitScanForwardUtil(std::uint32_t value);

// Returns the index of the lowest set bit; `vexor::kNoNumber32` for zero.
VEXOR_EXPORT std::uint32_t BitScanForward64Util(std::uint64_t value);

// Returns the number, rounded to six decimals, without trailing zeros but with at least one
// decimal: "1.5", "2.0". Returns "inf" or "nan" for values that are not finite.
VEXOR_EXPORT std::string RemoveZerosFromNumber(double number);

// Returns the value of a fixed-point number. `fraction_bits` must be below 31.
VEXOR_EXPORT double FixedPointToFloat(std::uint32_t raw, std::uint8_t fraction_bits);

// Returns the value as a fixed-point number, truncated toward zero and to 32 bits; negative values
// are in two's complement. 0 for values that are not finite. `fraction_bits` must be below 31.
VEXOR_EXPORT std::uint32_t FloatToFixedPoint(double value, std::uint8_t fraction_bits);

// Returns `part` in per cent of `whole`; 0 if one of them is 0. If `part` is larger than `whole`,
// which is a measuring error, always returns the same value between 98 and 98.9.
VEXOR_EXPORT double PercentRes(std::uint64_t part, std::uint64_t whole);

// Returns 1000 / frequency * (count + 60), truncated: the reference count for `count` units with an
// allowance of 60. Returns 0 for a negative frequency, the largest number for one that is 0 or too
// small.
VEXOR_EXPORT std::uint64_t GetRefCount(double frequency, std::uint64_t count);
