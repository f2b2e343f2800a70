// Names of settings in configuration files and on the pages of the front end.
//
// Names are accepted exactly as they are returned: case and blanks matter. Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>

#include "vexor/export.h"

// The state of a setting while a test runs.
enum CFG_MODE : std::int32_t {
  CFG_MODE_DISABLE = 0,
  CFG_MODE_ENABLE,
  CFG_MODE_RANDOM,
  CFG_MODE_TOGGLE,
  CFG_MODE_DEFAULT,
  CFG_MODE_UNKNOWN,
};

// Settings of the system section of a configuration file.
enum SYS_CFG_ID : std::int32_t {
  SYS_CFG_PERFP_LIMITATION_ENABLE = 0,
  SYS_CFG_HANGONGLBRESET,
  SYS_CFG_HYBRID_SLEEP,
  SYS_CFG_FAST_STARTUP,
  SYS_CFG_AC_DEEP_S3,
  SYS_CFG_DC_DEEP_S3,
  SYS_CFG_AC_DEEP_S4,
  SYS_CFG_DC_DEEP_S4,
  SYS_CFG_AC_DEEP_S5,
  SYS_CFG_DC_DEEP_S5,
  SYS_CFG_LPM0_PRI,
  SYS_CFG_LPM1_PRI,
  SYS_CFG_LPM2_PRI,
  SYS_CFG_LPM3_PRI,
  SYS_CFG_LPM4_PRI,
  SYS_CFG_LPM5_PRI,
  SYS_CFG_LPM6_PRI,
  SYS_CFG_LPM7_PRI,
  SYS_CFG_STOP_ON_GLOBALRESET0_MASK,
  SYS_CFG_STOP_ON_GLOBALRESET1_MASK,
  SYS_CFG_STOP_ON_GLOBALRESET0_IOE_MASK,
  SYS_CFG_STOP_ON_GLOBALRESET1_IOE_MASK,
  SYS_CFG_HPR_CAUSE0_CHECK_MASK,
  SYS_CFG_IOE_HPR_CAUSE0_MASK,
  SYS_CFG_UNKNOWN,
};

// Settings shown by the front end.
enum GUI_CFG_ID : std::int32_t {
  GUI_CFG_PERFP_LIMITATION_ENABLE = 0,
  GUI_CFG_PERFP_THRESHOLD,
  GUI_CFG_PERFP_CLIP,
  GUI_CFG_PERFP_DIFFERENTIAL,
  GUI_CFG_HANGONGLBRESET,
  GUI_CFG_HYBRID_SLEEP,
  GUI_CFG_FAST_STARTUP,
  GUI_CFG_AC_DEEP_S3,
  GUI_CFG_DC_DEEP_S3,
  GUI_CFG_AC_DEEP_S4,
  GUI_CFG_DC_DEEP_S4,
  GUI_CFG_AC_DEEP_S5,
  GUI_CFG_DC_DEEP_S5,
  GUI_CFG_LPM0_PRI,
  GUI_CFG_LPM1_PRI,
  GUI_CFG_LPM2_PRI,
  GUI_CFG_LPM3_PRI,
  GUI_CFG_LPM4_PRI,
  GUI_CFG_LPM5_PRI,
  GUI_CFG_LPM6_PRI,
  GUI_CFG_LPM7_PRI,
  GUI_CFG_POWER_SCHEME,
  GUI_CFG_BATTERY_SIMULATION,
  GUI_CFG_CRASHLOGCOLLECT,
  GUI_CFG_STOP_ON_GLOBALRESET0_MASK,
  GUI_CFG_STOP_ON_GLOBALRESET1_MASK,
  GUI_CFG_STOP_ON_GLOBALRESET0_IOE_MASK,
  GUI_CFG_STOP_ON_GLOBALRESET1_IOE_MASK,
  GUI_CFG_HPR_CAUSE0_CHECK_MASK,
  GUI_CFG_IOE_HPR_CAUSE0_MASK,
  GUI_CFG_LTR_IGN_MASK,
  GUI_CFG_SNOOP_LATENCY_MASK,
  GUI_CFG_PEG_LINK_DISABLE_WA,
  GUI_CFG_PCIE_DMI_L1_WA,
  GUI_CFG_POWER_DOWN_ISP_WA,
  GUI_CFG_UNKNOWN = 255,
};

// Returns the name of a CFG_MODE value, "n/a" for a value without a name.
VEXOR_EXPORT const char* GetConfigEnableStatus(int value);

// Return the name of a value, empty text for a value without one.
VEXOR_EXPORT const char* GetSysConfigName(int value);
VEXOR_EXPORT const char* GetGuiConfigName(int value);

// Returns the mode of a name, CFG_MODE_UNKNOWN for any other text.
VEXOR_EXPORT CFG_MODE ParseConfigEnableStatus(std::string_view text);

// Return the setting of a name, or of the older name of a reset or hang-cause mask
// ("GlobalReset0_Check", "GlobalReset1_Check", "GlobalReset0_IOE_Check", "GlobalReset1_IOE_Check",
// "HPR_Cause0_Check"); SYS_CFG_UNKNOWN and GUI_CFG_UNKNOWN for any other text.
VEXOR_EXPORT SYS_CFG_ID ParseSysConfigID(std::string_view text);
VEXOR_EXPORT GUI_CFG_ID ParseGuiConfigID(std::string_view text);
