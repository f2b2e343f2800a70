// The names and values that the settings under "SysConfiguration" are known to have. Programs that
// use the library give the settings their meaning, and may know others.
#pragma once

#include <string_view>

#include "config/tables/system_setup.h"
#include "config/texts/word_list.h"

namespace vexor {

struct SettingNames {
  Words own;     // those that the list's hint and rows give
  Words all;     // and those of the group's vocabulary; empty where any name is as good as another
  Words values;  // those that the hint gives
};

SettingNames GetSettingNames(const SystemListRow& list);

// Returns the words that switch a feature: "Enable", "Disable" and the others.
Words GetModeWords();

// Returns the current name of a setting that the list knows by an older one; empty for any other.
std::string_view FindCurrentSettingName(const SystemListRow& list, std::string_view name);

}  // namespace vexor
