#include "comparison.h"

#include <string_view>
#include <unordered_map>

#include "vexor/config/syntaxes.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Setting;

// A path may occur more than once, because named values may.
class Keys {
 public:
  std::string Make(const Setting& setting) {
    const int earlier = seen_[setting.path]++;
    return earlier == 0 ? setting.path : setting.path + "#" + std::to_string(earlier);
  }

 private:
  std::unordered_map<std::string_view, int> seen_;
};

using SettingsByKey = std::unordered_map<std::string, const Setting*>;

SettingsByKey IndexSettings(const Description& description) {
  SettingsByKey settings;
  Keys keys;
  for (const Setting& setting : description.settings) {
    settings.emplace(keys.Make(setting), &setting);
  }
  return settings;
}

// Finds the syntax of a setting by its path.
class Syntaxes {
 public:
  Syntaxes() {
    for (const vexor::OptionInfo& option : vexor::GetOptions()) {
      names_.emplace(option.path, option.syntax.name);
    }
  }

  // The paths of list entries end with their number; those of registers contain it.
  [[nodiscard]] std::string_view Find(std::string path) const {
    for (std::size_t open = path.find('['); open != std::string::npos; open = path.find('[')) {
      const std::size_t close = path.find(']', open);
      if (close == std::string::npos) return {};
      path.erase(open, close + 1 - open);
    }
    const auto found = names_.find(path);
    return found == names_.end() ? std::string_view() : found->second;
  }

 private:
  std::unordered_map<std::string, std::string_view> names_;
};

bool MeanTheSame(std::string_view syntax, std::string_view a, std::string_view b) {
  if (a == b) return true;
  const std::string meaning = vexor::DescribeText(syntax, a);
  return !meaning.empty() && meaning == vexor::DescribeText(syntax, b);
}

}  // namespace

Comparison Compare(const Description& a, const Description& b) {
  SettingsByKey others = IndexSettings(b);
  const Syntaxes syntaxes;
  Comparison comparison;
  Keys keys;
  for (const Setting& setting : a.settings) {
    const auto found = others.find(keys.Make(setting));
    const Setting* const other = found == others.end() ? nullptr : found->second;
    if (other != nullptr) others.erase(found);
    const std::string_view syntax = syntaxes.Find(setting.path);
    if (!setting.text.empty() && !MeanTheSame(syntax, setting.text, setting.value)) {
      comparison.misread.push_back(&setting);
    }
    if (other == nullptr || !MeanTheSame(syntax, setting.value, other->value)) {
      comparison.differences.push_back({.a = &setting, .b = other});
      continue;
    }
    comparison.equal.push_back({.a = &setting, .b = other});
    if (setting.value != other->value) ++comparison.reworded;
  }
  Keys keys_of_b;
  for (const Setting& setting : b.settings) {
    if (others.contains(keys_of_b.Make(setting))) comparison.differences.push_back({.b = &setting});
  }
  return comparison;
}

std::string PlaceOf(const std::string& file, const Setting& setting) {
  std::string line = file + ":" + std::to_string(setting.line);
  switch (setting.origin) {
    case vexor::Origin::kFile:
    case vexor::Origin::kOlderName:
      return line;
    case vexor::Origin::kCorrected:
      return setting.line > 0 ? line + ", corrected" : "corrected";
    case vexor::Origin::kDerived:
      return "derived";
    case vexor::Origin::kMissing:
      return "missing";
    case vexor::Origin::kDefault:
      break;
  }
  return "default";
}

}  // namespace tools::vexorcfg
