#include "common/completion/completion.h"

namespace tools {

std::string MakeBashCompletion(const CompletionModel& model) {
  const std::string& name = model.program;
  std::string values;
  for (const CompletionModel::Option& option : model.OptionsWithValues()) {
    values +=
        "    " + JoinWords(option.names, " | ") + ") words='" + JoinWords(option.values) + "' ;;\n";
  }
  std::string commands;
  std::string cases;
  for (const CompletionModel::Command& command : model.commands) {
    commands += command.name + " ";
    std::string options;
    for (const CompletionModel::Option& option : command.options) {
      options += " " + JoinWords(option.names);
    }
    cases += "    *:" + command.name + ":*) options='" + options + "' ;;\n";
  }
  std::string arguments;
  for (const CompletionWords& known : model.arguments) {
    const std::string words = ") words='" + JoinWords(known.words) + "' ;;\n";
    arguments += known.after.empty()
                     ? "    2:" + known.command + ":[!-]* | 2:" + known.command + ":" + words
                     : "    3:" + known.command + ":" + known.after + words;
  }
  return "# Completion of " + name + " for bash: source <(" + name + " completion)\n_" + name +
         "() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} words= options=\n"
         "  case ${COMP_WORDS[COMP_CWORD - 1]} in\n" +
         values +
         "    *) ;;\n"
         "  esac\n"
         "  [[ -n $words ]] || case $COMP_CWORD:${COMP_WORDS[1]}:${COMP_WORDS[2]} in\n"
         "    1:*) words='" +
         commands + "--help --version' ;;\n" + arguments + cases +
         "  esac\n"
         "  [[ $current != -* ]] || words+=$options\n"
         "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
         "}\n"
         "complete -o default -F _" +
         name + ' ' + name + '\n';
}

}  // namespace tools
