#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "show.h"
#include "vexor/util/version.h"

namespace {

int Run(int argc, char** argv) {
  CLI::App app("Reads the configuration files of the power-management test suite.", "vexorcfg");
  app.set_version_flag("--version", std::string("vexorcfg ") + vexor::GetVersionText());
  app.require_subcommand(1);
  app.footer("Example:\n  vexorcfg show lab.xml");

  std::string file;
  CLI::App* const show =
      app.add_subcommand("show", "Print what a configuration file says: which tests run and how.");
  show->add_option("FILE", file, "Configuration file")->required();

  CLI11_PARSE(app, argc, argv);
  return vexorcfg::Show(file);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vexorcfg: %s\n", error.what());
    return 3;
  }
}
