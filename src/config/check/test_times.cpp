#include "config/check/test_times.h"

#include <algorithm>
#include <cassert>

#include "config/file/element_walk.h"
#include "config/tables/pm_test_table.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;
using Texts = std::span<const std::string_view>;

using TimeMember = std::string ConfigRecord::*;

constexpr std::string_view kNoTime = "Invalid";

constexpr TimeMember MemberOf(std::string _PM_TEST_NODE::*member) {
  return static_cast<TimeMember>(member);
}

constexpr TimeMember kTimes[] = {
    MemberOf(&_PM_TEST_NODE::ActiveTime),
    MemberOf(&_PM_TEST_NODE::InStateTime),
    MemberOf(&_PM_TEST_NODE::SwitchTime),
};

// Several options may set one member: the RC6 tests have their own names for the common times.
bool IsGiven(const ElementModel& model, Texts texts, TimeMember time) {
  assert(texts.size() == model.children.size());
  for (std::size_t i = 0; i < model.children.size(); ++i) {
    const bool is_time = !texts[i].empty() && texts[i] != kNoTime;
    if (model.children[i].option->text == time && is_time) return true;
  }
  return false;
}

bool IsInvalid(const ElementModel& model, Texts texts, TimeMember time) {
  for (std::size_t i = 0; i < model.children.size(); ++i) {
    if (model.children[i].option->text == time && texts[i] == kNoTime) return true;
  }
  return false;
}

// Returns the option to name if the time is missing: the written one. Returns null if the test has
// no such option, or if it has a fallback.
const OptionRow* FindNeeded(const ElementModel& model, TimeMember time) {
  for (const ElementModel& child : model.children) {
    const OptionRow& option = *child.option;
    if (option.text == time && option.IsWritten() && option.fallback.empty()) return &option;
  }
  return nullptr;
}

}  // namespace

bool IsSwitchedOn(const XMLElement& root, const ElementModel& model) {
  const XMLElement* const switches = FindSection(&root, Section::kAutoRun);
  return std::ranges::any_of(PmTests(), [&](const PmTestRow& test) {
    if (test.name != model.name && !model.StandsFor(test.name)) return false;
    const XMLElement* const current = FindElement(switches, test.name);
    const XMLElement* const older = FindElement(switches, test.older);
    return (current != nullptr && IsTrue(*current)) || (older != nullptr && IsTrue(*older));
  });
}

Words FindMissingTimes(const ElementModel& model, Texts texts) {
  Words missing;
  for (const TimeMember time : kTimes) {
    const OptionRow* const needed = FindNeeded(model, time);
    if (needed == nullptr || IsGiven(model, texts, time)) continue;
    const bool is_derived =
        needed->adjust.run != nullptr && !IsInvalid(model, texts, time) &&
        std::ranges::any_of(kTimes, [&](auto other) { return IsGiven(model, texts, other); });
    if (!is_derived) missing.push_back(needed->name);
  }
  return missing;
}

}  // namespace vexor
