#include "config/check/system_names.h"

#include <algorithm>
#include <span>

#include "util/text.h"
#include "vexor/vocabulary/config_names.h"
#include "vexor/vocabulary/feature_names.h"

namespace vexor {
namespace {

// A table of setting names in the vocabulary, and the group whose settings it names.
struct Vocabulary {
  std::string_view group;
  const char* (*get_name)(int value);
  int count;
};

constexpr Vocabulary kVocabularies[] = {
    {"SYSTEM", GetGuiConfigName, GUI_CFG_POWER_DOWN_ISP_WA + 1},
    {"SYSTEM", GetSysConfigName, SYS_CFG_UNKNOWN},
    {"CORE", GetNameOfCore, CF_CORE_PKG_CSTATE_LIMIT + 1},
    {"POWER", GetNameOfPower, CF_POWER_PKG_TIME_LIMIT2 + 1},
};

void AddOnce(Words& words, std::string_view word) {
  const bool is_known = word.empty() || std::ranges::find(words, word) != words.end();
  if (!is_known) words.push_back(word);
}

enum class Listed { kNames, kValues };

// Adds the words of a hint if it lists names, as in "Valid Config options for CSTATES:SDC;
// Time_MWait", or values, as in "Valid Single Config value:Default,Enable;Disable". Other hints
// describe the form. The hints are the only source of these words; their text is fixed, so it is
// safe to parse it.
void AddHinted(Listed what, std::string_view hint, Words& words) {
  const std::size_t colon = hint.find(':');
  if (!hint.starts_with("Valid ") || colon == std::string_view::npos) return;
  const bool lists_values = hint.substr(0, colon).ends_with("value");
  if (lists_values != (what == Listed::kValues)) return;
  std::string_view rest = hint.substr(colon + 1);
  for (std::string_view group; TakeItem(rest, ';', group);) {
    for (std::string_view item; TakeItem(group, ',', item);) AddOnce(words, TrimBlanks(item));
  }
}

void AddTable(const char* (*get_name)(int value), int count, Words& words) {
  for (int value = 0; value < count; ++value) AddOnce(words, get_name(value));
}

}  // namespace

SettingNames GetSettingNames(const SystemListRow& list) {
  SettingNames names;
  for (const std::string_view hint : list.hint.texts) {
    AddHinted(Listed::kNames, hint, names.own);
    AddHinted(Listed::kValues, hint, names.values);
  }
  for (const OptionRow& value : list.values) AddOnce(names.own, value.name);
  names.all = names.own;
  for (const Vocabulary& vocabulary : kVocabularies) {
    if (vocabulary.group == list.group) AddTable(vocabulary.get_name, vocabulary.count, names.all);
  }
  return names;
}

Words GetModeWords() {
  Words words;
  AddTable(GetConfigEnableStatus, CFG_MODE_UNKNOWN, words);
  return words;
}

std::string_view FindCurrentSettingName(const SystemListRow& list, std::string_view name) {
  if (list.group != "SYSTEM") return {};
  const std::string_view current = GetSysConfigName(ParseSysConfigID(name));
  return current == name ? std::string_view() : current;
}

}  // namespace vexor
