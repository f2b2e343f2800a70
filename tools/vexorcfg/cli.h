// The command line of the tool.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

#include "commands.h"
#include "common/program.h"

namespace tools::vexorcfg {

// Makes the parser of the command line with all commands. Parsing runs the command that was given
// and stores its exit status.
std::unique_ptr<CLI::App> MakeCommandLine(Status& status);

// Prints a completion script for bash that knows the names of options, syntaxes and tests, too.
Status PrintCompletion(const CLI::App& app);

}  // namespace tools::vexorcfg
