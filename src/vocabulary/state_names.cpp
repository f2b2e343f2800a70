#include "vexor/vocabulary/state_names.h"

#include <array>

#include "vocabulary/name_table.h"
#include "vocabulary/state_tables.h"

namespace vexor {

namespace {

constexpr auto kTestControls = NamesBefore<TEST_CONTROL_UNKNOWN>({
    {TEST_CONTROL_START, "start"},
    {TEST_CONTROL_STOP, "stop"},
    {TEST_CONTROL_PAUSE, "pause"},
    {TEST_CONTROL_RESUME, "resume"},
    {TEST_CONTROL_SKIP, "skip"},
    {TEST_CONTROL_REPEAT, "repeat"},
});

constexpr auto kFlowInitMessages = NamesBefore<Next(FLOW_INIT_BAD_TEST_CONTROL)>({
    {FLOW_INIT_PASS, "Pass"},
    {FLOW_INIT_BAD_ARGUMENTS, "Invalid CLI Options/Arguments"},
    {FLOW_INIT_BAD_XML_FILE, "Invalid XML File/Path/Version/Format"},
    {FLOW_INIT_BAD_LOG_FILE, "Log File Initialization"},
    {FLOW_INIT_BAD_SYSTEM_SETUP, "Invalid \"System Setup\" User Configuration"},
    {FLOW_INIT_BAD_SYSTEM_KNOBS, "Invalid \"System Knobs\" User Configuration"},
    {FLOW_INIT_BAD_CUSTOM_KNOBS, "Invalid \"Custom Knobs\" User Configuration"},
    {FLOW_INIT_BAD_TEST_CONTROL, "Invalid \"TestControl\" User Configuration"},
});

}  // namespace

}  // namespace vexor

using namespace vexor;

const char* GetTestModeName(int value) { return NameOf(kTestModes, value); }

TEST_MODE ParseTestModeID(std::string_view text) {
  return ValueOf(kTestModes, text, TEST_MODE_UNKNOWN);
}

const char* GetTestControlNameByID(int value) { return NameOf(kTestControls, value); }

TEST_CONTROL_ID ParseTestControlID(std::string_view text) {
  return ValueOf(kTestControls, text, TEST_CONTROL_UNKNOWN);
}

const char* GetFlowInitStatusMsg(int value) { return NameOf(kFlowInitMessages, value); }

const char* GetS0ixStatesName(int value) { return NameOf(kS0ixStates, value); }

S0IX_STATES ParseS0ixStatesID(std::string_view text) {
  return ValueOf(kS0ixStates, text, S0IX_UNKNOWN);
}
