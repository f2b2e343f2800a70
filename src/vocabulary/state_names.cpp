#include "vexor/vocabulary/state_names.h"

#include <array>

#include "vocabulary/name_table.h"
#include "vocabulary/state_tables.h"

namespace {

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

}  // namespace

const char* GetTestModeName(int value) { return vexor::NameOf(vexor::kTestModes, value); }

TEST_MODE ParseTestModeID(std::string_view text) {
  return vexor::ValueOf(vexor::kTestModes, text, TEST_MODE_UNKNOWN);
}

const char* GetTestControlNameByID(int value) { return vexor::NameOf(kTestControls, value); }

TEST_CONTROL_ID ParseTestControlID(std::string_view text) {
  return vexor::ValueOf(kTestControls, text, TEST_CONTROL_UNKNOWN);
}

const char* GetFlowInitStatusMsg(int value) { return vexor::NameOf(kFlowInitMessages, value); }

const char* GetS0ixStatesName(int value) { return vexor::NameOf(vexor::kS0ixStates, value); }

S0IX_STATES ParseS0ixStatesID(std::string_view text) {
  return vexor::ValueOf(vexor::kS0ixStates, text, S0IX_UNKNOWN);
}
