#include "syntax/time_grammar.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using vexor::CheckBracketTime;
using vexor::CheckDuration;
using vexor::CheckExeCycles;
using vexor::CheckUnitTime;

using Check = std::optional<vexor::Fault> (*)(std::string_view);

TEST(TimeGrammar, GoodTextsHaveNoFault) {
  const std::pair<Check, std::vector<const char*>> cases[] = {
      {CheckDuration, {"", "Invalid", "msec:80", "Sec: 1-3", "usec:4294967295", "ticks:1"}},
      {CheckUnitTime, {"sec: 1 - 3", "Hour:0x2"}},
      {CheckBracketTime, {"10[sec]"}},
      {CheckExeCycles, {"", "100", "2:PerSet", "#Set:2", "min:5"}},
  };
  for (const auto& [check, texts] : cases) {
    for (const char* text : texts) EXPECT_FALSE(check(text)) << text;
  }
}

TEST(TimeGrammar, FaultsArePointedAt) {
  struct Case {
    Check check;
    const char* text;
    std::size_t at;
    const char* what;
  };
  const Case cases[] = {
      {CheckDuration, "msec80", 6, "not a unit and a value"},
      {CheckDuration, "sec:1:2", 7, "not a unit and a value"},
      {CheckDuration, "msek:80", 0, "unknown unit"},
      {CheckDuration, "invalid:80", 0, "unknown unit"},
      {CheckDuration, "sec: 1-x", 7, "not a number"},
      {CheckDuration, "sec:1-", 6, "not a number"},
      {CheckDuration, "sec:1 - 3", 4, "not a number"},
      {CheckDuration, "sec:4294968", 4, "number too large"},
      {CheckDuration, "usec:99999999999999999999", 5, "not a number"},
      {CheckUnitTime, "10", 2, "not a unit and a value"},
      {CheckUnitTime, "usec:10", 0, "unknown unit"},
      {CheckUnitTime, "min: ", 5, "not a number"},
      {CheckUnitTime, "min:1-", 6, "missing bound"},
      {CheckUnitTime, "hour:1-1194", 7, "number too large"},
      {CheckBracketTime, "500", 3, "no unit in brackets"},
      {CheckBracketTime, "500[msec]", 4, "unknown unit"},
      {CheckBracketTime, "5 [sec]", 0, "not a number"},
      {CheckBracketTime, "1194[hour]", 0, "number too large"},
      {CheckExeCycles, "ten", 0, "not a number"},
      {CheckExeCycles, "secs:10", 0, "unknown unit"},
      {CheckExeCycles, "sec:ten", 4, "not a number"},
      {CheckExeCycles, "PerSet:two", 0, "not a number"},
      {CheckExeCycles, "sec:10:20", 7, "a third item"},
  };
  for (const Case& c : cases) {
    const std::optional<vexor::Fault> fault = c.check(c.text);
    ASSERT_TRUE(fault) << c.text;
    EXPECT_EQ(fault->at, c.at) << c.text;
    EXPECT_EQ(fault->what, c.what) << c.text;
  }
  EXPECT_EQ(CheckDuration("msec80")->expected,
            "unit:value or unit:low-high with usec, msec, sec, min or hour (for example msec:80)");
}

}  // namespace
