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
  const std::array<std::pair<std::string_view, std::optional<Issue>>, 3> checked = {{
      {parts->socket, CheckSocket(parts->socket)},
      {parts->name, CheckSettingName(list, parts->name)},
      {parts->value, CheckSettingValue(list, parts->name, parts->value)},
  }};
  std::string mended;
  for (const auto& [part, issue] : checked) {
    const bool is_mended = issue && !issue->meant.empty();
    mended.append(mended.empty() ? "" : "; ").append(is_mended ? issue->meant : part);
  }
  for (const auto& [part, issue] : checked) {
    if (!issue) continue;
    Finding& finding = Add(item, path, text, *issue);
    finding.what += " at \"" + std::string(part) + "\"";
    if (!issue->meant.empty()) finding.suggestion = mended;
  }
}

void SystemCheck::CheckValue(const XMLElement& value, const SystemListRow& list,
                             const std::string& path) {
  const std::string_view name = value.Name();
  const std::string_view text = TextOf(value);
  if (const std::optional<Issue> issue = CheckSettingName(list, name)) {
    Add(value, path, name, *issue).mend = Mend::kName;
  }
  const auto row = std::ranges::find(list.values, name, &OptionRow::name);
  if (row != list.values.end()) {
    CheckText(value, path, text, *row, findings_);
    return;
  }
  if (text.empty()) return;
  if (const auto issue = CheckSettingValue(list, name, text)) Add(value, path, text, *issue);
}

void SystemCheck::AddMalformed(const XMLElement& item, const std::string& path,
                               std::string_view text) {
  Finding& finding =
      findings_.Add(FindingKind::kMalformedSetting, item, path, text, "not three parts");
  finding.expected = "Socket; Name; Value";
  std::string rejoined(text);
  std::ranges::replace(rejoined, ',', ';');
  if (SplitItem(rejoined)) finding.suggestion = rejoined;
}

std::optional<SystemCheck::Issue> SystemCheck::CheckSocket(std::string_view socket) {
  if (!CheckPkgAffinity(socket)) return std::nullopt;
  return Issue{.kind = FindingKind::kUnknownSocket,
               .what = "unknown socket",
               .expected = "a number such as 0, or All"};
}

std::optional<SystemCheck::Issue> SystemCheck::CheckSettingName(const SystemListRow& list,
                                                                std::string_view name) {
  const SettingNames& names = NamesOf(list);
  if (names.all.empty() || Has(names.own, name)) return std::nullopt;
  if (const SystemListRow* const other = FindListOf(name)) {
    std::string place = "in SysConfiguration/";
    place.append(other->group).append("/").append(other->name);
    return Issue{.kind = FindingKind::kSettingOfOtherList,
                 .what = "setting of another list",
                 .expected = std::move(place)};
  }
  if (Has(names.all, name)) return std::nullopt;
  const std::string_view current = FindCurrentSettingName(list, name);
  if (!current.empty()) {
    return Issue{.kind = FindingKind::kOlderSetting,
                 .what = "older name of a setting",
                 .expected = std::string(current),
                 .meant = current};
  }
  Issue issue{.kind = FindingKind::kUnknownSetting,
              .what = "unknown setting",
              .meant = unknown_.Suggest(name, names.all)};
  issue.is_note = issue.meant.empty();
  return issue;
}

std::optional<SystemCheck::Issue> SystemCheck::CheckSettingValue(const SystemListRow& list,
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
  Issue issue{.kind = FindingKind::kUnknownSettingValue,
              .what = "unknown value",
              .expected = JoinWordList(values),
              .meant = unknown_.Suggest(value, values)};
  if (!issue.meant.empty()) return issue;
  if (!is_listed || is_unknown_name) return std::nullopt;
  issue.is_note = takes_any_name;
  return issue;
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
                          const Issue& issue) {
  Finding& finding = findings_.Add(issue.kind, at, path, text, issue.what);
  if (issue.is_note) finding.severity = Severity::kNote;
  finding.expected = issue.expected;
  finding.suggestion = issue.meant;
  return finding;
}

}  // namespace vexor
