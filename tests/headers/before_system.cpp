#include "vexor/vexor.h"

#include VEXOR_SYSTEM_HEADERS
