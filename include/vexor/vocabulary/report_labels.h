// The row labels of the reports in which a test program describes its system.
//
// Any thread may call.
#pragma once

#include "vexor/export.h"

// Returns a row label of the system-information report, empty text for an index outside the list.
VEXOR_EXPORT const char* GetDefSysInfoName(int index);

// Returns the number of row labels of the system-information report: 45.
VEXOR_EXPORT int GetDefSysInfoListSize();

// Returns a row label of the system-configuration report, empty text for an index outside the list.
VEXOR_EXPORT const char* GetDefSysCfgName(int index);

// Returns the number of row labels of the system-configuration report: 38.
VEXOR_EXPORT int GetDefSysCfgListSize();
