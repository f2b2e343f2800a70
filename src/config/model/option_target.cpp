#include "config/model/option_target.h"

#include <algorithm>

#include "config/texts/word_list.h"

namespace vexor {
namespace {

// All tests have KNOBS in their common node; the cast makes the type that rows have.
constexpr auto kKnobs = static_cast<std::string ConfigRecord::*>(&_PM_TEST_NODE::KNOBS);

template <class Predicate>
const OptionRow* FindOption(const PmTestRow& test, Predicate is_wanted) {
  const auto option = std::ranges::find_if(test.options, is_wanted);
  return option == test.options.end() ? nullptr : &*option;
}

bool HasWord(const OptionRow& option, std::string_view word) {
  if (option.syntax != Syntax::kWordList) return false;
  const Words words = SplitWords(option.words);
  return std::ranges::find(words, word) != words.end();
}

// Several keywords may share a short name; the first that the test has an option for counts.
const OptionRow* FindOwnOption(const PmTestRow& test, std::string_view short_name) {
  for (const Keyword& keyword : Keywords()) {
    if (keyword.short_name != short_name) continue;
    const OptionRow* const own = FindOption(
        test, [&keyword](const OptionRow& option) { return option.Keyword() == keyword.name; });
    if (own != nullptr) return own;
  }
  return nullptr;
}

}  // namespace

OptionTarget FindTarget(const PmTestRow& test, const Keyword& keyword) {
  const OptionRow* const own = FindOwnOption(test, keyword.short_name);
  if (own != nullptr || keyword.kind != KeywordKind::kKnob) return {.option = own};
  const OptionRow* const list = FindOption(
      test, [&keyword](const OptionRow& option) { return HasWord(option, keyword.name); });
  const OptionRow* const knobs =
      FindOption(test, [](const OptionRow& option) { return option.text == kKnobs; });
  return {.option = list != nullptr ? list : knobs, .is_word = true};
}

std::span<const PmTestRow> TestsOfSection(VEXOR_PM_TEST_ID id) {
  if (id == PM_TEST_ALL) return PmTests();
  const PmTestRow* const test = FindPmTest(id);
  return test == nullptr ? std::span<const PmTestRow>() : std::span(test, 1);
}

}  // namespace vexor
