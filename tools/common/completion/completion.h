// Completion scripts, generated from the parser's commands and options.
#pragma once

#include <CLI/CLI.hpp>
#include <span>
#include <string>
#include <vector>

#include "common/status.h"

namespace tools {

// Words that may stand at a place of the command line and that the parser does not know.
struct CompletionWords {
  std::string command;  // of an argument; empty for the value of an option
  std::string after;    // the option, or the command's first argument, before the words; empty if
                        // they are for the first argument
  std::vector<std::string> words;
};

// Adds the command "completion". `list_words` returns the words of the tool.
void AddCompletion(CLI::App& app, Status& status, std::vector<CompletionWords> (*list_words)());

// What the scripts are made of.
struct CompletionModel {
  struct Option {
    std::vector<std::string> names;  // "--force", "-f"
    std::string about;
    bool takes_value = false;
    std::vector<std::string> values;  // known values
  };
  struct Command {
    std::string name;
    std::string about;
    std::vector<Option> options;
  };

  std::string program;
  std::vector<Command> commands;
  std::vector<CompletionWords> arguments;  // words of arguments

  // Returns the options of all commands that have known values, each once.
  [[nodiscard]] std::vector<Option> OptionsWithValues() const;
};

// Return the scripts.
std::string MakeBashCompletion(const CompletionModel& model);
std::string MakeFishCompletion(const CompletionModel& model);
std::string MakePowerShellCompletion(const CompletionModel& model);
std::string MakeZshCompletion(const CompletionModel& model);

// Returns the words, each between `quote`, with `separator` between them.
std::string JoinWords(std::span<const std::string> words, const std::string& separator = " ",
                      const std::string& quote = "");

// Replaces all occurrences of a text.
std::string ReplaceAll(std::string text, const std::string& from, const std::string& to);

}  // namespace tools
