#include "vexor/syntax/sleep_states.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>
#include <vector>

#include "vexor/syntax/wake_events.h"

namespace {

TEST(WakeEvents, AreReadInOrder) {
  using Events = std::vector<int>;
  const std::pair<const char*, Events> cases[] = {
      {"OS-Native;Time_MWait;RTC;WADT;HWRTC;Random;External;USB;Audio;NFC;ISH;FingerPrint;"
       "HomeButton",
       {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
      {"rtc, usb;Audio", {2, 7, 8}},
      {"PwrBtn;External", {6, 6}},
      {",;timer ,,TIMER;", {2, 2}},
      {"Bluetooth;NFC; ;RTCx", {9}},
      {"\tRTC", {}},
      {"Bluetooth", {}},
      {"", {}},
  };
  for (const auto& [text, events] : cases) {
    const std::vector<WAKE_EVENT> parsed = ParseWakeEvents(text);
    EXPECT_EQ(Events(parsed.begin(), parsed.end()), events) << text;
  }
}

TEST(SleepStates, FlowsHaveCodes) {
  const std::pair<unsigned int, std::vector<const char*>> cases[] = {
      {0x1, {"s0IX", "CS"}},
      {0x2, {"S3"}},
      {0x4, {"S4"}},
      {0x5, {"S4-by-PowerButton"}},
      {0x7, {"Host-Reset-With-Power-Down"}},
      {0x8, {"S5", "s5-flow", "CSME-Partition-Reset"}},
      {0x9, {"CSME-CMoff-with-PD"}},
      {0x10, {"ShutDown", "S5-ShutDown", "S5ShutDown"}},
      {0x20, {"Warm-Reset", "warmreset"}},
      {0x40, {"Reset-Button", "ResetButton"}},
      {0x80, {"PowerOff", "S5-PowerOff", "S5PowerOff"}},
      {0x100, {"G3OnSleep"}},
      {0x200, {"G3OnS4"}},
      {0x400, {"G3OnS5"}},
      {0x800, {"g3"}},
      {0x2000, {"Hybrid-ShutDown"}},
      {0x4000, {"Global-Reset", "GlobalReset"}},
      {0x8000, {"Cold-Reset", "ColdReset"}},
      {0x10000, {"Power-Button"}},
      {0, {"Hibernate", "S3;S4", " S3", ""}},
  };
  for (const auto& [code, texts] : cases) {
    for (const char* text : texts) EXPECT_EQ(ParseGandSStates(text), code) << text;
  }
}

TEST(SleepStates, ListsMayGiveTimes) {
  const std::pair<const char*, const char*> cases[] = {
      {"S0ix;S3;S4;S5", "1 2 4 8 "},
      {"S3=sec:30-60; warm-reset ;;S4 = msec:5;", "2=30000-60000 32 4=5-5 "},
      {"S6;S3=soon;S4=;=sec:1;S5=Invalid", "2=0-0 4 8 "},
      {"S3,S4", ""},
      {"", ""},
  };
  for (const auto& [text, states] : cases) {
    std::ostringstream shown;
    for (const auto& [flow, time] : ParseSleepStates(text)) {
      shown << flow;
      if (time.isSet) shown << "=" << time.minMs << "-" << time.maxMs;
      shown << " ";
    }
    EXPECT_EQ(shown.str(), states) << text;
  }
}

}  // namespace
