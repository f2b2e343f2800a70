// Parses command lines. Each line of the input is an argument.
#include "vexor/util/command_line.h"

#include <memory>

#include "fuzz.h"
#include "vexor/config/overrides.h"
#include "vexor/syntax/keywords.h"
#include "vexor/util/strings.h"

namespace {

void FuzzLookups(std::vector<char*>& argv, const std::string& option) {
  char** const begin = argv.data();
  char** const end = begin + argv.size();
  const int count = static_cast<int>(argv.size());
  const char* const value = getCmdOption(begin, end, option);
  const std::vector<const char*> values = getCmdOptions(begin, count, option);
  Require(value == nullptr || hasCmdOption(begin, end, option.c_str()), "an option is there");
  Require(value == nullptr ? values.empty() : values.front() == value, "the first value", option);
  HasPMTestId(begin, count);
}

void FuzzTestOptions(std::vector<char*>& argv) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  std::vector<std::string> faults;
  const auto nodes = getCmdPMTestsOptions(argv.data(), static_cast<int>(argv.size()), faults);
  Require(faults.size() + nodes.size() <= argv.size(), "at most one fault per argument");
  for (const _PM_TEST_CONFIG_NODE& node : nodes) {
    for (const vexor::TestOption& option : node.options) {
      Require(!option.name.empty(), "an option has a name");
    }
    vexor::ApplyTestOptions(*cfg, node);
  }
}

void FuzzKnobs(const std::string& keyword, std::string knobs) {
  const std::string name = GetKeywordShortName(keyword);
  if (name.empty()) return;
  Require(UpdateknobsOptions(knobs, keyword, name, "TRUE"), "a keyword's own short name", name);
  Require(StringContainsKeyword(knobs, keyword, ';', true), "a knob is switched on", knobs);
  UpdateknobsOptions(knobs, keyword, name, "no");
  Require(!StringContainsKeyword(knobs, keyword, ';', true), "a knob is switched off", knobs);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> arguments = SplitLines(AsText(data, size));
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  FuzzLookups(argv, arguments.front().c_str());
  FuzzTestOptions(argv);
  for (const std::string& argument : arguments) {
    FuzzKnobs(argument, arguments.front());
    PrependtoRange(arguments.front(), argument);
  }
  return 0;
}
