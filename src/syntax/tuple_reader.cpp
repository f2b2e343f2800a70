#include "syntax/tuple_reader.h"

#include <cassert>

namespace vexor {

std::optional<std::uint32_t> ReadLimitedNumber(std::string_view text, const NumberLimit& limit,
                                               FaultNote& note, NumberBase base) {
  using Kind = UnsignedText::Kind;
  const UnsignedText number = ReadUnsigned(text, base);
  if (number.kind == Kind::kNumber && number.value <= limit.largest) {
    return static_cast<std::uint32_t>(number.value);
  }
  if (number.kind == Kind::kNotANumber) {
    note.At(text, "not a number", limit.expected);
  } else {
    note.At(text, "number too large", limit.expected, FaultKind::kLargeNumber);
  }
  return std::nullopt;
}

std::size_t ReadNumberTuple(std::string_view text, std::span<const NumberLimit> limits,
                            std::span<std::uint32_t> values, std::string_view form, FaultNote& note,
                            NumberBase base) {
  assert(values.size() >= limits.size());
  std::size_t count = 0;
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ':', item); ++count) {
    if (count == limits.size()) {
      note.At(item, "too many numbers", form);
      return 0;
    }
    const auto number = ReadLimitedNumber(TrimBlanks(item), limits[count], note, base);
    if (!number) return 0;
    values[count] = *number;
  }
  return count;
}

}  // namespace vexor
