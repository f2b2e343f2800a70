#include "error_words.h"

#include <algorithm>

#include "common/suggestion.h"
#include "common/text_output.h"
#include "vexor/syntax/error_codes.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace tools::vexorcfg {
namespace {

// Returns the tag without its blanks and semicolons.
std::string NameOfTag(const vexor::ErrorTag& tag) {
  std::string name = Trim(tag.tag);
  RemoveCharsFromString(name, ":;");
  return name;
}

std::vector<VEXOR_PM_TEST_ID> AllTests() {
  std::vector<VEXOR_PM_TEST_ID> tests;
  for (int id = PM_TEST_VEXOR; id < PM_TEST_MAX; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    if (GetPMTestName(test) != "NA") tests.push_back(test);
  }
  return tests;
}

std::vector<std::string> NamesOf(const std::vector<TagUse>& tags) {
  std::vector<std::string> names;
  names.reserve(tags.size());
  for (const TagUse& tag : tags) names.push_back(tag.tag);
  return names;
}

}  // namespace

VEXOR_PM_TEST_ID FindTest(std::string_view name) {
  const VEXOR_PM_TEST_ID test = GetPMTestID(name, true);
  return test != PM_TEST_MAX ? test : ParsePMTestID(name, true);
}

std::vector<std::string> NamesOfTests() {
  std::vector<std::string> names;
  for (const VEXOR_PM_TEST_ID test : AllTests()) names.push_back(GetPMTestName(test));
  return names;
}

std::optional<std::uint32_t> ParseErrorCode(const std::string& text) {
  constexpr std::uint64_t kLargest = 0xFFFFFFFF;
  if (text.empty() || vexor::CheckSyntax("mask", text)) return std::nullopt;
  const std::uint64_t code = String2Integer(text, kLargest + 1);
  return code > kLargest ? std::nullopt : std::optional(static_cast<std::uint32_t>(code));
}

ErrorCode ExplainCode(VEXOR_PM_TEST_ID test, std::uint32_t code) {
  ErrorCode explained{.code = code, .tests = {test}, .tags = {}, .unexplained = code};
  for (const vexor::ErrorTag& tag : vexor::GetErrorTags(test, code)) {
    explained.tags.push_back({.tag = NameOfTag(tag), .bits = tag.bits, .tests = {test}});
    explained.unexplained &= ~tag.bits;
  }
  return explained;
}

std::vector<ErrorCode> ExplainCode(std::uint32_t code) {
  std::vector<ErrorCode> codes;
  for (const VEXOR_PM_TEST_ID test : AllTests()) {
    ErrorCode explained = ExplainCode(test, code);
    const auto same = std::ranges::find_if(codes, [&](const ErrorCode& other) {
      return NamesOf(other.tags) == NamesOf(explained.tags);
    });
    if (same == codes.end()) {
      codes.push_back(std::move(explained));
    } else {
      same->tests.push_back(test);
    }
  }
  // Tests for which the code means nothing are left out if it means something for others.
  const auto means_nothing = [](const ErrorCode& explained) { return explained.tags.empty(); };
  if (!std::ranges::all_of(codes, means_nothing)) std::erase_if(codes, means_nothing);
  return codes;
}

std::vector<TagUse> TagsOf(VEXOR_PM_TEST_ID test) {
  std::vector<TagUse> tags;
  for (const vexor::ErrorTag& tag : vexor::ListErrorTags(test)) {
    tags.push_back({.tag = NameOfTag(tag), .bits = tag.bits, .tests = {test}});
  }
  return tags;
}

std::vector<std::string> NamesOfTags() {
  std::vector<std::string> names;
  for (const VEXOR_PM_TEST_ID test : AllTests()) {
    const std::vector<std::string> tags = NamesOf(TagsOf(test));
    names.insert(names.end(), tags.begin(), tags.end());
  }
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

std::vector<TagUse> FindTag(std::string_view name) {
  std::vector<TagUse> uses;
  for (const VEXOR_PM_TEST_ID test : AllTests()) {
    const std::optional<TagUse> tag = FindTagOf(test, name);
    if (!tag) continue;
    const auto same = std::ranges::find(uses, tag->bits, &TagUse::bits);
    if (same == uses.end()) {
      uses.push_back(*tag);
    } else {
      same->tests.push_back(test);
    }
  }
  return uses;
}

std::optional<TagUse> FindTagOf(VEXOR_PM_TEST_ID test, std::string_view name) {
  for (const TagUse& tag : TagsOf(test)) {
    if (StringCompare(tag.tag, name, true)) return tag;
  }
  return std::nullopt;
}

std::string RefuseTest(const std::string& name) {
  const std::string suggestion = SuggestName(name, NamesOfTests());
  return "no test " + Quote(name) +
         (suggestion.empty() ? ", expected a name such as CSTATES; vexorcfg explain option "
                               "AutoRunCfg lists them"
                             : suggestion);
}

std::string RefuseError(VEXOR_PM_TEST_ID test, const std::string& text) {
  const std::string name = GetPMTestName(test);
  if (!FindTag(text).empty()) {
    return Quote(text) + " is no tag of " + name + "; vexorcfg explain " + text +
           " says of which tests it is one";
  }
  const std::string suggestion = SuggestName(text, NamesOf(TagsOf(test)));
  return Quote(text) + " is no error code and no tag of " + name +
         ", expected 32 bits as a decimal or 0x number, or a tag" +
         (suggestion.empty() ? "; vexorcfg explain error " + name + " lists them" : suggestion);
}

}  // namespace tools::vexorcfg
