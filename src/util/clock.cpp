#include "vexor/util/clock.h"

#include <array>
#include <cstddef>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>
#include <thread>

#include "platform/platform.h"

namespace {

using std::chrono::steady_clock;

// The numbers of a time stamp, from the year to the milliseconds, with these texts between them.
std::string JoinNow(const std::array<const char*, 6>& separators) {
  constexpr std::array<int, 7> kWidths = {1, 2, 2, 2, 2, 2, 3};
  const vexor::LocalTime now = vexor::ReadLocalTime();
  const std::tm& calendar = now.calendar;
  const std::array<int, 7> numbers = {
      calendar.tm_year + 1900, calendar.tm_mon + 1, calendar.tm_mday, calendar.tm_hour,
      calendar.tm_min,         calendar.tm_sec,     now.millisecond};
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text << std::setfill('0');
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) text << separators[i - 1];
    text << std::setw(kWidths[i]) << numbers[i];
  }
  return text.str();
}

}  // namespace

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

std::uint64_t Rdtsc() { return vexor::ReadTimeStampCounter(); }

void TscPause(std::uint64_t n) {
  const std::uint64_t start = Rdtsc();
  while (Rdtsc() - start < n) vexor::HintSpinWait();
}

void Pause() { vexor::HintSpinWait(); }

void SleepMilliS(std::uint32_t ms) {
  constexpr std::uint64_t kSpinMicroseconds = 100;
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
  SleepMicroS(kSpinMicroseconds);
}

void SleepMicroS(std::uint64_t us) {
  if (us == 0) return;
  const std::uint64_t start = vexor::ReadPerformanceCounter();
  while ((vexor::ReadPerformanceCounter() - start) / 1000 < us) vexor::HintSpinWait();
}

std::string GetCurTimeStamp() { return JoinNow({"-", "-", " ", ":", ":", "."}); }

std::string GetTimeStamp() { return JoinNow({"", "", "_", "", "", ""}); }

std::string CurrentTimeDateAsString(bool with_time, bool with_date) {
  const std::tm now = vexor::ReadLocalTime().calendar;
  std::array<char, 80> text = {};
  // "%r" stands written out: some platforms lack it.
  if (with_date && with_time) {
    std::strftime(text.data(), text.size(), "%d-%b-%Y %I:%M:%S %p", &now);
  } else if (with_date) {
    std::strftime(text.data(), text.size(), "%d-%b-%Y", &now);
  } else if (with_time) {
    std::strftime(text.data(), text.size(), "%I:%M:%S %p", &now);
  }
  return text.data();
}
