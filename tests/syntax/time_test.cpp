#include "vexor/syntax/time.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "vexor/util/random.h"

// For the messages of failed tests.
std::ostream& operator<<(std::ostream& out, const ONTIME_TYPE& t) {
  return out << t.avgMs << '/' << t.minMs << '/' << t.maxMs << " ms " << t.avgUs << '/' << t.minUs
             << '/' << t.maxUs << " us" << (t.isSet ? " set" : "");
}
std::ostream& operator<<(std::ostream& out, const _EXECYCLETIME& t) {
  return out << t.cycles << " cycles " << t.seconds << " s" << (t.isValid ? " valid" : "")
             << (t.isCycleCount ? " count" : "");
}

namespace {

constexpr const char* kBeyond64Bits = "99999999999999999999";

TEST(Time, UnitFactors) {
  EXPECT_EQ(DecodeTimeUnits("msec"), 1U);
  EXPECT_EQ(DecodeTimeUnits("Sec"), 1000U);
  EXPECT_EQ(DecodeTimeUnits("MIN"), 60'000U);
  EXPECT_EQ(DecodeTimeUnits("hour"), 3'600'000U);
  EXPECT_EQ(DecodeTimeUnits("secs"), 1U);
}

TEST(Time, ParseUnitTimeReadsUnitAndNumber) {
  constexpr unsigned kDefault = 7;
  const std::pair<unsigned, std::vector<std::string>> cases[] = {
      {80, {"msec:80", "about:80", "msec:4294967376"}},
      {16'000, {"sec:16", ": Sec : 0x10 :", "sec:16-16", "sec: 16 - 16 -9"}},
      {7'200'000, {"Hour:2", "min:120"}},
      {704, {"sec:4294968"}},  // wrapped around
      {0, {"sec:abc", "sec: ", "sec:-", std::string("sec:") + kBeyond64Bits}},
      {kDefault, {"10", "", "sec:", "sec:1:2"}},
  };
  for (const auto& [ms, texts] : cases) {
    for (const auto& text : texts) EXPECT_EQ(ParseUnitTime(text, 1, kDefault), ms) << text;
  }
}

TEST(Time, ParseUnitTimeDrawsFromTheSeedAndACounter) {
  constexpr unsigned kSeed = 1000;
  const auto draw = [](unsigned count, long low, long high) {
    return 1000 * UserRand(kSeed + count).Next32(low, high);
  };
  unsigned count = 0;
  const unsigned first = ParseUnitTime("sec:10-2000000", kSeed, 0);
  while (draw(count, 10, 2'000'000) != first && count < 1000) ++count;
  ASSERT_LT(count, 1000U) << "no small count of draws gives " << first;
  EXPECT_EQ(ParseUnitTime("sec:2000000 - 10", kSeed, 0), draw(count + 1, 10, 2'000'000));
  ParseUnitTime("sec:5", kSeed, 0);  // draws nothing
  EXPECT_EQ(ParseUnitTime("sec:1000-", kSeed, 0), draw(count + 2, 0, 1000)) << "a bad bound is 0";
}

TEST(Time, GetTimeReadsBrackets) {
  const std::pair<unsigned, std::vector<const char*>> cases[] = {
      {120'000, {"2[min]", "120[sec", "0x78[sec]x"}},
      {3'600'000, {"1[hour]"}},
      {704, {"4294968[sec]"}},  // wrapped around
      {0, {"2[MIN]", "500[msec]", "500", " 2[min]", "sec", "]5[sec]", "[sec]", "5[]", ""}},
      {0, {"99999999999999999999[sec]"}},
  };
  for (const auto& [ms, texts] : cases) {
    for (const char* text : texts) EXPECT_EQ(GetTime(text), ms) << text;
  }
}

TEST(Time, ParseOnTimeTypeReadsRanges) {
  struct Case {
    std::string text;
    ONTIME_TYPE time;
  };
  const Case cases[] = {{"", {}},
                        {"Invalid", {}},
                        {"invalid", {.isSet = true}},
                        {"sec", {.isSet = true}},
                        {"sec:1:2", {.isSet = true}},
                        {"msec:80", {80, 80, 80, 0, 0, 0, true}},
                        {" SEC :: 1-3 ", {2000, 1000, 3000, 0, 0, 0, true}},
                        {"min:3-0x1", {120'000, 180'000, 60'000, 0, 0, 0, true}},
                        {"about:5-8", {6, 5, 8, 0, 0, 0, true}},
                        {"sec:1 - 3", {.isSet = true}},
                        {"sec:5-", {2500, 5000, 0, 0, 0, 0, true}},
                        {"Usec:10-21", {0, 0, 0, 15, 10, 21, true}},
                        {"in usecs:7", {0, 0, 0, 7, 7, 7, true}},
                        {"CPU Ticks:any", {0, 0, 0, 1, 1, 1, true}},
                        {std::string("sec:1-") + kBeyond64Bits, {500, 1000, 0, 0, 0, 0, true}},
                        {"msec:4294967295", {0x7FFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0, 0, 0, true}}};
  for (const Case& c : cases) EXPECT_EQ(ParseOnTimeType(c.text), c.time) << c.text;
}

TEST(Time, SumsKeepMillisecondsOnly) {
  const ONTIME_TYPE a = {1, 2, 3, 4, 5, 6, true};
  const ONTIME_TYPE b = {10, 20, 30, 40, 50, 60, true};
  EXPECT_EQ(add_OnTimeStructs(a, b), (ONTIME_TYPE{11, 22, 33, 0, 0, 0, false}));
}

TEST(Time, BackToText) {
  struct Case {
    std::uint32_t min, max;
    const char *unit_time, *formatted;
  };
  const Case cases[] = {{80, 80, "msec:80", "80 msec - 80 msec"},
                        {999, 1500, "msec:999-1500", "999 msec - 1.500 sec"},
                        {10'000, 20'000, "sec:10-20", "10.000 sec - 20.000 sec"},
                        {90'000, 150'000, "sec:90-150", "90.000 sec - 150.000 sec"},
                        {120'000, 180'000, "min:2-3", "120.000 sec - 180.000 sec"},
                        {7'200'000, 7'200'000, "hour:2", "7200.000 sec - 7200.000 sec"},
                        {2000, 1000, "sec:2", "2.000 sec - 1.000 sec"},
                        {0, 0, "hour:0", "0 msec - 0 msec"},
                        {0, 0xFFFFFFFF, "msec:0-4294967295", "0 msec - 4294967.295 sec"}};
  for (const Case& c : cases) {
    const ONTIME_TYPE time = {.minMs = c.min, .maxMs = c.max};
    EXPECT_EQ(GetUnitTimeString(time), c.unit_time);
    EXPECT_EQ(FormatTime(time), c.formatted);
  }
}

TEST(Time, VerifiesUnitAndNumber) {
  struct Case {
    const char *text, *default_unit;  // the default unit is allowed when there is one
    const char *unit_first, *number_first;
  };
  const Case cases[] = {{"10:sec", nullptr, "sec:10", "10:sec"},
                        {":msec::0x10", nullptr, "msec:0x10", "0x10:msec"},
                        {"10:SEC", nullptr, "", ""},
                        {"sec: 10", nullptr, "", ""},
                        {"sec:min", nullptr, "", ""},
                        {"10:20", nullptr, "", ""},
                        {"sec:10:1", nullptr, "", ""},
                        {"10", nullptr, "", ""},
                        {"10", "any", "any:10", "10:any"},
                        {"10", "", "", ""},
                        {"x", "sec", "", ""},
                        {"", "sec", "", ""},
                        {"sec:99999999999999999999", nullptr, "", ""}};
  for (const Case& c : cases) {
    const bool allowed = c.default_unit != nullptr;
    const char* const unit = allowed ? c.default_unit : "hour";
    EXPECT_EQ(TimeUnitVerifyFormat(c.text, true, allowed, unit), c.unit_first) << c.text;
    EXPECT_EQ(TimeUnitVerifyFormat(c.text, false, allowed, unit), c.number_first) << c.text;
  }
}

TEST(Time, ExecutionLengths) {
  struct Case {
    std::string text;
    float cycle_ms;
    _EXECYCLETIME time;
    const char* rule;
  };
  constexpr float kHuge = std::numeric_limits<float>::max();
  const Case cases[] = {
      {"", 20, {}, "nothing given"},
      {"sec:10", 20, {true, false, 500, 10}, "a time"},
      {"Min:1:x", 7, {true, false, 8572, 60}, "cycles are rounded up, a third item is ignored"},
      {"msec:1", 20, {true, false, 1, 1}, "at least one second"},
      {"msec:1999", kHuge, {true, false, 1, 1}, "at least one cycle, whole seconds"},
      {"msec:1", 0, {true, false, 201, 1}, "a cycle of nothing takes 0.005F, a bit below 0.005"},
      {"msec:5", -1, {true, false, 1, 1}, "a negative cycle"},
      {"sec:0", 20, {}, "no time"},
      {"sec:x", 20, {}, "a bad time"},
      {std::string("sec:") + kBeyond64Bits, 20, {}, "too large a time is a bad one"},
      {"hour:5124095576030", 1e-30F, {true, false, UINT64_MAX, 18446744073708000}, "saturated"},
      {"100", 20, {true, true, 100, 2}, "cycles"},
      {"16777217", 1, {true, true, 16777217, 16777}, "cycles beyond single precision"},
      {"3", 500.5F, {true, true, 3, 1}, "seconds are truncated"},
      {"0x10", kHuge, {true, true, 16, UINT64_MAX / 1000}, "saturated"},
      {"PerSet:3", 20, {true, true, 12, 1}, "times the sets"},
      {"3:of #set", 20, {true, true, 12, 1}, "in either order"},
      {"cycles:3", 20, {true, true, 3, 1}, "other words are ignored"},
      {"sec:2:PerSet", 20, {true, false, 100, 2}, "a time is never multiplied by the sets"},
      {"5:0", 20, {true, true, 5, 1}, "a second item of 0 does not count"},
      {" 5", 20, {false, true, 0, 0}, "a single item is not trimmed"},
      {":5", 20, {false, true, 0, 0}, "nor split"},
      {"PerSet", 20, {false, true, 0, 0}, "no number"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ParseExeCycleTimeType(c.text, 4, c.cycle_ms / 4, c.cycle_ms / 4 * 3), c.time)
        << c.rule;
  }
  EXPECT_EQ(ParseExeCycleTimeType("PerSet:3", 0, 1, 1), (_EXECYCLETIME{.isCycleCount = true}));
}

TEST(Time, ExitOnFailureIsAShareOfTheTotal) {
  EXPECT_EQ(GetExitOnFailureCounter(10, 25), 2U);
  EXPECT_EQ(GetExitOnFailureCounter(0, 25), 0U);
  EXPECT_EQ(GetExitOnFailureCounter(150, 4'000'000'000), 6'000'000'000U);
}

}  // namespace
