// The command line of the tool.
#pragma once

#include <memory>

#include "common/program.h"

namespace tools::vexorlog {

// Makes the parser of the command line with all commands. Parsing runs the command that was given
// and stores its exit status.
std::unique_ptr<CLI::App> MakeCommandLine(Status& status);

}  // namespace tools::vexorlog
