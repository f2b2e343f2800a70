#include "config/model/element_path.h"

namespace vexor {
namespace {

constexpr std::size_t kLongestName = 100;

}  // namespace

std::string ShortenName(std::string_view name) {
  return std::string(name.substr(0, kLongestName)).append(name.size() > kLongestName ? "..." : "");
}

std::string JoinPath(std::string_view parent, std::string_view name) {
  if (parent.empty()) return std::string(name);
  return std::string(parent).append("/").append(name);
}

std::string EntryPath(std::string_view list, std::size_t number) {
  return std::string(list).append("[").append(std::to_string(number)).append("]");
}

}  // namespace vexor
