#include "vexor/util/version.h"

#include "version_text.h"

namespace vexor {

const char* GetVersionText() { return kVersionText; }

}  // namespace vexor
