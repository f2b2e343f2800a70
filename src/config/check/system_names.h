// The known names and values of the settings under "SysConfiguration". The test programs that
// interpret the settings may accept others.
#pragma once

#include <string_view>

#include "config/tables/system_setup.h"
#include "config/texts/word_list.h"

namespace vexor {

struct SettingNames {
  Words own;     // names in the list's hint and rows
  Words all;     // `own` and the group's vocabulary; empty if any name is valid
  Words values;  // values in the hint
};

SettingNames GetSettingNames(const SystemListRow& list);

// Returns the words that set the mode of a feature: "Enable", "Disable" and others.
Words GetModeWords();

// Returns the current name for a setting's older name; empty for any other name.
std::string_view FindCurrentSettingName(const SystemListRow& list, std::string_view name);

}  // namespace vexor
