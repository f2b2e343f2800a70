// What all tools have in common as programs: a command line of commands, one manner of refusing.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <string_view>

#include "common/status.h"

namespace tools {

// What a program says of itself; each tool defines its own.
struct Program {
  std::string_view name;
  std::string_view title;          // of the manual page: what the tool is for, in half a sentence
  std::string_view environment;    // roff: the environment variables that it knows
  std::string_view examples = {};  // of the manual page: with other programs
  std::string_view default_command = {};  // runs when the first argument is no command
};
extern const Program kProgram;

// Makes the parser of the tool's command line, without commands. `about` and `footer` frame its
// help.
std::unique_ptr<CLI::App> MakeApp(const char* about, const char* footer);

template <class Arguments>
struct Command {
  CLI::App* app;
  Arguments* arguments;
};

// Adds a command that runs `run` on its arguments, which the parser fills, and stores the status.
template <class Arguments>
Command<Arguments> AddCommand(CLI::App& app, Status& status, const char* name, const char* about,
                              const char* footer, Status (*run)(const Arguments&)) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* const command = app.add_subcommand(name, about);
  command->group("Commands")->footer(footer);
  command->callback([arguments, run, &status] { status = run(*arguments); });
  return {command, arguments.get()};
}

// Adds a command without arguments that prints what it makes of the parser itself.
void AddPrinter(CLI::App& app, Status& status, const char* name, const char* about,
                const char* footer, Status (*print)(const CLI::App&));

// Returns " NAME", with the name of what an option takes; empty for flags and arguments.
std::string NameValue(const CLI::Option& option);

// Prints the manual page, made of the parser's help.
Status PrintManual(const CLI::App& app);

// Prints a completion script for bash, made of the parser's commands and options. `subjects` and
// `values` are cases of the script for other words: "POSITION:COMMAND:SECOND WORD) ..." and, by the
// word before, "--OPTION) ...".
Status PrintCompletion(const CLI::App& app, std::string_view subjects,
                       std::string_view values = {});

// Runs the command that the arguments name and returns the program's exit status. `app` stores the
// status of its command in `status`.
int RunProgram(CLI::App& app, const Status& status, int argc, char** argv);

}  // namespace tools
