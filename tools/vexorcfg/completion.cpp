#include <set>
#include <string>

#include "cli.h"
#include "common/program.h"
#include "vexor/config/syntaxes.h"
#include "vexor/vocabulary/pm_tests.h"

namespace tools::vexorcfg {
namespace {

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
  return tools::PrintCompletion(app, "    2:explain:[!-]* | 2:explain:) words='" + ListSubjects() +
                                         "' ;;\n    3:explain:option) words='" + ListOptionNames() +
                                         "' ;;\n    3:explain:error) words='" + ListTests() +
                                         "' ;;\n");
}

}  // namespace tools::vexorcfg
