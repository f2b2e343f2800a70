#include "vexor/syntax/number_tuples.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/tuple_reader.h"

namespace vexor {

namespace {

constexpr NumberLimit kShare = {100, "a number from 0 to 100"};
constexpr NumberLimit kByte = {0xFF, "a hexadecimal number from 00 to FF"};
constexpr NumberLimit kNumber = {0xFFFFFFFF, "a number from 0 to 4294967295"};

using Values = std::array<std::uint32_t, 4>;

// A text of `fewest` to `limits.size()` numbers, separated by ":".
struct Form {
  std::span<const NumberLimit> limits;
  std::size_t fewest;
  NumberBase base;
  std::string_view expected;
  Values defaults = {};  // of the numbers that a text may leave out
};

constexpr auto kScopeLimits = std::to_array<NumberLimit>({kShare, kShare, kShare, kShare});
constexpr Form kScope = {kScopeLimits, 3, NumberBase::kDecimal,
                         "packages:modules:cores or packages:modules:cores:threads"};

constexpr auto kSpreadLimits = std::to_array<NumberLimit>({kByte, kByte, kByte});
constexpr Form kSpread = {kSpreadLimits, 3, NumberBase::kHexadecimal, "low:medium:high"};

constexpr auto kTimeoutLimits = std::to_array<NumberLimit>({kNumber, kNumber});
constexpr Form kTimeout = {
    kTimeoutLimits, 1, NumberBase::kDecimal, "seconds or seconds:times", {0, 1}};

std::optional<Values> Read(std::string_view text, const Form& form, FaultNote& note) {
  Values values = form.defaults;
  const std::size_t count =
      ReadNumberTuple(text, form.limits, values, form.expected, note, form.base);
  if (count >= form.fewest) return values;
  note.AtEnd("too few numbers", form.expected);
  return std::nullopt;
}

std::optional<Values> Read(std::string_view text, const Form& form) {
  FaultNote unused(text);
  return Read(text, form, unused);
}

std::optional<Fault> Check(std::string_view text, const Form& form) {
  FaultNote note(text);
  if (!text.empty()) Read(text, form, note);
  return note.First();
}

std::uint8_t Byte(std::uint32_t value) { return static_cast<std::uint8_t>(value); }

}  // namespace

std::optional<Fault> CheckScope(std::string_view text) { return Check(text, kScope); }

std::optional<Fault> DoubtScope(std::string_view text) {
  const auto values = Read(text, kScope);
  const bool is_empty =
      values && std::ranges::all_of(*values, [](auto value) { return value == 0; });
  if (!is_empty) return std::nullopt;
  return Fault{.what = "nothing takes part",
               .expected = "a percentage above 0",
               .kind = FaultKind::kNothing};
}

std::optional<Fault> CheckRatioBytes(std::string_view text) { return Check(text, kSpread); }

std::optional<Fault> CheckTimeout(std::string_view text) { return Check(text, kTimeout); }

std::optional<Scope> ParseScope(std::string_view text) {
  const auto values = Read(text, kScope);
  if (!values) return std::nullopt;
  const auto& [packages, modules, cores, threads] = *values;
  return Scope{Byte(packages), Byte(modules), Byte(cores), Byte(threads)};
}

std::optional<RatioSpread> ParseRatioSpread(std::string_view text) {
  const auto values = Read(text, kSpread);
  if (!values) return std::nullopt;
  return RatioSpread{Byte((*values)[0]), Byte((*values)[1]), Byte((*values)[2])};
}

std::optional<Timeout> ParseTimeout(std::string_view text) {
  const auto values = Read(text, kTimeout);
  if (!values) return std::nullopt;
  return Timeout{(*values)[0], (*values)[1]};
}

}  // namespace vexor
