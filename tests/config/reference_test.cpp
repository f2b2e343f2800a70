#include "vexor/config/reference.h"

#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <set>

#include "config/model/document_model.h"

namespace vexor {
namespace {

std::set<std::string> Matches(const std::string& text, const char* expression) {
  const std::regex regex(expression);
  std::set<std::string> matches;
  for (std::sregex_iterator i(text.begin(), text.end(), regex), end; i != end; ++i) {
    std::string match = (*i)[1];
    for (char& c : match) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    matches.insert(match);
  }
  return matches;
}

TEST(Reference, LinksHaveTargets) {
  const std::string reference = GetOptionReference();
  std::set<std::string> targets = Matches(reference, "\n#+ ([^\n]+)");
  targets.merge(Matches(reference, "<a id=\"([^\"]+)"));
  for (const std::string& link : Matches(reference, "\\]\\(#([^)]+)")) {
    EXPECT_TRUE(targets.contains(link)) << link;
  }
}

void ExpectSentences(const ElementModel& parent) {
  for (const ElementModel& child : parent.children) {
    const bool is_item = child.repeats && child.content != ElementModel::Content::kOption;
    EXPECT_TRUE(is_item || child.about.ends_with('.')) << parent.name << "/" << child.name;
    ExpectSentences(child);
  }
}

TEST(Reference, DescribesEveryElement) {
  const auto records = std::make_unique<FullRecords>();
  ExpectSentences(MakeDocumentModel(*records));
}

}  // namespace
}  // namespace vexor
