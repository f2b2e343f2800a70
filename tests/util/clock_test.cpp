#include "vexor/util/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <regex>
#include <string>

namespace {

using std::chrono::steady_clock;

TEST(Clock, WaitsLastAsLongAsAskedFor) {
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

// The moment that a stamp in the form of `pattern` names, in seconds.
std::time_t Moment(const std::string& text, const char* pattern) {
  std::smatch match;
  if (!std::regex_match(text, match, std::regex(pattern))) return -1;
  std::tm calendar = {};
  calendar.tm_year = std::stoi(match[1]) - 1900;
  calendar.tm_mon = std::stoi(match[2]) - 1;
  calendar.tm_mday = std::stoi(match[3]);
  calendar.tm_hour = std::stoi(match[4]);
  calendar.tm_min = std::stoi(match[5]);
  calendar.tm_sec = std::stoi(match[6]);
  calendar.tm_isdst = -1;
  return std::mktime(&calendar);
}

TEST(Clock, StampsAreLocalTime) {
  const auto now = static_cast<double>(std::time(nullptr));
  const std::string stamp = GetCurTimeStamp();
  const std::string name = GetTimeStamp();
  EXPECT_NEAR(
      static_cast<double>(Moment(stamp, R"((\d{4})-(\d\d)-(\d\d) (\d\d):(\d\d):(\d\d)\.\d{3})")),
      now, 2)
      << stamp;
  EXPECT_NEAR(static_cast<double>(Moment(name, R"((\d{4})(\d\d)(\d\d)_(\d\d)(\d\d)(\d\d)\d{3})")),
              now, 2)
      << name;
}

TEST(Clock, DateAndTimeComeAsAskedFor) {
  const std::string date = R"(\d\d-[A-Z][a-z]{2}-\d{4})";
  const std::string time = R"((0[1-9]|1[0-2]):[0-5]\d:[0-6]\d [AP]M)";
  EXPECT_TRUE(std::regex_match(CurrentTimeDateAsString(true, true), std::regex(date + " " + time)));
  EXPECT_TRUE(std::regex_match(CurrentTimeDateAsString(false, true), std::regex(date)));
  EXPECT_TRUE(std::regex_match(CurrentTimeDateAsString(true, false), std::regex(time)));
  EXPECT_EQ(CurrentTimeDateAsString(false, false), "");
}

}  // namespace
