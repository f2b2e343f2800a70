// The command line of the tool.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

#include "commands.h"
#include "common/program.h"

namespace tools::vexorcfg {

// Makes the command-line parser with all commands. Parsing runs the command and stores its exit
// status.
std::unique_ptr<CLI::App> MakeCommandLine(Status& status);

// Prints a completion script for bash that also completes names of options, syntaxes and tests.
Status PrintCompletion(const CLI::App& app);

}  // namespace tools::vexorcfg
