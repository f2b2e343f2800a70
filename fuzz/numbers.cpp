// Numbers and strings: reading the output of a formatter must give the same value.
#include "vexor/util/numbers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "fuzz.h"
#include "vexor/syntax/affinity.h"
#include "vexor/syntax/cstates.h"
#include "vexor/syntax/time.h"
#include "vexor/util/ipv4.h"
#include "vexor/util/strings.h"

namespace {

// Runs a call that may throw, as its header says, for numbers or lists that are too large.
template <class Call>
void AllowStandardErrors(const Call& call) {
  try {
    call();
  } catch (const std::out_of_range&) {
  } catch (const std::length_error&) {
  } catch (const std::invalid_argument&) {
  }
}

// Returns a value made of the first bytes of the text.
template <class Value>
Value FrontBytesAs(std::string_view text) {
  Value value = {};
  std::memcpy(&value, text.data(), std::min(sizeof(value), text.size()));
  return value;
}

void FuzzLists(std::string_view text) {
  if (HasLongRange(text)) return;
  const char delimiter = text.empty() ? ',' : text.back();
  AllowStandardErrors([&] {
    const std::vector<int> values = GetIntegerList(text, ';', -1);
    if (std::ranges::all_of(values, [](int value) { return value >= 0; })) {
      std::string printed = IntergerList2DecString(values, true);
      RemoveCharsFromString(printed, " ");
      Require(GetIntegerList(printed, ';', -1) == values, "decimal lists read back", text);
      printed = IntergerList2HexString(values, true);
      RemoveCharsFromString(printed, " ");
      Require(GetIntegerList(printed, ';', -1) == values, "hexadecimal lists read back", text);
    }
  });
  AllowStandardErrors([&] { GetIntegerList(text, delimiter, 7, true); });
  AllowStandardErrors([&] { GetDoubleList(text, delimiter, 7, 0.5); });
  const auto step = FrontBytesAs<double>(text);
  if (!(std::abs(step) < 1)) AllowStandardErrors([&] { GetDoubleList(text, ',', 7, step); });
  AllowStandardErrors([&] { GetDoubleList(text, ',', 7, 1e-300); });
  AllowStandardErrors([&] { GetIntergerRange(text); });
}

void FuzzNumbers(std::string_view text) {
  AllowStandardErrors([&] { GetDoubleValue(text, 7); });
  AllowStandardErrors([&] { ParseNum(text); });
  AllowStandardErrors([&] {
    const std::uint64_t number = String2Integer(text, vexor::kNoNumber64);
    Require(IsDecOrHexString(text) || number == vexor::kNoNumber64, "no number by default", text);
    Require(!IsDecString(text) || String2Integer(std::to_string(number), 7) == number,
            "numbers read back", text);
    String2Integer(text, 7, true);
  });
  bool ok = false;
  const float real = String2Float(text, ok);
  Require(ok || real == 0, "a bad real number is 0", text);
  IsIpv4Address(text);

  const auto bits = FrontBytesAs<std::uint64_t>(text);
  if (bits != vexor::kNoNumber64 && bits != vexor::kNoNumber32) {
    std::uint64_t mask = 0;
    for (const int bit : GetIntegerList(BitsMaskConvert(bits), ',', 0)) mask |= 1ULL << bit;
    Require(mask == bits || bits == 0, "masks read back", text);
  }
  const auto word = FrontBytesAs<std::uint32_t>(text);
  Require((word == 0) == (BitScanForwardUtil(word) == vexor::kNoNumber32), "bit scan", text);
  Require(CountHighBits(word) <= 32, "bit count", text);
  const auto fraction = static_cast<std::uint8_t>(text.size() % 23);
  if (word >> 24U == 0) {  // exact in a double
    Require(FloatToFixedPoint(FixedPointToFloat(word, fraction), fraction) == word,
            "fixed-point numbers read back", text);
  }
  const auto number = FrontBytesAs<double>(text);
  FloatToFixedPoint(number, fraction);
  const std::string printed = RemoveZerosFromNumber(number);
  if (std::abs(number) < 1e6) {
    Require(std::abs(GetDoubleValue(printed, 0) - number) < 1e-6, "decimals read back", printed);
  }
  PercentRes(bits, word);
  GetRefCount(number, bits);
}

void FuzzTimes(std::string_view text) {
  const ONTIME_TYPE time = ParseOnTimeType(text);
  if (time.minMs <= time.maxMs) {
    const ONTIME_TYPE again = ParseOnTimeType(GetUnitTimeString(time));
    Require(again.minMs == time.minMs && again.maxMs == time.maxMs, "times read back",
            GetUnitTimeString(time));
  }
  FormatTime(time);
  FormatTime(add_OnTimeStructs(time, time));
  ParseUnitTime(text, 1, 7);
  GetTime(text);
  const _EXECYCLETIME cycles = ParseExeCycleTimeType(text, 3, FrontBytesAs<float>(text), 0.5F);
  Require(!cycles.isValid || cycles.seconds > 0, "a valid length is a second at least", text);
  TimeUnitVerifyFormat(text, true, true, text);
  const std::string ordered = TimeUnitVerifyFormat(text, true, false, "sec");
  Require(TimeUnitVerifyFormat(ordered, true, false, "sec") == ordered, "unit first", text);
}

void FuzzStrings(std::string_view text) {
  const std::string_view head = text.substr(0, text.size() / 4);
  const std::string_view tail = text.substr(head.size());
  AllowStandardErrors([&] { SplitByString(tail, head); });
  std::string replaced(tail);
  StringReplaceSubstring(replaced, head, "");
  Require(head.empty() || replaced.size() <= tail.size(), "nothing is added", text);
  StringReplaceSubstring(replaced, head.substr(0, 1), head);
  const std::string trimmed = Trim(text);
  Require(Trim(trimmed) == trimmed, "trimmed once and for all", text);
  const char delimiter = text.empty() ? ';' : text.front();
  for (const std::string& item : Split(tail, delimiter, true)) {
    Require(StringContainsKeyword(tail, item, delimiter, false), "items are keywords", text);
  }
  Require(StringContains(text, tail, true) && StringEndsWith(text, tail, true), "tails", text);
  Require(StringStartswith(StringToUpper(text), head, true), "heads", text);
  StringReplace(text, delimiter, ' ');
  RemoveUnits(text);
  String2Ascii(text);
  StringHasAny(tail, {std::string(head)}, true);
  const auto* const wide = reinterpret_cast<const unsigned short*>(text.data());
  const std::vector<unsigned short> units(wide, wide + text.size() / sizeof(unsigned short));
  WChar2String(units.data(), static_cast<int>(units.size()));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(AsText(data, size));
  FuzzLists(text);
  FuzzNumbers(text);
  FuzzTimes(text);
  FuzzStrings(text);
  return 0;
}
