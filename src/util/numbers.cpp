#include "vexor/util/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

#include "util/number_range.h"
#include "util/saturate.h"
#include "util/text.h"
#include "vexor/util/random.h"

namespace vexor {

namespace {

std::uint64_t ValueOr(const UnsignedText& number, std::uint64_t default_value) {
  switch (number.kind) {
    case UnsignedText::Kind::kNumber:
      return number.value;
    case UnsignedText::Kind::kBeyond64Bits:
      throw std::out_of_range("stoull argument out of range");
    case UnsignedText::Kind::kNotANumber:
      break;
  }
  return default_value;
}

// Reads the number that the text begins with, like strtod, but only if the whole text consists of
// digits, points and minus signs.
template <class Float>
std::optional<Float> ReadPlainDecimal(std::string_view text) {
  const auto is_allowed = [](char c) { return IsDecDigit(c) || c == '.' || c == '-'; };
  if (text.empty() || !std::ranges::all_of(text, is_allowed)) return std::nullopt;
  Float value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  // Out of range. Without an exponent, only digits before the point make a number too large.
  const bool is_large =
      text.substr(0, text.find('.')).find_first_of("123456789") != std::string_view::npos;
  value = is_large ? std::numeric_limits<Float>::infinity() : Float{0};
  return text.front() == '-' ? -value : value;
}

// Reads the floating-point number that the text begins with, like std::stod, but independent of the
// locale. stod accepts more than std::from_chars: leading white space, a plus sign, and hexadecimal
// digits after "0x".
double ReadFrontNumber(std::string_view text) {
  constexpr const char* kInvalid = "invalid stod argument";
  const bool is_negative = TakeSign(text);
  if (text.starts_with('-')) throw std::invalid_argument(kInvalid);  // a second sign

  const bool is_hex =
      HasHexPrefix(text) && text.size() > 2 && (IsHexDigit(text[2]) || text[2] == '.');
  // Cut before "+-", which libstdc++ accepts as the sign of a hexadecimal exponent.
  if (is_hex) text = text.substr(2, text.find("+-") - 2);
  double value = 0;
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), value,
                      is_hex ? std::chars_format::hex : std::chars_format::general);
  if (error == std::errc::result_out_of_range) {
    throw std::out_of_range("stod argument out of range");
  }
  // In "0x.", the number is the zero.
  if (error != std::errc{} && !is_hex) throw std::invalid_argument(kInvalid);
  return is_negative ? -value : value;
}

// The two bounds of an item; both are the number itself if the item is not a range.
struct ItemBounds {
  std::string_view first;
  std::string_view second;
  bool is_range;
};

ItemBounds SplitRange(std::string_view item) {
  const std::size_t dash = FindByte(item, '-');
  if (dash == std::string_view::npos) return {item, item, false};
  return {item.substr(0, dash), item.substr(dash + 1), true};
}

// Appends the values of one item; returns false for a bad item. `left` is how many values ranges
// may still have; the values of this range are subtracted from it.
bool AppendIntegers(std::string_view item, NumberBase base, std::uint64_t& left,
                    std::vector<int>& values) {
  const auto read = [base](std::string_view bound) {
    return ValueOr(ReadUnsigned(bound, base), kNoNumber64);
  };
  const ItemBounds bounds = SplitRange(item);
  std::uint64_t low = read(bounds.first);
  if (!bounds.is_range) {
    if (low == kNoNumber64) return false;
    values.push_back(static_cast<int>(low));
    return true;
  }
  std::uint64_t high = read(bounds.second);
  if (low == kNoNumber64 || high == kNoNumber64) return false;
  if (low > high) std::swap(low, high);
  if (high - low >= left) ThrowTooLong(item);
  left -= high - low + 1;
  for (std::uint64_t i = 0; i <= high - low; ++i) values.push_back(static_cast<int>(low + i));
  return true;
}

// The same for floating-point numbers. Also returns false for a range whose step is not positive.
bool AppendDoubles(std::string_view item, double step, std::uint64_t& left,
                   std::vector<double>& values) {
  const ItemBounds bounds = SplitRange(item);
  const auto first = ReadPlainDecimal<double>(bounds.first);
  if (!first) return false;
  if (!bounds.is_range) {
    values.push_back(*first);
    return true;
  }
  const auto second = ReadPlainDecimal<double>(bounds.second);
  if (!second || !(step > 0)) return false;
  const auto [low, high] = std::minmax(*first, *second);
  const double steps = (high - low) / step;
  if (!(steps < static_cast<double>(left))) ThrowTooLong(item);
  left -= static_cast<std::uint64_t>(steps);
  // The count ends the loop if the step is too small to change the value. The factor makes up for a
  // quotient that was rounded down, which would lose the last value.
  const int count = static_cast<int>(steps * (1 + 1e-9)) + 1;
  double value = low;
  for (int i = 1; value <= high && i <= count; ++i) {
    values.push_back(value);
    value = low + i * step;
  }
  return true;
}

template <class Integer>
void AppendNumber(std::string& text, Integer number, int base = 10) {
  std::array<char, std::numeric_limits<Integer>::digits10 + 3> digits{};
  const auto [end, error] =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, base);
  assert(error == std::errc{});
  text.append(digits.data(), end);
}

template <class Append>
std::string JoinIntegers(const std::vector<int>& values, bool keep_all, Append append) {
  std::string text;
  for (const int value : values) {
    if (value <= 0 && !keep_all) continue;
    if (!text.empty()) text += "; ";
    append(text, value);
  }
  return text;
}

bool IsNoMask(std::uint64_t mask) {
  return mask == 0 || mask == kNoNumber32 || mask == kNoNumber64;
}

// Deliberately a signed 32-bit shift, whose results callers know: 31 gives a negative scale.
double FixedPointScale(std::uint8_t fraction_bits) {
  return static_cast<std::int32_t>(1U << (fraction_bits % 32U));
}

}  // namespace

}  // namespace vexor

using namespace vexor;

std::uint64_t String2Integer(std::string_view text, std::uint64_t default_value,
                             bool before_colon) {
  if (before_colon) {
    std::string_view item;
    if (!TakeFilledItem(text, ':', item)) return default_value;
    text = TrimBlanks(item);
  }
  return ValueOr(ReadUnsigned(text), default_value);
}

float String2Float(std::string_view text, bool& ok) {
  const auto value = ReadPlainDecimal<float>(text);
  ok = value.has_value();
  return value.value_or(0.0F);
}

double GetDoubleValue(std::string_view text, double default_value) {
  const auto is = [text](std::string_view word) { return EqualsIgnoreCase(text, word); };
  if (is("N/A")) return default_value;
  if (HasHexPrefix(text)) {
    const UnsignedText number = ReadUnsigned(text);
    if (number.kind != UnsignedText::Kind::kNotANumber) {
      return static_cast<double>(ValueOr(number, 0));
    }
  }
  if (is("FALSE") || is("NO") || is("INACTIVE") || StartsWithIgnoreCase(text, "DISABLE")) return 0;
  if (is("TRUE") || is("YES") || is("ACTIVE") || StartsWithIgnoreCase(text, "ENABLE")) return 1;
  return ReadFrontNumber(text);
}

std::vector<int> GetIntegerList(std::string_view text, char delimiter, int default_value,
                                bool hexadecimal) {
  const NumberBase base = hexadecimal ? NumberBase::kHexadecimal : NumberBase::kDecimal;
  std::string buffer;
  std::string_view rest = RemoveBrackets(text, buffer);
  std::vector<int> values;
  std::uint64_t left = kMaxRangeValues;  // not reset at a bad item: it bounds the time as well
  for (std::string_view item; TakeItem(rest, delimiter, item);) {
    // Deliberately continues after a bad item, with the default in place of all numbers before it.
    if (!AppendIntegers(item, base, left, values)) values.assign(1, default_value);
  }
  return values;
}

std::vector<double> GetDoubleList(std::string_view text, char delimiter, double default_value,
                                  double step) {
  std::string buffer;
  std::string_view rest = RemoveBrackets(text, buffer);
  std::vector<double> values;
  std::uint64_t left = kMaxRangeValues;
  for (std::string_view item; TakeItem(rest, delimiter, item);) {
    if (!AppendDoubles(item, step, left, values)) return {default_value};
  }
  return values;
}

std::vector<int> GetIntergerRange(std::string_view text) {
  const auto read = [](std::string_view bound) {
    return static_cast<int>(ValueOr(ReadUnsigned(bound), 0));
  };
  const ItemBounds bounds = SplitRange(text);
  if (!bounds.is_range) return {read(text)};
  return {read(bounds.first), read(bounds.second)};
}

std::string IntergerList2HexString(const std::vector<int>& values, bool keep_all) {
  return JoinIntegers(values, keep_all, [](std::string& text, int value) {
    AppendNumber(text += "0x", static_cast<unsigned>(value), 16);
  });
}

std::string IntergerList2DecString(const std::vector<int>& values, bool keep_all) {
  return JoinIntegers(values, keep_all,
                      [](std::string& text, int value) { AppendNumber(text, value); });
}

std::string BitsCount2List(std::uint64_t count) {
  if (IsNoMask(count)) return {};
  if (count > kMaxRangeValues) ThrowTooLong(std::to_string(count));
  std::string text = "0";
  for (std::uint64_t i = 1; i < count; ++i) AppendNumber(text += ',', i);
  return text;
}

std::string BitsMaskConvert(std::uint64_t mask) {
  if (IsNoMask(mask)) return {};
  std::string text;
  for (; mask != 0; mask &= mask - 1) {
    if (!text.empty()) text += ',';
    AppendNumber(text, std::countr_zero(mask));
  }
  return text;
}

std::uint64_t GetMaskByLen(std::uint8_t length) {
  std::uint64_t mask = 0;
  // Callers must not pass 255: the 8-bit counter never exceeds it, and the loop would not end.
  for (std::uint8_t i = 1; i <= length; ++i) mask = mask << 1U | 1U;
  return mask;
}

std::uint32_t CountHighBits(std::uint32_t value) {
  return static_cast<std::uint32_t>(std::popcount(value));
}

std::uint32_t BitScanForwardUtil(std::uint32_t value) { return BitScanForward64Util(value); }

std::uint32_t BitScanForward64Util(std::uint64_t value) {
  return value == 0 ? kNoNumber32 : static_cast<std::uint32_t>(std::countr_zero(value));
}

std::string RemoveZerosFromNumber(double number) {
  // The largest number has 309 digits before the point.
  std::array<char, 320> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                          std::chars_format::fixed, 6);
  assert(error == std::errc{});
  std::string text(digits.data(), end);
  if (!std::isfinite(number)) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text += '0';
  return text;
}

double FixedPointToFloat(std::uint32_t raw, std::uint8_t fraction_bits) {
  return raw / FixedPointScale(fraction_bits);
}

std::uint32_t FloatToFixedPoint(double value, std::uint8_t fraction_bits) {
  constexpr double kTwoTo32 = 4294967296.0;
  const double scaled = std::trunc(value * FixedPointScale(fraction_bits));
  if (!std::isfinite(scaled)) return 0;
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(std::fmod(scaled, kTwoTo32)));
}

double PercentRes(std::uint64_t part, std::uint64_t whole) {
  if (part == 0 || whole == 0) return 0;
  const double percent = static_cast<double>(part) / static_cast<double>(whole) * 100;
  if (percent <= 100) return percent;
  // Deliberately not above 100: a measuring error is reported as "almost all", with a fixed value.
  constexpr unsigned kSeed = 256;
  return 98.0 + UserRand(kSeed).Next32(0, 90) / 100.0;
}

std::uint64_t GetRefCount(double frequency, std::uint64_t count) {
  return SaturateToUint64(1000.0 / frequency * (static_cast<double>(count) + 60.0));
}
