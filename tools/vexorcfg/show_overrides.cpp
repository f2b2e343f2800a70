#include "show_overrides.h"

#include <iostream>

#include "common/text_output.h"
#include "comparison.h"
#include "json_output.h"
#include "settings.h"
#include "vexor/config/overrides.h"

namespace tools::vexorcfg {
namespace {

// The options of a command line, by tests, and its faults.
struct Overrides {
  std::vector<_PM_TEST_CONFIG_NODE> tests;
  std::vector<std::string> faults;
};

Overrides Parse(std::vector<std::string> arguments) {
  Overrides overrides;
  const std::string first = arguments.front();
  std::string program;  // the parser takes the first argument for it
  std::vector<char*> pointers = {program.data()};
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  overrides.tests =
      getCmdPMTestsOptions(pointers.data(), static_cast<int>(pointers.size()), overrides.faults);
  const bool has_tests = !overrides.tests.empty() || !overrides.faults.empty();
  if (!first.starts_with('/') || !has_tests) {  // the parser leaves it to the program
    overrides.faults.insert(overrides.faults.begin(),
                            Quote(first) +
                                ": no test, expected \"/\" and the short name of a "
                                "test, such as /cstate, or /all");
  }
  return overrides;
}

void Print(const Input& input, const std::vector<Difference>& changes) {
  const auto format = [](std::span<const vexor::Setting> settings) {
    return settings.empty() ? std::string("none") : FormatValue(settings);
  };
  for (const Difference& change : changes) {
    std::cout << OneLine(change.path) << ": " << format(change.a);
    if (!change.a.empty()) std::cout << " (" << PlaceOf(input.name, change.a.front()) << ')';
    std::cout << " -> " << format(change.b) << '\n';
  }
  std::cout << (changes.empty() ? "no setting" : Count(changes.size(), "setting"))
            << (changes.size() > 1 ? " change\n" : " changes\n");
}

}  // namespace

Status ShowOverrides(const Input& input, const vexor::Description& description,
                     const std::vector<std::string>& arguments, bool json) {
  const Overrides overrides = Parse(arguments);
  const vexor::Description after = vexor::DescribeXMLConfigText(input.content, overrides.tests);
  const Comparison comparison = Compare(description, after);
  const Status status = overrides.faults.empty() ? kClean : kErrors;
  if (json) {
    Json document = MakeDocument("show changes", status);
    document["file"] = input.name;
    document["changes"] = MakeDifferences(comparison.differences);
    document["faults"] = overrides.faults;
    PrintDocument(document);
    return status;
  }
  Print(input, comparison.differences);
  for (const std::string& fault : overrides.faults) Refuse("command line", OneLine(fault, 1000));
  return status;
}

}  // namespace tools::vexorcfg
