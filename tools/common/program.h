// What the tools have in common: a command line with commands, help, manual page and completion.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/status.h"

namespace tools {

// Describes a program; each tool defines its own.
struct Program {
  std::string_view name;
  std::string_view title;          // of the manual page: the tool's purpose in half a sentence
  std::string_view environment;    // roff: the environment variables that it uses
  std::string_view examples = {};  // of the manual page: with other programs
  std::string_view default_command = {};  // runs if the first argument is not a command
};
extern const Program kProgram;

// Makes the parser of the tool's command line, without commands. `about` is the beginning of its
// help, `footer` the end.
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

// Adds a command without arguments that prints something about the parser, such as its manual page.
void AddPrinter(CLI::App& app, Status& status, const char* name, const char* about,
                const char* footer, Status (*print)(const CLI::App&));

// Returns a check of an option's value, which must be one of the words. Its message suggests the
// word that was probably meant.
CLI::Validator OneOf(const std::vector<std::string>& words);

// Returns the words of an option with this check; empty for other options.
std::vector<std::string> WordsOf(const CLI::Option& option);

// Returns " NAME" with the name of the option's value; empty text for flags and arguments.
std::string NameValue(const CLI::Option& option);

// Prints the manual page, generated from the parser's help.
Status PrintManual(const CLI::App& app);

// Runs the command in the arguments and returns the program's exit status. The commands of `app`
// store their status in `status`.
int RunProgram(CLI::App& app, const Status& status, int argc, char** argv);

}  // namespace tools
