#include "common/program.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "common/files.h"
#include "common/suggestion.h"
#include "common/terminal.h"
#include "common/text_output.h"
#include "vexor/util/strings.h"
#include "vexor/util/version.h"

namespace tools {
namespace {

// Prints options with their names and the name of their value.
class Formatter : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* option) const override {
    return NameValue(*option);
  }
};

CLI::App* FindCommand(CLI::App& app, const std::string& name) {
  const auto commands =
      app.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
  return commands.empty() ? nullptr : commands.front();
}

std::vector<std::string> NamesOfCommands(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* const command : app.get_subcommands(nullptr)) {
    names.push_back(command->get_name());
  }
  return names;
}

std::vector<std::string> NamesOfOptions(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

Status Complain(const std::string& message) {
  std::cerr << kProgram.name << ": " << message << '\n';
  return kNotRun;
}

// Whether the first word, which is not a command, is for the default command. It is not if it is
// probably a mistyped command: similar to one, and not the name of a file.
bool IsForDefaultCommand(const CLI::App& app, const std::string& word) {
  if (kProgram.default_command.empty()) return false;
  if (word.starts_with('-')) return word != "-h" && word != "--help" && word != "--version";
  return KindOf(word) != FileKind::kNone || FindSimilar(word, NamesOfCommands(app)).empty();
}

Status RefuseCommand(const CLI::App& app, const std::string& word) {
  const std::string suggestion = SuggestName(word, NamesOfCommands(app));
  const std::string advice =
      suggestion.empty() ? "; " + std::string(kProgram.name) + " --help lists them" : suggestion;
  if (kProgram.default_command.empty()) return Complain("no command " + OneLine(word) + advice);
  return Complain(OneLine(word) + ": no such file or folder, and no command" + advice);
}

std::string Describe(const CLI::ParseError& error, const CLI::App& command) {
  const std::vector<std::string> extras = command.remaining(true);
  if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::ExtrasError) || extras.empty()) {
    return error.what();
  }
  const std::string& word = extras.front();
  if (!word.starts_with('-')) return "unexpected argument " + Quote(word);
  const std::string name = word.substr(0, word.find('='));
  return "unknown option " + OneLine(name) + SuggestName(name, NamesOfOptions(command));
}

int Run(CLI::App& app, const Status& status, std::vector<std::string> words) {
  if (words.empty()) {
    std::cout << app.help();
    return kNotRun;
  }
  if (FindCommand(app, words.front()) == nullptr) {
    if (IsForDefaultCommand(app, words.front())) {
      words.emplace(words.begin(), kProgram.default_command);
    } else if (!words.front().starts_with('-')) {
      return RefuseCommand(app, words.front());
    }
  }
  const CLI::App* const command = FindCommand(app, words.front());
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::Success& asked) {  // for help or the version
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    std::string message = Describe(error, command == nullptr ? app : *command);
    if (!message.ends_with('?')) {
      message += "; see " + std::string(kProgram.name) +
                 (command == nullptr ? "" : " " + command->get_name()) + " --help";
    }
    return Complain(message);
  }
  return status;
}

}  // namespace

CLI::Validator OneOf(const std::vector<std::string>& words) {
  const auto check = [words](const std::string& text) -> std::string {
    if (std::ranges::find(words, text) != words.end()) return {};
    std::string expected;
    for (const std::string& word : words) {
      expected += (expected.empty() ? "" : &word == &words.back() ? " or " : ", ") + word;
    }
    return Quote(text) + ", expected " + expected + SuggestName(text, words);
  };
  std::string description;  // becomes a part of the type's name, where WordsOf finds it
  for (const std::string& word : words) description += (description.empty() ? "" : ",") + word;
  return {check, description};
}

std::vector<std::string> WordsOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t colon = type.find(':');
  if (colon == std::string::npos || type.find(' ') != std::string::npos) return {};
  return Split(type.substr(colon + 1), ',', false);
}

std::string NameValue(const CLI::Option& option) {
  if (option.get_positional() || option.get_items_expected_max() == 0) return {};
  const std::string type = option.get_type_name();
  return " " + type.substr(0, type.find(':'));  // what follows lists the values
}

std::unique_ptr<CLI::App> MakeApp(const char* about, const char* footer) {
  const std::string name(kProgram.name);
  auto app = std::make_unique<CLI::App>(about, name);
  app->set_version_flag("--version", name + " " + vexor::GetVersionText());
  const auto formatter = std::make_shared<Formatter>();
  formatter->label("SUBCOMMAND", "COMMAND");
  formatter->label("Positionals", "Arguments");
  app->formatter(formatter);
  app->allow_windows_style_options(false);  // "/lab/a.xml" is a file on every system
  app->footer(footer);
  app->require_subcommand(1);
  return app;
}

void AddPrinter(CLI::App& app, Status& status, const char* name, const char* about,
                const char* footer, Status (*print)(const CLI::App&)) {
  CLI::App* const command = app.add_subcommand(name, about);
  command->group("Commands")->footer(footer);
  command->callback([print, &app, &status] { status = print(app); });
}

int RunProgram(CLI::App& app, const Status& status, int argc, char** argv) {
  const std::string name(kProgram.name);
  ShowUtf8();
  try {
    const int result = Run(app, status, {argv + 1, argv + argc});
    if (std::cout.flush()) return result;
    std::fprintf(stderr, "%s: cannot write to standard output\n", name.c_str());
  } catch (const std::exception& error) {
    std::cout.flush();
    std::fprintf(stderr, "%s: %s\n", name.c_str(), error.what());
  }
  return kNotRun;
}

}  // namespace tools
