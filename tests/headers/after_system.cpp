#include VEXOR_SYSTEM_HEADERS

#include "vexor/vexor.h"
