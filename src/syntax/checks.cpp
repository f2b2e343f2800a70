#include "syntax/checks.h"

#include "syntax/fault_note.h"
#include "syntax/words.h"
#include "util/text.h"
#include "vexor/vocabulary/state_names.h"
#include "vocabulary/state_tables.h"

namespace vexor {

namespace {

std::optional<Fault> CheckNumber(std::string_view text, std::string_view expected) {
  if (text.empty()) return std::nullopt;
  switch (ReadUnsigned(text).kind) {
    case UnsignedText::Kind::kNumber:
      return std::nullopt;
    case UnsignedText::Kind::kBeyond64Bits:
      return Fault{
          .what = "number too large", .expected = expected, .kind = FaultKind::kLargeNumber};
    case UnsignedText::Kind::kNotANumber:
      break;
  }
  return Fault{.what = "not a number", .expected = expected};
}

constexpr auto kBooleans = std::to_array<std::string_view>({"true", "false"});

bool IsFalseInAnyForm(std::string_view text) { return EqualsIgnoreCase(TrimSpace(text), "false"); }

}  // namespace

constinit const Expectation kBooleanWords = kOneOf<kBooleans>;

std::optional<Fault> CheckCount(std::string_view text) {
  return CheckNumber(text, "decimal digits, or 0x and hexadecimal digits");
}

std::optional<Fault> CheckMask(std::string_view text) {
  return CheckNumber(text, "a mask such as 0xFFFFFFFF");
}

std::optional<Fault> CheckAddress(std::string_view text) {
  if (text == "Default") return std::nullopt;
  return CheckNumber(text, "an address such as 0xFED10000, or Default");
}

std::optional<Fault> CheckNumbers(std::string_view text) {
  FaultNote note(text);
  ForEachItem(text, [&](std::string_view item) {
    if (const auto fault = CheckCount(item)) note.Within(item, *fault);
  });
  return note.First();
}

std::optional<Fault> CheckBoolean(std::string_view text) {
  const bool is_good = text.empty() || text == "true" || IsFalseInAnyForm(text);
  if (is_good) return std::nullopt;
  return Fault{
      .what = "reads as false", .expected = kBooleanWords, .kind = FaultKind::kReadsAsFalse};
}

std::optional<Fault> DoubtBoolean(std::string_view text) {
  if (text == "false" || !IsFalseInAnyForm(text)) return std::nullopt;
  return Fault{.what = "reads as false, like any text but true",
               .expected = kBooleanWords,
               .kind = FaultKind::kFalseForm};
}

std::optional<Fault> CheckTestMode(std::string_view text) {
  if (text.empty() || ParseTestModeID(text) != TEST_MODE_UNKNOWN) return std::nullopt;
  return Fault{.what = "unknown test mode", .expected = kOneOf<kTestModes>};
}

std::optional<Fault> CheckS0ixState(std::string_view text) {
  if (text.empty() || ParseS0ixStatesID(text) != S0IX_UNKNOWN) return std::nullopt;
  return Fault{.what = "unknown state", .expected = kOneOf<kS0ixStates>};
}

}  // namespace vexor
