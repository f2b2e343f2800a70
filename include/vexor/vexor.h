// All public headers of the library.
#pragma once

#include "vexor/export.h"
#include "vexor/util/version.h"
