#include "common/completion/completion.h"

namespace tools {
namespace {

std::string Quoted(const std::string& text) {
  return "'" + ReplaceAll(ReplaceAll(text, "\\", "\\\\"), "'", "\\'") + "'";
}

// Returns the names of an option as arguments of "complete": "-l force -s f".
std::string NamesOf(const CompletionModel::Option& option) {
  std::string names;
  for (const std::string& name : option.names) {
    const bool is_long = name.starts_with("--");
    names += (is_long ? " -l " : " -s ") + name.substr(is_long ? 2 : 1);
  }
  return names;
}

}  // namespace

std::string MakeFishCompletion(const CompletionModel& model) {
  const std::string& name = model.program;
  const std::string typed = "__" + name + "_typed";
  const std::string complete = "complete -c " + name;
  std::string script = "# Completion of " + name + " for fish: " + name +
                       " completion fish | source\n"
                       "# Whether so many words are typed, or with 0 any number, which begin with "
                       "the others.\n"
                       "function " +
                       typed +
                       "\n"
                       "    set -l words (commandline -opc)\n"
                       "    test $argv[1] = 0 -o $argv[1] = (count $words)\n"
                       "    and test (count $argv) -lt 2 -o \"$argv[2]\" = \"$words[2]\"\n"
                       "    and test (count $argv) -lt 3 -o \"$argv[3]\" = \"$words[3]\"\n"
                       "end\n";
  for (const char* const option : {"help", "version"}) {
    script += complete + " -n '" + typed + " 1' -f -l " + option + "\n";
  }
  for (const CompletionModel::Command& command : model.commands) {
    script += complete + " -n '" + typed + " 1' -f -a " + command.name + " -d " +
              Quoted(command.about) + "\n";
    for (const CompletionModel::Option& option : command.options) {
      script += complete + " -n '" + typed + " 0 " + command.name + "'" + NamesOf(option) +
                (option.takes_value ? " -r" : "") +
                (option.values.empty() ? "" : " -f -a " + Quoted(JoinWords(option.values))) +
                " -d " + Quoted(option.about) + "\n";
    }
  }
  for (const CompletionWords& known : model.arguments) {
    script += complete + " -n '" + typed + (known.after.empty() ? " 2 " : " 3 ") + known.command +
              (known.after.empty() ? "" : " " + known.after) + "' -f -a " +
              Quoted(JoinWords(known.words)) + "\n";
  }
  return script;
}

}  // namespace tools
