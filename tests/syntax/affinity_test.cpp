#include "vexor/syntax/affinity.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Numbers = std::vector<int>;

constexpr int kAll = 0x7FFF;
constexpr int kRandom = 0x7FFB;
constexpr int kSpecific = 0x7FF3;

TEST(Affinity, TextsAtThreeLevels) {
  struct Case {
    const char* text;
    Numbers package;
    Numbers unit;
    Numbers thread;
  };
  const Case cases[] = {
      {"", {kAll, kAll}, {kAll}, {kAll, kAll}},
      {"All", {kAll}, {kAll}, {kAll, kAll}},
      {"allcores", {kAll}, {kAll}, {kAll, kAll}},  // a keyword is a prefix
      {"Any", {0x7FFD}, {kAll}, {kAll, kAll}},
      {"any:4,5", {0x7FFD}, {kAll}, {0x7FFC, 4, 5}},
      {"Any:", {0x7FFD}, {kAll}, {0x7FFC}},
      {"RANDOM", {kRandom}, {kRandom}, {kRandom, kRandom}},
      {"BigCores", {kAll}, {0x7FFA}, {kAll, kAll}},
      {"smallcores", {kAll}, {0x7FF9}, {kAll, kAll}},
      {"EvenCores", {kAll}, {0x7FF8}, {kAll, kAll}},
      {"OddCores", {kAll}, {0x7FF7}, {kAll, kAll}},
      {"scores", {kAll}, {0x7FF6}, {kAll, kAll}},
      {"cCores", {kAll}, {0x7FF5}, {kAll, kAll}},
      {"ccoreatom", {kAll}, {0x7FF4}, {kAll, kAll}},
      {"Specific:1,3", {kSpecific, 1, 3}, {kSpecific, 1, 3}, {kSpecific, 1, 3}},
      {"specific:: [5-3] ", {kSpecific, 3, 4, 5}, {kSpecific, 3, 4, 5}, {kSpecific, 3, 4, 5}},
      {"Specific:0x1F:7", {kSpecific, 31}, {kSpecific, 31}, {kSpecific, 31}},
      {"Specific:1,x,3,4", {kSpecific, 3, 4}, {kSpecific, 3, 4}, {kSpecific, 3, 4}},
      {"Specific:1, 2", {kSpecific}, {kSpecific}, {kSpecific}},  // a blank is no digit
      {"Specific:1,,2", {kSpecific, 2}, {kSpecific, 2}, {kSpecific, 2}},
      {"Specific:[1,[2],]", {kSpecific, 1, 2}, {kSpecific, 1, 2}, {kSpecific, 1, 2}},
      {"Specific:[1,],", {kSpecific}, {kSpecific}, {kSpecific}},
      {"Specific:1]2,7", {kSpecific, 12, 7}, {kSpecific, 12, 7}, {kSpecific, 12, 7}},
      {"Specific:1,18446744073709551616", {kSpecific}, {kSpecific}, {kSpecific}},
      {"Specific:1,0xDEADBEEFDEADBEEF,2", {kSpecific, 2}, {kSpecific, 2}, {kSpecific, 2}},
      {"Specific:", {kSpecific}, {kSpecific}, {kSpecific}},
      {"Specific", {kAll}, {kAll}, {kAll, kAll}},
      {"0,1", {kAll, 0, 1}, {kAll, 0, 1}, {kAll, kAll}},
      {"7-9,", {kAll, 7, 8, 9}, {kAll, 7, 8, 9}, {kAll, kAll}},
      {"[0,1]", {kAll}, {kAll}, {kAll, kAll}},  // without a keyword, a list must begin with a digit
      {" All", {kAll}, {kAll}, {kAll, kAll}},
  };
  for (const Case& row : cases) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(ParsePkgAffinity(row.text), row.package) << row.text;
    EXPECT_EQ(ParseUnitAffinity(row.text, 1), row.unit) << row.text;
    EXPECT_EQ(ParseThreadAffinity(row.text), row.thread) << row.text;
    testing::internal::GetCapturedStdout();
  }
}

TEST(Affinity, AnyCoreIsReplacedWithAWarning) {
  constexpr const char* kWarning =
      "AnyCore is potentially unstable in this release. Replacing with All core affinty. See "
      "errata for details.\n";
  testing::internal::CaptureStdout();
  EXPECT_EQ(ParseUnitAffinity("anycore", 1), Numbers{kAll});
  EXPECT_EQ(testing::internal::GetCapturedStdout(), kWarning);
  testing::internal::CaptureStdout();
  EXPECT_EQ(ParseUnitAffinity("Any", 0), Numbers{kAll});
  EXPECT_EQ(ParseUnitAffinity("Specific:1", 0), Numbers{kAll});
  EXPECT_EQ(ParsePkgAffinity("Any").size() + ParseThreadAffinity("Any:1").size(), 3U);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(Affinity, TooLongListsThrowBeforeTheyGrow) {
  EXPECT_EQ(ParsePkgAffinity("0-16777215").size(), 16777217U);
  EXPECT_THROW(ParsePkgAffinity("0-16777216"), std::length_error);
  EXPECT_THROW(ParseUnitAffinity("5,0-16777215", 1), std::length_error);
  EXPECT_THROW(ParseThreadAffinity("Specific:0-0xDEADBEEFDEADBEEE"), std::length_error);
  EXPECT_THROW(ParsePkgAffinity("0-16777215,x,5"), std::length_error) << "not even for a while";
}

TEST(Affinity, ModesHaveNames) {
  const char* const names[] = {"Specific", "cCoreAtom",  "cCores",   "sCores", "32759",
                               "32760",    "SmallCores", "BigCores", "Random", "Any",
                               "Any",      "32766",      "All",      "32768"};
  int code = kSpecific;
  for (const char* name : names) EXPECT_EQ(GetAffinityString(code++), name);
  EXPECT_EQ(GetAffinityString(5), "005");
  EXPECT_EQ(GetAffinityString(-5), "-05");
  EXPECT_EQ(GetAffinityString(-2147483647 - 1), "-2147483648");
}

TEST(Affinity, Membership) {
  EXPECT_FALSE(IsInAffinity({}, 0));
  EXPECT_TRUE(IsInAffinity({kAll}, 12345));
  EXPECT_TRUE(IsInAffinity({kSpecific, 2, 4}, 4));
  EXPECT_FALSE(IsInAffinity({kSpecific, 2, 4}, 3));
  EXPECT_TRUE(IsInAffinity({kSpecific, 2, 4}, kSpecific)) << "the code counts as a number";
  EXPECT_FALSE(IsInAffinity({kSpecific, kAll}, 3)) << "only the mode can be All";
}

}  // namespace
