#include "common/suggestion.h"

#include <algorithm>

#include "common/text_output.h"
#include "syntax/nearest.h"

namespace tools {

std::string FindSimilar(std::string_view text, std::span<const std::string> names) {
  const auto compared = [](const std::string& name) {
    return std::string_view(name).substr(0, vexor::kLongestCompared);
  };
  const std::string* const nearest = vexor::FindNearestRow(text, names, compared);
  if (nearest == nullptr) return {};
  const std::size_t most = std::max<std::size_t>(1, nearest->size() / 3);
  return vexor::CountEdits(text, compared(*nearest)) <= most ? *nearest : std::string();
}

std::string SuggestName(std::string_view text, std::span<const std::string> names) {
  const std::string name = FindSimilar(text, names);
  return name.empty() ? name : "; did you mean " + Quote(name) + "?";
}

}  // namespace tools
