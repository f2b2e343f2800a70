#include "vexor/config/overrides.h"

#include <algorithm>
#include <cassert>

#include "config/model/command_line.h"
#include "config/model/option_target.h"
#include "vexor/syntax/keywords.h"

namespace vexor {
namespace {

// The first value given for a list replaces it; further ones are appended.
void SetText(ConfigRecord& record, const OptionRow& option, const std::string& text,
             bool is_first) {
  if (option.list != nullptr) {
    auto& texts = record.*option.list;
    if (is_first) texts.clear();
    if (!text.empty()) texts.push_back(text);
  } else if (option.text != nullptr) {
    record.*option.text = text;
  }
  if (option.adjust.run != nullptr) option.adjust.run(record);
}

}  // namespace

void ApplyTestOptions(_XML_FULL_CFG& cfg, const _PM_TEST_CONFIG_NODE& node) {
  for (const PmTestRow& test : TestsOfSection(node.test)) {
    ConfigRecord& record = test.record(cfg.GlobalPM);
    for (auto given = node.options.begin(); given != node.options.end(); ++given) {
      const Keyword* const keyword = FindShortName(given->name);
      if (keyword == nullptr) continue;
      const OptionTarget target = FindTarget(test, *keyword);
      if (target.option == nullptr) continue;
      if (target.is_word) {
        assert(target.option->text != nullptr);  // KNOBS and word lists are texts
        UpdateknobsOptions(record.*target.option->text, keyword->name, given->name, given->value);
      } else {
        const auto first =
            std::ranges::find(node.options.begin(), given, given->name, &TestOption::name);
        SetText(record, *target.option, given->value, first == given);
      }
    }
  }
}

}  // namespace vexor

using namespace vexor;

std::vector<_PM_TEST_CONFIG_NODE> getCmdPMTestsOptions(char** argv, int argc,
                                                       std::vector<std::string>& faults) {
  const auto count = static_cast<std::size_t>(argc > 0 ? argc : 0);
  return ReadTestOptions({argv, count}, faults);
}
