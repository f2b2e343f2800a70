// What older configuration files mean in the current form.
#pragma once

#include "vexor/config/full_config.h"
#include "vexor/export.h"

// Decides which test an older file's single "PCIe-Link-DState" means. Only when that element filled
// the Dx-states record and both the link test (29) and the Dx-states test (31) run: a test without
// "ConfigState" entries is switched off when the other one has some. Null does nothing.
VEXOR_EXPORT void CheckLegacyLxDx(_XML_FULL_CFG* cfg);
