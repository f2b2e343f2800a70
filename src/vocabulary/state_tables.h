// Names of states that a fault in an option text lists, too.
#pragma once

#include <array>
#include <string_view>

#include "vexor/vocabulary/state_names.h"
#include "vocabulary/name_table.h"

namespace vexor {

inline constexpr auto kTestModes = std::to_array<std::string_view>({
    "Default",
    "Verify",
    "Exercise",
    "Monitor",
});
static_assert(kTestModes.size() == TEST_MODE_UNKNOWN);

inline constexpr auto kS0ixStates = std::to_array<std::string_view>({
    "S0iR",
    "S0i1",
    "S0i2",
    "S0i3",
    "PS-ON",
    "IDLE1",
    "IDLE2",
    "IDLE3",
    "IVR-S0IX",
    "S0i2-0",
    "S0i2-1",
    "S0i2-2",
    "S0i3-0",
    "S0i3-1",
    "S0i3-2",
    "S0i3-3",
    "S0i3-4",
});
static_assert(kS0ixStates.size() == S0IX_UNKNOWN && AllDistinct(kS0ixStates));

}  // namespace vexor
