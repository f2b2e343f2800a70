#include "common/completion/completion.h"

namespace tools {

std::string MakePowerShellCompletion(const CompletionModel& model) {
  const std::string& name = model.program;
  const auto list = [](const std::vector<std::string>& words) {
    return "{ " + JoinWords(words, ", ", "'") + " }\n";
  };
  std::string values;
  for (const CompletionModel::Option& option : model.OptionsWithValues()) {
    for (const std::string& form : option.names) {
      values += "            '" + form + "' " + list(option.values);
    }
  }
  std::vector<std::string> commands;
  std::string options;
  for (const CompletionModel::Command& command : model.commands) {
    commands.push_back(command.name);
    std::vector<std::string> forms;
    for (const CompletionModel::Option& option : command.options) {
      forms.insert(forms.end(), option.names.begin(), option.names.end());
    }
    options += "            '" + command.name + "' " + list(forms);
  }
  commands.insert(commands.end(), {"--help", "--version"});
  std::string arguments;
  for (const CompletionWords& known : model.arguments) {
    arguments += "            '" + std::string(known.after.empty() ? "2 " : "3 ") + known.command +
                 (known.after.empty() ? "" : " " + known.after) + "' " + list(known.words);
  }
  return "# Completion of " + name + " for PowerShell: " + name +
         " completion powershell | Out-String | Invoke-Expression\n"
         "Register-ArgumentCompleter -Native -CommandName " +
         name +
         " -ScriptBlock {\n"
         "    param($word, $line, $position)\n"
         "    $typed = @($line.CommandElements | ForEach-Object { $_.ToString() })\n"
         "    if ($word -ne '') { $typed = @($typed | Select-Object -SkipLast 1) }\n"
         "    $found = @()\n"
         "    if ($typed.Count -eq 1) {\n"
         "        $found = " +
         JoinWords(commands, ", ", "'") +
         "\n"
         "    } elseif ($word -like '-*') {\n"
         "        $found = switch -CaseSensitive ($typed[1]) {\n" +
         options +
         "        }\n"
         "    } else {\n"
         "        $found = switch -CaseSensitive ($typed[-1]) {\n" +
         values +
         "        }\n"
         "        if (-not $found) {\n"
         "            $found = switch -CaseSensitive (\"$($typed.Count) $($typed[1..2])\") {\n" +
         arguments +
         "            }\n"
         "        }\n"
         "    }\n"
         "    $found | Where-Object { $_ -like \"$word*\" }\n"
         "}\n";
}

}  // namespace tools
