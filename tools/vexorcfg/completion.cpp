#include <iostream>
#include <set>
#include <string>

#include "cli.h"
#include "vexor/config/syntaxes.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexorcfg {
namespace {

std::string ListCommands(const CLI::App& app) {
  std::string words;
  for (const CLI::App* const command : app.get_subcommands(nullptr)) {
    words += (words.empty() ? "" : " ") + command->get_name();
  }
  return words;
}

std::string ListOptions(const CLI::App& command) {
  std::string words;
  for (const CLI::Option* const option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) words += " --" + name;
    for (const std::string& name : option->get_snames()) words += " -" + name;
  }
  return words;
}

std::string ListSubjects() {
  std::string words = "option error";
  for (const vexor::SyntaxInfo& syntax : vexor::GetSyntaxes())
    words.append(" ").append(syntax.name);
  return words;
}

std::string ListOptionNames() {
  std::set<std::string> names;
  for (const vexor::OptionInfo& option : vexor::GetOptions()) {
    names.insert(option.path.substr(option.path.rfind('/') + 1));
  }
  std::string words;
  for (const std::string& name : names) words += (words.empty() ? "" : " ") + name;
  return words;
}

std::string ListTests() {
  std::string words;
  for (int id = PM_TEST_VEXOR; id < PM_TEST_MAX; ++id) {
    const std::string name = GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(id));
    if (name != "NA") words += (words.empty() ? "" : " ") + name;
  }
  return words;
}

}  // namespace

Status PrintCompletion(const CLI::App& app) {
  std::cout << "# Completion of vexorcfg for bash: source <(vexorcfg completion)\n"
               "_vexorcfg() {\n"
               "  local current=${COMP_WORDS[COMP_CWORD]} words=\n"
               "  case $COMP_CWORD:${COMP_WORDS[1]}:${COMP_WORDS[2]} in\n"
               "    1:*) words='"
            << ListCommands(app) << " --help --version' ;;\n"
            << "    2:explain:[!-]* | 2:explain:) words='" << ListSubjects() << "' ;;\n"
            << "    3:explain:option) words='" << ListOptionNames() << "' ;;\n"
            << "    3:explain:error) words='" << ListTests() << "' ;;\n";
  for (const CLI::App* const command : app.get_subcommands(nullptr)) {
    std::cout << "    *:" << command->get_name() << ":*) words='" << ListOptions(*command)
              << "' ;;\n";
  }
  std::cout << "  esac\n"
               "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
               "}\n"
               "complete -o default -F _vexorcfg vexorcfg\n";
  return kClean;
}

}  // namespace vexorcfg
