// Shows what the test options of a command line change.
#pragma once

#include <string>
#include <vector>

#include "common/files.h"
#include "common/status.h"
#include "vexor/config/describe.h"

namespace tools::vexorcfg {

// Prints the settings of the file that the arguments change, and their faults: with `json` in the
// document, otherwise on standard error.
Status ShowOverrides(const Input& input, const vexor::Description& description,
                     const std::vector<std::string>& arguments, bool json);

}  // namespace tools::vexorcfg
