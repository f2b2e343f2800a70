#include "vexor/util/ipv4.h"

#include "util/text.h"

using namespace vexor;

bool IsIpv4Address(std::string_view text) {
  constexpr int kFields = 4;
  constexpr std::uint64_t kMaxField = 255;
  if (text.ends_with('.')) return false;  // TakeItem returns no item after a trailing delimiter
  int fields = 0;
  for (std::string_view field; TakeItem(text, '.', field); ++fields) {
    const auto number = ParseUnsigned(field);
    if (!number || *number > kMaxField) return false;
  }
  return fields == kFields;
}
