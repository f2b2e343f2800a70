// The command line of the tool.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

#include "commands.h"

namespace vexorcfg {

// Makes the parser of the command line with all commands. Parsing runs the command that was given
// and stores its exit status.
std::unique_ptr<CLI::App> MakeCommandLine(Status& status);

// Prints a completion script for bash, made of the parser's commands and options.
Status PrintCompletion(const CLI::App& app);

// Prints the manual page, made of the parser's help.
Status PrintManual(const CLI::App& app);

}  // namespace vexorcfg
