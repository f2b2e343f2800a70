// The whole test configuration in one record.
#pragma once

#include <cstdint>
#include <string>

#include "vexor/config/global_config.h"
#include "vexor/config/pm_tests.h"
#include "vexor/config/test_control.h"
#include "vexor/export.h"

// Owned by the caller, who resets it and then reads a file into it or writes it to a file. One
// thread at a time may use a record; different records are independent.
struct _XML_FULL_CFG {
  _GLOBALCONFIG_XMLCFG GlobalConfig;
  _GLOBALPM_XMLCFG GlobalPM;
  _WL_CUSTOMERS_XMLCFG TestControl;
  std::int32_t SelectionIndex = -1;  // kept for the application
  std::string SelectionText;         // kept for the application
};

// Sets all sections to their defaults, the selection index to -1 and the selection text to empty.
// Reads the host IP from the host-IP file (see `ReadHostIpFile`). Does not change the version-match
// flag and the loop counter.
VEXOR_EXPORT void ResetVexorXmlConfiguration(_XML_FULL_CFG& cfg);
