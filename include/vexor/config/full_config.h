// The whole test configuration in one record.
#pragma once

#include <cstdint>
#include <string>

#include "vexor/config/global_config.h"
#include "vexor/config/pm_tests.h"
#include "vexor/config/test_control.h"
#include "vexor/export.h"

// Owned by the caller: make it, reset it, then read a file into it or write it out. One thread at a
// time may use a record; different records are independent.
struct _XML_FULL_CFG {
  _GLOBALCONFIG_XMLCFG GlobalConfig;
  _GLOBALPM_XMLCFG GlobalPM;
  _WL_CUSTOMERS_XMLCFG TestControl;
  std::int32_t SelectionIndex = -1;  // kept for the application
  std::string SelectionText;         // kept for the application
};

// Gives the record its defaults, section by section, the selection index -1 and the selection text
// empty; the host IP comes from the host-IP file (see `ReadHostIpFile`). The version-match flag and
// the loop counter stay as they are.
VEXOR_EXPORT void ResetVexorXmlConfiguration(_XML_FULL_CFG& cfg);
