// Interprets older configuration files.
#pragma once

#include "vexor/config/full_config.h"
#include "vexor/export.h"

// Decides which test is meant by "PCIe-Link-DState", which older files have in place of "PCIe-Link"
// and "Dx-States". If the Dx-states record was read from that element and both tests (29 and 31)
// run automatically, switches off the one without "ConfigState" entries, provided that the other
// one has some. Does nothing for null.
VEXOR_EXPORT void CheckLegacyLxDx(_XML_FULL_CFG* cfg);
