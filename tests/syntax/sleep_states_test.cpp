#include "vexor/syntax/sleep_states.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "vexor/syntax/wake_events.h"

namespace {

TEST(WakeEvents, WordsInTheirOrder) {
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
  const std::pair<const char*, unsigned int> cases[] = {
      {"s0IX", 0x1},
      {"CS", 0x1},
      {"S3", 0x2},
      {"S4", 0x4},
      {"S5", 0x8},
      {"ShutDown", 0x10},
      {"S5-ShutDown", 0x10},
      {"S5ShutDown", 0x10},
      {"PowerOff", 0x80},
      {"S5-PowerOff", 0x80},
      {"S5PowerOff", 0x80},
      {"Hybrid-ShutDown", 0x2000},
      {"Warm-Reset", 0x20},
      {"warmreset", 0x20},
      {"Cold-Reset", 0x8000},
      {"ColdReset", 0x8000},
      {"Global-Reset", 0x4000},
      {"GlobalReset", 0x4000},
      {"s5-flow", 0x8},
      {"Power-Button", 0x10000},
      {"S4-by-PowerButton", 0x5},
      {"Reset-Button", 0x40},
      {"ResetButton", 0x40},
      {"Host-Reset-With-Power-Down", 0x7},
      {"CSME-Partition-Reset", 0x8},
      {"CSME-CMoff-with-PD", 0x9},
      {"G3OnSleep", 0x100},
      {"G3OnS4", 0x200},
      {"G3OnS5", 0x400},
      {"g3", 0x800},
      {"Hibernate", 0},
      {"S3;S4", 0},
      {" S3", 0},
      {"", 0},
  };
  for (const auto& [text, code] : cases) EXPECT_EQ(ParseGandSStates(text), code) << text;
}

TEST(SleepStates, ListsMayGiveTimes) {
  struct Item {
    unsigned int flow;
    bool is_set;
    unsigned int min_ms;
    unsigned int max_ms;
  };
  struct Case {
    const char* text;
    std::vector<Item> items;
  };
  const Case cases[] = {
      {"S0ix;S3;S4;S5", {{1, false, 0, 0}, {2, false, 0, 0}, {4, false, 0, 0}, {8, false, 0, 0}}},
      {"S3=sec:30-60; warm-reset ;;S4 = msec:5;",
       {{2, true, 30000, 60000}, {0x20, false, 0, 0}, {4, true, 5, 5}}},
      {"S6;S3=soon;S4=;=sec:1;S5=Invalid", {{2, true, 0, 0}, {4, false, 0, 0}, {8, false, 0, 0}}},
      {"S3,S4", {}},
      {"", {}},
  };
  for (const Case& row : cases) {
    const auto states = ParseSleepStates(row.text);
    ASSERT_EQ(states.size(), row.items.size()) << row.text;
    for (std::size_t i = 0; i < states.size(); ++i) {
      EXPECT_EQ(states[i].flow, row.items[i].flow) << row.text;
      EXPECT_EQ(states[i].time.isSet, row.items[i].is_set) << row.text;
      EXPECT_EQ(states[i].time.minMs, row.items[i].min_ms) << row.text;
      EXPECT_EQ(states[i].time.maxMs, row.items[i].max_ms) << row.text;
    }
  }
}

}  // namespace
