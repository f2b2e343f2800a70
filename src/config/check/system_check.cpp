#include "config/check/system_check.h"

#include <algorithm>
#include <array>
#include <utility>

#include "config/check/content_check.h"
#include "config/file/element_walk.h"
#include "syntax/checks.h"
#include "util/text.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

bool Has(const Words& words, std::string_view word) {
  return std::ranges::find(words, word) != words.end();
}

// The parts of an item.
struct Item {
  std::string_view socket;
  std::string_view name;
  std::string_view value;
};

std::optional<Item> SplitItem(std::string_view text) {
  std::string_view rest = text;
  Item item;
  if (!TakeItem(rest, ';', item.socket) || !TakeItem(rest, ';', item.name)) return std::nullopt;
  item = {TrimSpace(item.socket), TrimSpace(item.name), TrimSpace(rest)};
  if (item.socket.empty() || item.name.empty() || item.value.empty()) return std::nullopt;
  return item;
}

}  // namespace

void SystemCheck::CheckItem(const XMLElement& item, const SystemListRow& list,
                            const std::string& path) {
  const std::string_view text = TextOf(item);
  if (text.empty()) return;
  const std::optional<Item> parts = SplitItem(text);
  if (!parts) {
    return AddMalformed(item, path, text);
  }
  const std::array<std::pair<std::string_view, std::optional<Doubt>>, 3> judged = {{
      {parts->socket, JudgeSocket(parts->socket)},
      {parts->name, JudgeName(list, parts->name)},
      {parts->value, JudgeValue(list, parts->name, parts->value)},
  }};
  std::string mended;
  for (const auto& [part, doubt] : judged) {
    const bool is_mended = doubt && !doubt->meant.empty();
    mended.append(mended.empty() ? "" : "; ").append(is_mended ? doubt->meant : part);
  }
  for (const auto& [part, doubt] : judged) {
    if (!doubt) continue;
    Finding& finding = Add(item, path, text, *doubt);
    finding.what += " at \"" + std::string(part) + "\"";
    if (!doubt->meant.empty()) finding.suggestion = mended;
  }
}

void SystemCheck::CheckValue(const XMLElement& value, const SystemListRow& list,
                             const std::string& path) {
  const std::string_view name = value.Name();
  const std::string_view text = TextOf(value);
  if (const std::optional<Doubt> doubt = JudgeName(list, name)) Add(value, path, name, *doubt);
  const auto row = std::ranges::find(list.values, name, &OptionRow::name);
  if (row != list.values.end()) {
    CheckText(value, path, text, *row, findings_);
    return;
  }
  if (text.empty()) return;
  if (const auto doubt = JudgeValue(list, name, text)) Add(value, path, text, *doubt);
}

void SystemCheck::AddMalformed(const XMLElement& item, const std::string& path,
                               std::string_view text) {
  Finding& finding = findings_.AddWarning(item, path, text, "not three parts");
  finding.expected = "Socket; Name; Value";
  std::string rejoined(text);
  std::ranges::replace(rejoined, ',', ';');
  if (SplitItem(rejoined)) finding.suggestion = rejoined;
}

std::optional<SystemCheck::Doubt> SystemCheck::JudgeSocket(std::string_view socket) {
  if (!CheckPkgAffinity(socket)) return std::nullopt;
  return Doubt{.what = "unknown socket", .expected = "a number such as 0, or All"};
}

std::optional<SystemCheck::Doubt> SystemCheck::JudgeName(const SystemListRow& list,
                                                         std::string_view name) {
  const SettingNames& names = NamesOf(list);
  if (names.all.empty() || Has(names.own, name)) return std::nullopt;
  if (const SystemListRow* const other = FindListOf(name)) {
    std::string place = "to stand in SysConfiguration/";
    place.append(other->group).append("/").append(other->name);
    return Doubt{.what = "setting of another list", .expected = std::move(place)};
  }
  if (Has(names.all, name)) return std::nullopt;
  const std::string_view current = FindCurrentSettingName(list, name);
  if (!current.empty()) {
    return Doubt{.what = "older name of a setting", .expected = std::string(current)};
  }
  Doubt doubt{.what = "unknown setting", .meant = unknown_.Suggest(name, names.all)};
  if (doubt.meant.empty()) doubt.severity = Severity::kNote;
  return doubt;
}

std::optional<SystemCheck::Doubt> SystemCheck::JudgeValue(const SystemListRow& list,
                                                          std::string_view name,
                                                          std::string_view value) {
  const SettingNames& names = NamesOf(list);
  const bool is_of_another_list = !Has(names.own, name) && FindListOf(name) != nullptr;
  if (is_of_another_list) return std::nullopt;
  const bool takes_any_name = names.all.empty();
  const bool is_unknown_name = !takes_any_name && !Has(names.all, name);
  const bool is_listed = !names.values.empty();
  const Words values = is_listed ? names.values : GetModeWords();
  if (Has(values, value) || (is_unknown_name && !is_listed)) return std::nullopt;
  Doubt doubt{.what = "unknown value",
              .expected = JoinWordList(values),
              .meant = unknown_.Suggest(value, values)};
  if (!doubt.meant.empty()) return doubt;
  if (!is_listed || is_unknown_name) return std::nullopt;
  if (takes_any_name) doubt.severity = Severity::kNote;
  return doubt;
}

const SettingNames& SystemCheck::NamesOf(const SystemListRow& list) {
  const auto known = names_.find(&list);
  return known != names_.end() ? known->second
                               : names_.emplace(&list, GetSettingNames(list)).first->second;
}

const SystemListRow* SystemCheck::FindListOf(std::string_view name) {
  const auto* const list = std::ranges::find_if(
      kSystemLists, [&](const SystemListRow& row) { return Has(NamesOf(row).own, name); });
  return list == std::end(kSystemLists) ? nullptr : list;
}

Finding& SystemCheck::Add(const XMLElement& at, const std::string& path, std::string_view text,
                          const Doubt& doubt) {
  Finding& finding = findings_.Add(doubt.severity, at.GetLineNum(), path, text, doubt.what);
  finding.expected = doubt.expected;
  finding.suggestion = doubt.meant;
  return finding;
}

}  // namespace vexor
