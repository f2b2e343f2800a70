// The command line of the tool.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "commands.h"
#include "common/completion/completion.h"
#include "common/program.h"

namespace tools::vexorcfg {

// Makes the command-line parser with all commands. Parsing runs the command and stores its exit
// status.
std::unique_ptr<CLI::App> MakeCommandLine(Status& status);

// Returns the names of options, syntaxes and tests that completion scripts complete.
std::vector<CompletionWords> ListCompletionWords();

}  // namespace tools::vexorcfg
