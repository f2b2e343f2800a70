// Text to numbers and number lists, and numbers and bit masks back to text.
//
//   number  decimal digits, or "0x" or "0X" and hexadecimal digits; no sign, no blanks
//   list    items joined by a delimiter, each a number or a range "low-high"; "[" and "]" are
//           passed over: "[1,3-5]" is 1, 3, 4, 5
//
// Nothing depends on the process's locale, and nothing keeps state: any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

namespace vexor {

// No valid number was found: the default that callers pass to detect bad text, the answer of the
// bit scans for zero, and a mask that the mask formatters leave out.
inline constexpr std::uint32_t kNoNumber32 = 0xDEADBEEF;
inline constexpr std::uint64_t kNoNumber64 = 0xDEADBEEFDEADBEEF;

// Ranges of more values than these in all are refused.
inline constexpr std::uint64_t kMaxRangeValues = 16'777'216;

}  // namespace vexor

// Returns the number; `default_value` for any other text. With `before_colon` the first filled item
// of the text at ":" counts, without its outer blanks: "12:34" gives 12.
// Throws std::out_of_range "stoull argument out of range" for a number beyond 64 bits.
VEXOR_EXPORT std::uint64_t String2Integer(std::string_view text, std::uint64_t default_value,
                                          bool before_colon = false);

// Returns the number at the front of the text, 0 when there is none there: "1-2" gives 1. `ok` is
// false, and the result 0, when the text is empty or holds anything but digits, points and minus
// signs. A number too large gives an infinity.
VEXOR_EXPORT float String2Float(std::string_view text, bool& ok);

// Returns 1 for "true", "yes", "active" and what begins with "enable", 0 for "false", "no",
// "inactive" and what begins with "disable", `default_value` for "n/a", all in any case; else the
// floating-point number at the front of the text, as std::stod reads it.
// Throws std::invalid_argument "invalid stod argument" when there is none, and std::out_of_range
// ("stod argument out of range"; for whole hexadecimal numbers that of `String2Integer`).
VEXOR_EXPORT double GetDoubleValue(std::string_view text, double default_value);

// Returns the values of a list, ranges expanded in ascending order, each stored in 32 bits. With
// `hexadecimal` every bound is hexadecimal, "0x" before it or not. A bad item (also an empty or
// negative one, and `vexor::kNoNumber64`) replaces everything so far by `default_value`; reading
// goes on behind it.
// Throws std::out_of_range like `String2Integer`, and std::length_error for ranges of more than
// 16,777,216 values in all.
VEXOR_EXPORT std::vector<int> GetIntegerList(std::string_view text, char delimiter,
                                             int default_value, bool hexadecimal = false);

// Returns the values of a list of numbers such as "0.5"; a range "low-high" stands for low,
// low + step, low + 2 step ... up to high at most. The first bad item, or a range with a step that
// is not positive, makes the result the single `default_value`.
// Throws std::length_error for ranges of more than 16,777,216 values in all.
VEXOR_EXPORT std::vector<double> GetDoubleList(std::string_view text, char delimiter,
                                               double default_value, double step);

// Returns the number, or the two numbers around the first "-", unexpanded and in the order written;
// 0 for a bad number. Throws std::out_of_range like `String2Integer`.
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

// Returns the number, rounded to six decimals, without trailing zeros but with one decimal at
// least: "1.5", "2.0". "inf" and "nan" stand for what is not finite.
VEXOR_EXPORT std::string RemoveZerosFromNumber(double number);

// Returns the value of a fixed-point number. `fraction_bits` must be below 31.
VEXOR_EXPORT double FixedPointToFloat(std::uint32_t raw, std::uint8_t fraction_bits);

// Returns the value as a fixed-point number, truncated toward zero and taken in 32 bits: a negative
// one is in two's complement. 0 for what is not finite. `fraction_bits` must be below 31.
VEXOR_EXPORT std::uint32_t FloatToFixedPoint(double value, std::uint8_t fraction_bits);

// Returns how many per cent of the whole the part is; 0 when one of them is 0. A part larger than
// the whole gives a number from 98 to 98.9 instead, always the same.
VEXOR_EXPORT double PercentRes(std::uint64_t part, std::uint64_t whole);

// Returns the reference count for `count` units and an allowance of 60, scaled by 1000 over the
// frequency: 1000 / frequency * (count + 60), truncated; 0 for a negative frequency, the largest
// number for one that is 0 or too small.
VEXOR_EXPORT std::uint64_t GetRefCount(double frequency, std::uint64_t count);
