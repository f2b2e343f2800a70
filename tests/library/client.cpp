// A shared library that uses VexorUtils, as a plug-in of the suite's programs would.

#include "library/client.h"

#include "vexor/vexor.h"

const char* UseVexorUtils() { return vexor::GetVersionText(); }
