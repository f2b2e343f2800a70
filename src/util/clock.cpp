#include "vexor/util/clock.h"

#include <array>
#include <atomic>
#include <cassert>
#include <cstdio>
#include <ctime>
#include <thread>

#include "platform/platform.h"

namespace vexor {

namespace {

using std::chrono::steady_clock;

// Long enough even if every number has eleven characters.
using StampText = std::array<char, 96>;

constinit std::atomic<LocalClock> local_clock = nullptr;  // null means the system's clock

LocalTime MakeLocalTime(LocalTimePoint time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  LocalTime result;
  result.calendar.tm_year = static_cast<int>(date.year()) - 1900;
  result.calendar.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  result.calendar.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
  result.calendar.tm_hour = static_cast<int>(clock.hours().count());
  result.calendar.tm_min = static_cast<int>(clock.minutes().count());
  result.calendar.tm_sec = static_cast<int>(clock.seconds().count());
  result.millisecond = static_cast<int>(clock.subseconds().count());
  return result;
}

LocalTime ReadLocalClock() {
  const LocalClock clock = local_clock.load(std::memory_order_relaxed);
  return clock == nullptr ? ReadLocalTime() : MakeLocalTime(clock());
}

}  // namespace

void SetLocalClock(LocalClock clock) { local_clock.store(clock, std::memory_order_relaxed); }

}  // namespace vexor

using namespace vexor;

std::uint64_t GetSeconds() { return static_cast<std::uint64_t>(std::time(nullptr)); }

std::uint64_t GetMilliSeconds() { return GetDeltaMilliSeconds(steady_clock::time_point()); }

std::uint64_t GetDeltaMilliSeconds(steady_clock::time_point start) {
  using std::chrono::milliseconds;
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<milliseconds>(steady_clock::now() - start).count());
}

std::uint64_t GetDeltaMicroSeconds(steady_clock::time_point start) {
  using std::chrono::microseconds;
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<microseconds>(steady_clock::now() - start).count());
}

std::uint64_t Rdtsc() { return ReadTimeStampCounter(); }

void TscPause(std::uint64_t n) {
  const std::uint64_t start = Rdtsc();
  while (Rdtsc() - start < n) HintSpinWait();
}

void Pause() { HintSpinWait(); }

void SleepMilliS(std::uint32_t ms) {
  constexpr std::uint64_t kSpinMicroseconds = 100;
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
  SleepMicroS(kSpinMicroseconds);
}

void SleepMicroS(std::uint64_t us) {
  if (us == 0) return;
  const std::uint64_t start = ReadPerformanceCounter();
  while ((ReadPerformanceCounter() - start) / 1000 < us) HintSpinWait();
}

std::string GetCurTimeStamp() {
  const auto [now, millisecond] = ReadLocalClock();
  StampText text = {};
  std::snprintf(text.data(), text.size(), "%d-%02d-%02d %02d:%02d:%02d.%03d", now.tm_year + 1900,
                now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec, millisecond);
  return text.data();
}

std::string GetTimeStamp() {
  const auto [now, millisecond] = ReadLocalClock();
  StampText text = {};
  std::snprintf(text.data(), text.size(), "%d%02d%02d_%02d%02d%02d%03d", now.tm_year + 1900,
                now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec, millisecond);
  return text.data();
}

std::string CurrentTimeDateAsString(bool with_time, bool with_date) {
  // Not with strftime, whose names depend on the locale and which lacks "%r" on some systems.
  constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::tm now = ReadLocalClock().calendar;
  assert(now.tm_mon >= 0 && now.tm_mon < 12);
  StampText date = {};
  StampText time = {};
  if (with_date) {
    std::snprintf(date.data(), date.size(), "%02d-%s-%d", now.tm_mday, kMonths[now.tm_mon],
                  now.tm_year + 1900);
  }
  if (with_time) {
    const int hour = now.tm_hour % 12 == 0 ? 12 : now.tm_hour % 12;
    std::snprintf(time.data(), time.size(), "%02d:%02d:%02d %s", hour, now.tm_min, now.tm_sec,
                  now.tm_hour < 12 ? "AM" : "PM");
  }
  return std::string(date.data()) + (with_date && with_time ? " " : "") + time.data();
}
