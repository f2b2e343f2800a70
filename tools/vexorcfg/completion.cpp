#include <set>
#include <string>
#include <vector>

#include "cli.h"
#include "error_words.h"
#include "vexor/config/syntaxes.h"

namespace tools::vexorcfg {
namespace {

std::vector<std::string> ListSubjects() {
  std::vector<std::string> names = {"option", "error", "codes"};
  for (const vexor::SyntaxInfo& syntax : vexor::GetSyntaxes()) names.emplace_back(syntax.name);
  return names;
}

std::vector<std::string> ListOptionNames() {
  std::set<std::string> names;
  for (const vexor::OptionInfo& option : vexor::GetOptions()) names.emplace(NameOf(option));
  return {names.begin(), names.end()};
}

}  // namespace

std::vector<CompletionWords> ListCompletionWords() {
  std::vector<std::string> subjects = ListSubjects();
  const std::vector<std::string> options = ListOptionNames();
  const std::vector<std::string> tests = NamesOfTests();
  std::set<std::string> names(options.begin(), options.end());  // a test has a switch of its name
  names.insert(tests.begin(), tests.end());
  subjects.insert(subjects.end(), names.begin(), names.end());
  return {{.command = "explain", .after = "option", .words = options},
          {.command = "explain", .after = "error", .words = tests},
          {.command = "explain", .after = "", .words = subjects}};
}

}  // namespace tools::vexorcfg
