// The command line of the tool.
#pragma once

#include <memory>

#include "common/program.h"

namespace tools::vexorlog {

// Makes the command-line parser with all commands. Parsing runs the command and stores its exit
// status.
std::unique_ptr<CLI::App> MakeCommandLine(Status& status);

}  // namespace tools::vexorlog
