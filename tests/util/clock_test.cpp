#include "vexor/util/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <iomanip>
#include <regex>
#include <sstream>
#include <string>

namespace {

using std::chrono::steady_clock;

TEST(Clock, WaitsForTheGivenTime) {
  const struct {
    void (*wait)();
    std::uint64_t microseconds;
  } kWaits[] = {{[] { SleepMicroS(0); }, 0},
                {[] { SleepMicroS(300); }, 300},
                {[] { SleepMilliS(3); }, 3100},
                {[] { SleepMilliS(0); }, 100}};
  for (const auto& [wait, microseconds] : kWaits) {
    std::uint64_t shortest = UINT64_MAX;  // the machine may be busy now and then
    for (int i = 0; i < 20; ++i) {
      const auto start = steady_clock::now();
      wait();
      const std::uint64_t passed = GetDeltaMicroSeconds(start);
      EXPECT_GE(passed, microseconds);
      shortest = std::min(shortest, passed);
    }
    EXPECT_LT(shortest, 2 * microseconds + 50);
  }
  const std::uint64_t before = Rdtsc();
  TscPause(100000);
  EXPECT_GE(Rdtsc() - before, 100000U);
  Pause();
}

TEST(Clock, CountsInItsUnits) {
  const auto start = steady_clock::now() - std::chrono::seconds(7);
  EXPECT_EQ(GetDeltaMilliSeconds(start) / 1000, 7U);
  EXPECT_EQ(GetDeltaMicroSeconds(start) / 1000000, 7U);
  const auto now = static_cast<std::uint64_t>(std::time(nullptr));
  EXPECT_LE(GetSeconds() - now, 1U);
  const std::uint64_t before = GetMilliSeconds();
  SleepMilliS(5);
  EXPECT_GE(GetMilliSeconds() - before, 5U);
  EXPECT_LT(GetMilliSeconds() - before, 5000U);
}

TEST(Clock, StampsAreLocalTime) {
  const struct {
    std::string (*stamp)();
    const char* format;
    const char* milliseconds;
  } kStamps[] = {
      {GetCurTimeStamp, "%Y-%m-%d %H:%M:%S", R"(\.\d{3})"},
      {GetTimeStamp, "%Y%m%d_%H%M%S", R"(\d{3})"},
      {[] { return CurrentTimeDateAsString(true, true); }, "%d-%b-%Y %I:%M:%S %p", ""},
      {[] { return CurrentTimeDateAsString(false, true); }, "%d-%b-%Y", ""},
      {[] { return CurrentTimeDateAsString(true, false); }, "%I:%M:%S %p", ""},
      {[] { return CurrentTimeDateAsString(false, false); }, "", ""},
  };
  for (const auto& [stamp, format, milliseconds] : kStamps) {
    bool is_now = false;
    for (int attempts = 0; !is_now && attempts < 5; ++attempts) {
      if (attempts > 0) SleepMilliS(20);  // the two clocks may be a tick apart
      const std::time_t now = std::time(nullptr);
      std::ostringstream pattern;
      pattern << std::put_time(std::localtime(&now), format) << milliseconds;
      is_now = std::regex_match(stamp(), std::regex(pattern.str()));
    }
    EXPECT_TRUE(is_now) << stamp() << " is not of the form " << format;
  }
}

vexor::LocalTimePoint ReadLeapDay() {
  using namespace std::chrono;
  return local_days(2024y / February / 29) + 23h + 5min + 9s + 7ms;
}

TEST(Clock, StampsUseTheClockThatWasSet) {
  vexor::SetLocalClock(ReadLeapDay);
  EXPECT_EQ(GetCurTimeStamp(), "2024-02-29 23:05:09.007");
  EXPECT_EQ(GetTimeStamp(), "20240229_230509007");
  EXPECT_EQ(CurrentTimeDateAsString(true, true), "29-Feb-2024 11:05:09 PM");
  vexor::SetLocalClock(nullptr);
  EXPECT_EQ(GetCurTimeStamp().find("2024-02-29"), std::string::npos);
}

}  // namespace
