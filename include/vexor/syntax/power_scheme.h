// The power plan of the operating system and the simulated power source, by name.
//
// Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>

#include "vexor/export.h"

enum OS_POWER_SCHEME : std::int32_t {
  POWER_SCHEME_USER_DEFINED = 0,
  POWER_SCHEME_BALANCED = 1,
  POWER_SCHEME_POWER_SAVER = 2,
  POWER_SCHEME_HIGH_PERFORMANCE = 3,
  POWER_SCHEME_RANDOM = 4,
  POWER_SCHEME_ALL = 5,
};

enum OS_BATTERY_SIMLATION : std::int32_t {
  BATTERY_SIM_DEFAULT = 0,  // none
  BATTERY_SIM_AC = 1,
  BATTERY_SIM_DC = 2,
};

// Returns the scheme of "Balanced", "Power-Saver", "High-Performance", "Random" or "All" in any
// case; POWER_SCHEME_USER_DEFINED for any other text.
VEXOR_EXPORT OS_POWER_SCHEME ParsePowerScheme(std::string_view text);

// Returns the name of a scheme that the operating system has; "User Defined" for any other value,
// including POWER_SCHEME_RANDOM and POWER_SCHEME_ALL.
VEXOR_EXPORT const char* PowerSchemeName(int value);

// Returns the power source of "AC" or "DC" in any case; BATTERY_SIM_DEFAULT for any other text.
VEXOR_EXPORT OS_BATTERY_SIMLATION ParseBatteryOptions(std::string_view text);

// Returns "Default", "AC" or "DC"; "User Defined" for any other value.
VEXOR_EXPORT const char* BatterySimName(int value);
