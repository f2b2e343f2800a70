#include "logging/log_time.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "util/text.h"

namespace vexor {

namespace {

constexpr std::string_view kStampForm = "0000-00-00 00:00:00.000";
static_assert(kStampForm.size() == kStampSize);
constexpr std::size_t kDateSize = 11;  // with the blank after it

constexpr LogTime kSecond = 1000;
constexpr LogTime kMinute = 60 * kSecond;
constexpr LogTime kHour = 60 * kMinute;
constexpr LogTime kDay = 24 * kHour;

bool HasForm(std::string_view text, std::string_view form) {
  for (std::size_t i = 0; i < form.size(); ++i) {
    if (form[i] == '0' ? !IsDecDigit(text[i]) : text[i] != form[i]) return false;
  }
  return true;
}

int Read(const char* digits, int count) {
  int value = 0;
  for (int i = 0; i < count; ++i) value = value * 10 + (digits[i] - '0');
  return value;
}

LogTime ReadDate(std::string_view text) {
  using namespace std::chrono;
  if (!HasForm(text, kStampForm.substr(0, kDateSize))) return kNoLogTime;
  const char* const digits = text.data();
  const year_month_day date(year(Read(digits, 4)),
                            month(static_cast<unsigned>(Read(digits + 5, 2))),
                            day(static_cast<unsigned>(Read(digits + 8, 2))));
  return date.ok() ? sys_days(date).time_since_epoch().count() * kDay : kNoLogTime;
}

// Returns the time since midnight.
LogTime ReadTime(const char* text) {
  if (!HasForm({text, kStampSize - kDateSize}, kStampForm.substr(kDateSize))) return kNoLogTime;
  const int hour = Read(text, 2);
  const int minute = Read(text + 3, 2);
  const int second = Read(text + 6, 2);
  if (hour > 23 || minute > 59 || second > 59) return kNoLogTime;
  return hour * kHour + minute * kMinute + second * kSecond + Read(text + 9, 3);
}

}  // namespace

bool BeginsStamp(std::string_view text) {
  return text.size() <= kStampSize && HasForm(text, kStampForm.substr(0, text.size()));
}

LogTime StampReader::Read(std::string_view text) {
  if (text.size() < kStampSize) return kNoLogTime;
  const LogTime time = ReadTime(text.data() + kDateSize);
  if (time == kNoLogTime) return kNoLogTime;
  if (LastDate().empty() || std::memcmp(text.data(), date_.data(), kDateSize) != 0) {
    const LogTime midnight = ReadDate(text);
    if (midnight == kNoLogTime) return kNoLogTime;
    midnight_ = midnight;
    std::memcpy(date_.data(), text.data(), kDateSize);
  }
  return midnight_ + time;
}

LogTime ParseLogTime(std::string_view stamp) {
  return stamp.size() == kStampSize ? StampReader().Read(stamp) : kNoLogTime;
}

std::string FormatLogTime(LogTime time) {
  using namespace std::chrono;
  constexpr LogTime kFirst = sys_days(year(0) / 1 / 1).time_since_epoch().count() * kDay;
  constexpr LogTime kLast = sys_days(year(10000) / 1 / 1).time_since_epoch().count() * kDay;
  if (time < kFirst || time >= kLast) return {};
  const sys_days midnight = floor<days>(sys_time<milliseconds>(milliseconds(time)));
  const year_month_day date(midnight);
  const auto rest = static_cast<int>(time - midnight.time_since_epoch().count() * kDay);
  std::array<char, 96> text = {};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d.%03d",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(rest / kHour),
                static_cast<int>(rest / kMinute % 60), static_cast<int>(rest / kSecond % 60),
                static_cast<int>(rest % kSecond));
  return text.data();
}

}  // namespace vexor
