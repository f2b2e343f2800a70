// The sources that wake a system from sleep.
//
//   list  words joined by ";" or ",", in any case; blanks around them are ignored: "RTC;External"
//
// Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "vexor/export.h"

enum WAKE_EVENT : std::int32_t {
  WAKE_EVENT_OS_NATIVE = 0,     // "OS-Native"
  WAKE_EVENT_TIME_MWAIT = 1,    // "Time_MWait"
  WAKE_EVENT_RTC = 2,           // "RTC", "Timer"
  WAKE_EVENT_WADT = 3,          // "WADT"
  WAKE_EVENT_HWRTC = 4,         // "HWRTC"
  WAKE_EVENT_RANDOM = 5,        // "Random"
  WAKE_EVENT_EXTERNAL = 6,      // "External", "PwrBtn"
  WAKE_EVENT_USB = 7,           // "USB"
  WAKE_EVENT_AUDIO = 8,         // "Audio"
  WAKE_EVENT_NFC = 9,           // "NFC"
  WAKE_EVENT_ISH = 10,          // "ISH"
  WAKE_EVENT_FINGERPRINT = 11,  // "FingerPrint"
  WAKE_EVENT_HOME_BUTTON = 12,  // "HomeButton"
};

// Returns the events of a list, in order and including repetitions; unknown words are skipped.
VEXOR_EXPORT std::vector<WAKE_EVENT> ParseWakeEvents(std::string_view text);
