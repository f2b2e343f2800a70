#include <iostream>
#include <string>

#include "common/program.h"

namespace tools {
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

}  // namespace

Status PrintCompletion(const CLI::App& app, std::string_view subjects, std::string_view values) {
  const std::string_view name = kProgram.name;
  std::cout << "# Completion of " << name << " for bash: source <(" << name << " completion)\n_"
            << name
            << "() {\n"
               "  local current=${COMP_WORDS[COMP_CWORD]} words= options=\n"
               "  case ${COMP_WORDS[COMP_CWORD - 1]} in\n"
            << values
            << "    *) ;;\n"
               "  esac\n"
               "  [[ -n $words ]] || case $COMP_CWORD:${COMP_WORDS[1]}:${COMP_WORDS[2]} in\n"
               "    1:*) words='"
            << ListCommands(app) << " --help --version' ;;\n"
            << subjects;
  for (const CLI::App* const command : app.get_subcommands(nullptr)) {
    std::cout << "    *:" << command->get_name() << ":*) options='" << ListOptions(*command)
              << "' ;;\n";
  }
  std::cout << "  esac\n"
               "  [[ $current != -* ]] || words+=$options\n"
               "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
               "}\n"
               "complete -o default -F _"
            << name << ' ' << name << '\n';
  return kClean;
}

}  // namespace tools
