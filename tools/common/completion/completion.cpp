#include "common/completion/completion.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>

#include "common/program.h"

namespace tools {
namespace {

struct Shell {
  const char* name;
  std::string (*make)(const CompletionModel&);
};

constexpr Shell kShells[] = {{"bash", MakeBashCompletion},
                             {"fish", MakeFishCompletion},
                             {"powershell", MakePowerShellCompletion},
                             {"zsh", MakeZshCompletion}};

std::vector<CompletionModel::Option> ListOptions(const CLI::App& command,
                                                 std::span<const CompletionWords> words) {
  std::vector<CompletionModel::Option> options;
  for (const CLI::Option* const option : command.get_options()) {
    if (option->get_positional()) continue;
    CompletionModel::Option added{.names = {},
                                  .about = option->get_description(),
                                  .takes_value = option->get_items_expected_max() > 0,
                                  .values = WordsOf(*option)};
    for (const std::string& name : option->get_lnames()) added.names.push_back("--" + name);
    for (const std::string& name : option->get_snames()) added.names.push_back("-" + name);
    for (const CompletionWords& known : words) {
      if (known.command.empty() && std::ranges::count(added.names, known.after) > 0) {
        added.values = known.words;
      }
    }
    options.push_back(std::move(added));
  }
  return options;
}

CompletionModel MakeModel(const CLI::App& app, std::vector<CompletionWords> words) {
  CompletionModel model{.program = app.get_name(), .commands = {}, .arguments = {}};
  for (const CLI::App* const command : app.get_subcommands(nullptr)) {
    model.commands.push_back({.name = command->get_name(),
                              .about = command->get_description(),
                              .options = ListOptions(*command, words)});
    for (const CLI::Option* const option : command->get_options()) {
      const std::vector<std::string> values = WordsOf(*option);
      if (!option->get_positional() || values.empty()) continue;
      model.arguments.push_back({.command = command->get_name(), .after = "", .words = values});
    }
  }
  std::erase_if(words, [](const CompletionWords& known) { return known.command.empty(); });
  model.arguments.insert(model.arguments.end(), words.begin(), words.end());
  return model;
}

std::string MakeFooter(const std::string& name) {
  return ReplaceAll(
      "For the current shell, or in its start-up file:\n"
      "  bash         source <(% completion)\n"
      "  zsh          source <(% completion zsh)       after compinit\n"
      "  fish         % completion fish | source\n"
      "  PowerShell   % completion powershell | Out-String | Invoke-Expression",
      "%", name);
}

}  // namespace

void AddCompletion(CLI::App& app, Status& status, std::vector<CompletionWords> (*list_words)()) {
  CLI::App* const command = app.add_subcommand("completion", "Print a completion script.");
  command->group("Commands")->footer(MakeFooter(app.get_name()));
  const auto shell = std::make_shared<std::string>("bash");
  std::vector<std::string> names;
  for (const Shell& known : kShells) names.emplace_back(known.name);
  command->add_option("SHELL", *shell, "bash, fish, powershell or zsh; bash without it")
      ->check(OneOf(names));
  command->callback([shell, list_words, &app, &status] {
    const auto* const chosen = std::ranges::find(kShells, *shell, &Shell::name);
    std::cout << chosen->make(MakeModel(app, list_words()));
    status = kClean;
  });
}

std::vector<CompletionModel::Option> CompletionModel::OptionsWithValues() const {
  std::vector<Option> found;
  for (const Command& command : commands) {
    for (const Option& option : command.options) {
      if (option.values.empty()) continue;
      const bool is_known = std::ranges::any_of(
          found, [&option](const Option& other) { return other.names == option.names; });
      if (!is_known) found.push_back(option);
    }
  }
  return found;
}

std::string JoinWords(std::span<const std::string> words, const std::string& separator,
                      const std::string& quote) {
  std::string joined;
  for (const std::string& word : words) {
    joined += (joined.empty() ? "" : separator) + quote + word + quote;
  }
  return joined;
}

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace tools
