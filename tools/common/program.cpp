#include "common/program.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "common/terminal.h"
#include "vexor/util/version.h"

namespace tools {
namespace {

// Describes options by their names alone: what they take stands in their descriptions.
class Formatter : public CLI::Formatter {
 public:
  std::string make_option_opts(const CLI::Option* /*option*/) const override { return {}; }
};

bool IsCommand(const CLI::App& app, const std::string& name) {
  const auto commands =
      app.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
  return !commands.empty();
}

int Run(CLI::App& app, const Status& status, std::vector<std::string> words) {
  if (words.empty()) {
    std::cout << app.help();
    return kNotRun;
  }
  if (!IsCommand(app, words.front()) && !words.front().starts_with('-')) {
    if (kProgram.default_command.empty()) {
      std::cerr << kProgram.name << ": no command " << words.front() << "; " << kProgram.name
                << " --help lists them\n";
      return kNotRun;
    }
    words.emplace(words.begin(), kProgram.default_command);
  }
  const std::string command = IsCommand(app, words.front()) ? words.front() + " " : "";
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::Success& asked) {  // for help or the version
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    std::cerr << kProgram.name << ": " << error.what() << "; see " << kProgram.name << ' '
              << command << "--help\n";
    return kNotRun;
  }
  return status;
}

}  // namespace

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
