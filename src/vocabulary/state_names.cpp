#include "vexor/vocabulary/state_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace {

constexpr auto kTestModes = std::to_array<std::string_view>({
    "Default",
    "Verify",
    "Exercise",
    "Monitor",
});
static_assert(kTestModes.size() == TEST_MODE_UNKNOWN);

constexpr auto kTestControls = std::to_array<std::string_view>({
    "start",
    "stop",
    "pause",
    "resume",
    "skip",
    "repeat",
});
static_assert(kTestControls.size() == TEST_CONTROL_UNKNOWN);

constexpr auto kFlowInitMessages = std::to_array<std::string_view>({
    "Pass",
    "Invalid CLI Options/Arguments",
    "Invalid XML File/Path/Version/Format",
    "Log File Initialization",
    "Invalid \"System Setup\" User Configuration",
    "Invalid \"System Knobs\" User Configuration",
    "Invalid \"Custom Knobs\" User Configuration",
    "Invalid \"TestControl\" User Configuration",
});
static_assert(kFlowInitMessages.size() == FLOW_INIT_BAD_TEST_CONTROL + 1);

constexpr auto kS0ixStates = std::to_array<std::string_view>({
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
static_assert(kS0ixStates.size() == S0IX_UNKNOWN && vexor::AllDistinct(kS0ixStates));

}  // namespace

const char* GetTestModeName(int value) { return vexor::NameOf(kTestModes, value); }

TEST_MODE ParseTestModeID(std::string_view text) {
  return vexor::ValueOf(kTestModes, text, TEST_MODE_UNKNOWN);
}

const char* GetTestControlNameByID(int value) { return vexor::NameOf(kTestControls, value); }

TEST_CONTROL_ID ParseTestControlID(std::string_view text) {
  return vexor::ValueOf(kTestControls, text, TEST_CONTROL_UNKNOWN);
}

const char* GetFlowInitStatusMsg(int value) { return vexor::NameOf(kFlowInitMessages, value); }

const char* GetS0ixStatesName(int value) { return vexor::NameOf(kS0ixStates, value); }

S0IX_STATES ParseS0ixStatesID(std::string_view text) {
  return vexor::ValueOf(kS0ixStates, text, S0IX_UNKNOWN);
}
