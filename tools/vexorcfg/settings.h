// The settings of a description: their names, places and tests.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/describe.h"

namespace tools::vexorcfg {

// Return the element that encloses a setting, and the setting's name in it.
std::string_view GroupOf(const vexor::Setting& setting);
std::string_view NameOf(const vexor::Setting& setting);

// Returns the name of the test whose option the setting is; empty for other settings.
std::string_view TestOf(const vexor::Setting& setting);

// The element of the switches that let tests run.
inline constexpr std::string_view kSwitches = "TEST_CONTROL_CFG/AutoRunCfg";

std::vector<std::string_view> TestsThatRun(const vexor::Description& description);

// Returns the quoted value of a setting, or for several, those of an entry of a list, the names and
// values of all that the file has.
std::string FormatValue(std::span<const vexor::Setting> settings);

// Returns where a setting of a file comes from: "lab.xml:57", "default", ...
std::string PlaceOf(const std::string& file, const vexor::Setting& setting);

}  // namespace tools::vexorcfg
