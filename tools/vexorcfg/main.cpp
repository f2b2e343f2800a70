#include <cstdio>
#include <exception>
#include <iostream>
#include <string>

#include "cli.h"

namespace {

bool IsCommand(const CLI::App& app, const std::string& name) {
  const auto commands =
      app.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
  return !commands.empty();
}

int Run(int argc, char** argv) {
  vexorcfg::Status status = vexorcfg::kClean;
  const auto app = vexorcfg::MakeCommandLine(status);
  if (argc < 2) {
    std::cout << app->help();
    return vexorcfg::kNotRun;
  }
  const std::string command = argv[1];
  const bool is_command = IsCommand(*app, command);
  if (!is_command && !command.starts_with('-')) {
    std::cerr << "vexorcfg: no command " << command << "; vexorcfg --help lists them\n";
    return vexorcfg::kNotRun;
  }
  try {
    app->parse(argc, argv);
  } catch (const CLI::Success& asked) {  // for help or the version
    return app->exit(asked);
  } catch (const CLI::ParseError& error) {
    std::cerr << "vexorcfg: " << error.what() << "; see vexorcfg "
              << (is_command ? command + " " : "") << "--help\n";
    return vexorcfg::kNotRun;
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int status = Run(argc, argv);
    if (std::cout.flush()) return status;
    std::fputs("vexorcfg: cannot write to standard output\n", stderr);
  } catch (const std::exception& error) {
    std::cout.flush();
    std::fprintf(stderr, "vexorcfg: %s\n", error.what());
  }
  return vexorcfg::kNotRun;
}
