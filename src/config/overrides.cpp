#include "vexor/config/overrides.h"

#include <algorithm>

#include "config/pm_test_table.h"
#include "config/tables/common_node.h"
#include "syntax/keyword_table.h"

namespace vexor {
namespace {

// The keyword of an option: the common name where a test names a common field differently.
std::string_view KeywordOf(const OptionRow& option) {
  const auto field = std::ranges::find(common::kAllFields, option.text, &OptionRow::text);
  return option.take == Take::kAlways && field != common::kAllFields.end() ? field->name
                                                                           : option.name;
}

bool OverwriteTexts(ConfigRecord& record, std::span<const OptionRow> options,
                    const TestOption& given) {
  bool is_known = false;
  for (const OptionRow& option : options) {
    if (option.text == nullptr || !option.IsRead()) continue;
    if (!IsOverwriteOption(KeywordOf(option), given.name)) continue;
    record.*option.text = given.value;
    is_known = true;
  }
  return is_known;
}

// What is no option of the test may be one of its knobs.
void SwitchKnob(_PM_TEST_NODE& record, std::span<const OptionRow> options,
                const TestOption& given) {
  const Keyword* const keyword = FindShortName(given.name);
  if (keyword == nullptr || keyword->kind != KeywordKind::kSwitch) return;
  constexpr auto kKnobs = static_cast<std::string ConfigRecord::*>(&_PM_TEST_NODE::KNOBS);
  if (std::ranges::find(options, kKnobs, &OptionRow::text) != options.end())
    UpdateknobsOptions(record.KNOBS, keyword->name, given.name, given.value);
}

}  // namespace

void ApplyTestOptions(_XML_FULL_CFG& cfg, const _PM_TEST_CONFIG_NODE& node) {
  for (const PmTestRow& test : PmTests()) {
    if (node.test != test.id && node.test != PM_TEST_ALL) continue;
    auto& record = static_cast<_PM_TEST_NODE&>(test.record(cfg.GlobalPM));
    for (const TestOption& given : node.options) {
      if (!OverwriteTexts(record, test.options, given)) SwitchKnob(record, test.options, given);
    }
  }
}

}  // namespace vexor
