// Names of test modes, test controls and system idle states, and the messages about the start of a
// test program.
//
// Names are accepted exactly as they are returned: case and blanks matter. Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>

#include "vexor/export.h"

enum TEST_MODE : std::int32_t {
  TEST_MODE_DEFAULT = 0,
  TEST_MODE_VERIFY,
  TEST_MODE_EXERCISE,
  TEST_MODE_MONITOR,
  TEST_MODE_UNKNOWN,
};

// Commands of the test-control thread to a running test.
enum TEST_CONTROL_ID : std::int32_t {
  TEST_CONTROL_START = 0,
  TEST_CONTROL_STOP,
  TEST_CONTROL_PAUSE,
  TEST_CONTROL_RESUME,
  TEST_CONTROL_SKIP,
  TEST_CONTROL_REPEAT,
  TEST_CONTROL_UNKNOWN,
};

// The result of starting a test program.
enum FLOW_INIT_STATUS : std::int32_t {
  FLOW_INIT_PASS = 0,
  FLOW_INIT_BAD_ARGUMENTS,
  FLOW_INIT_BAD_XML_FILE,
  FLOW_INIT_BAD_LOG_FILE,
  FLOW_INIT_BAD_SYSTEM_SETUP,
  FLOW_INIT_BAD_SYSTEM_KNOBS,
  FLOW_INIT_BAD_CUSTOM_KNOBS,
  FLOW_INIT_BAD_TEST_CONTROL,
};

// Idle states of the whole system.
enum S0IX_STATES : std::int32_t {
  S0IX_S0IR = 0,
  S0IX_S0I1,
  S0IX_S0I2,
  S0IX_S0I3,
  S0IX_PS_ON,
  S0IX_IDLE1,
  S0IX_IDLE2,
  S0IX_IDLE3,
  S0IX_IVR_S0IX,
  S0IX_S0I2_0,
  S0IX_S0I2_1,
  S0IX_S0I2_2,
  S0IX_S0I3_0,
  S0IX_S0I3_1,
  S0IX_S0I3_2,
  S0IX_S0I3_3,
  S0IX_S0I3_4,
  S0IX_UNKNOWN,
};

// Return the name of a value, empty text for a value without one.
VEXOR_EXPORT const char* GetTestModeName(int value);
VEXOR_EXPORT const char* GetTestControlNameByID(int value);
VEXOR_EXPORT const char* GetS0ixStatesName(int value);

// Return the value of a name; for any other text the enumeration's unknown value.
VEXOR_EXPORT TEST_MODE ParseTestModeID(std::string_view text);
VEXOR_EXPORT TEST_CONTROL_ID ParseTestControlID(std::string_view text);
VEXOR_EXPORT S0IX_STATES ParseS0ixStatesID(std::string_view text);

// Returns the message of a FLOW_INIT_STATUS value, empty text for a value without one.
VEXOR_EXPORT const char* GetFlowInitStatusMsg(int value);
