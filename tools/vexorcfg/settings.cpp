#include "settings.h"

#include "common/text_output.h"

namespace tools::vexorcfg {

using vexor::Setting;

std::string_view GroupOf(const Setting& setting) {
  return std::string_view(setting.path).substr(0, setting.path.rfind('/'));
}

std::string_view NameOf(const Setting& setting) {
  return std::string_view(setting.path).substr(setting.path.rfind('/') + 1);
}

// "GLOBALPM/CORE/CSTATES/ActiveTime" is an option of CSTATES.
std::string_view TestOf(const Setting& setting) {
  constexpr std::string_view kTests = "GLOBALPM/";
  std::string_view path = setting.path;
  if (!path.starts_with(kTests)) return {};
  const std::size_t start = path.find('/', kTests.size());
  if (start == std::string_view::npos) return {};
  path.remove_prefix(start + 1);
  const std::size_t end = path.find('/');
  return end == std::string_view::npos ? std::string_view() : path.substr(0, end);
}

std::vector<std::string_view> TestsThatRun(const vexor::Description& description) {
  std::vector<std::string_view> tests;
  for (const Setting& setting : description.settings) {
    if (GroupOf(setting) == kSwitches && setting.value == "true") tests.push_back(NameOf(setting));
  }
  return tests;
}

std::string FormatValue(std::span<const Setting> settings) {
  if (settings.size() == 1) return Quote(settings.front().value);
  std::string text;
  for (const Setting& setting : settings) {
    if (setting.origin == vexor::Origin::kMissing) continue;
    text.append(text.empty() ? "" : ", ").append(OneLine(NameOf(setting))).append(" ");
    text += Quote(setting.value);
  }
  return text.empty() ? "an empty entry" : text;
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
