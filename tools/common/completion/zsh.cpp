#include "common/completion/completion.h"

namespace tools {
namespace {

// Returns "NAME:ABOUT" as one quoted word.
std::string Described(const std::string& name, const std::string& about) {
  return "'" + ReplaceAll(ReplaceAll(name + ":" + about, "\\", "\\\\"), "'", "'\\''") + "'";
}

}  // namespace

std::string MakeZshCompletion(const CompletionModel& model) {
  const std::string& name = model.program;
  std::string values;
  for (const CompletionModel::Option& option : model.OptionsWithValues()) {
    values += "    " + JoinWords(option.names, "|") + ") compadd -- " + JoinWords(option.values) +
              "; return ;;\n";
  }
  std::string commands;
  std::string options;
  for (const CompletionModel::Command& command : model.commands) {
    commands += "      " + Described(command.name, command.about) + "\n";
    options += "      " + command.name + ")\n        found=(\n";
    for (const CompletionModel::Option& option : command.options) {
      for (const std::string& form : option.names) {
        options += "          " + Described(form, option.about) + "\n";
      }
    }
    options += "        ) ;;\n";
  }
  std::string arguments;
  for (const CompletionWords& known : model.arguments) {
    arguments += (known.after.empty() ? "    3:" + known.command + ":*"
                                      : "    4:" + known.command + ":" + known.after) +
                 ") compadd -- " + JoinWords(known.words) + "; return ;;\n";
  }
  return "#compdef " + name + "\n# Completion of " + name + " for zsh: source <(" + name +
         " completion zsh)\n_" + name +
         "() {\n"
         "  local -a found\n"
         "  case $words[CURRENT-1] in\n" +
         values +
         "  esac\n"
         "  if (( CURRENT == 2 )); then\n"
         "    found=(\n" +
         commands +
         "      --help --version\n"
         "    )\n"
         "    _describe command found\n"
         "    return\n"
         "  fi\n"
         "  if [[ $words[CURRENT] == -* ]]; then\n"
         "    case $words[2] in\n" +
         options +
         "    esac\n"
         "    _describe -o option found\n"
         "    return\n"
         "  fi\n"
         "  case $CURRENT:$words[2]:$words[3] in\n" +
         arguments +
         "  esac\n"
         "  _files\n"
         "}\n"
         "if [[ $funcstack[1] == _" +
         name + " ]]; then _" + name + " \"$@\"; else compdef _" + name + ' ' + name + "; fi\n";
}

}  // namespace tools
