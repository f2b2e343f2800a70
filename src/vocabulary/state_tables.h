// The tables of state_names.cpp that the option grammars use as well.
#pragma once

#include <array>
#include <string_view>

#include "vexor/vocabulary/state_names.h"
#include "vocabulary/name_table.h"

namespace vexor {

inline constexpr auto kTestModes = NamesBefore<TEST_MODE_UNKNOWN>({
    {TEST_MODE_DEFAULT, "Default"},
    {TEST_MODE_VERIFY, "Verify"},
    {TEST_MODE_EXERCISE, "Exercise"},
    {TEST_MODE_MONITOR, "Monitor"},
});

inline constexpr auto kS0ixStates = NamesBefore<S0IX_UNKNOWN>({
    {S0IX_S0IR, "S0iR"},
    {S0IX_S0I1, "S0i1"},
    {S0IX_S0I2, "S0i2"},
    {S0IX_S0I3, "S0i3"},
    {S0IX_PS_ON, "PS-ON"},
    {S0IX_IDLE1, "IDLE1"},
    {S0IX_IDLE2, "IDLE2"},
    {S0IX_IDLE3, "IDLE3"},
    {S0IX_IVR_S0IX, "IVR-S0IX"},
    {S0IX_S0I2_0, "S0i2-0"},
    {S0IX_S0I2_1, "S0i2-1"},
    {S0IX_S0I2_2, "S0i2-2"},
    {S0IX_S0I3_0, "S0i3-0"},
    {S0IX_S0I3_1, "S0i3-1"},
    {S0IX_S0I3_2, "S0i3-2"},
    {S0IX_S0I3_3, "S0i3-3"},
    {S0IX_S0I3_4, "S0i3-4"},
});

}  // namespace vexor
