#include "vexor/syntax/wake_events.h"

#include <array>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/words.h"

namespace vexor {

namespace {

constexpr auto kEvents = std::to_array<Word<WAKE_EVENT>>({
    {"OS-Native", WAKE_EVENT_OS_NATIVE},
    {"Time_MWait", WAKE_EVENT_TIME_MWAIT},
    {"External", WAKE_EVENT_EXTERNAL},
    {"RTC", WAKE_EVENT_RTC},
    {"Timer", WAKE_EVENT_RTC},
    {"WADT", WAKE_EVENT_WADT},
    {"Random", WAKE_EVENT_RANDOM},
    {"HWRTC", WAKE_EVENT_HWRTC},
    {"PwrBtn", WAKE_EVENT_EXTERNAL},
    {"USB", WAKE_EVENT_USB},
    {"Audio", WAKE_EVENT_AUDIO},
    {"NFC", WAKE_EVENT_NFC},
    {"ISH", WAKE_EVENT_ISH},
    {"FingerPrint", WAKE_EVENT_FINGERPRINT},
    {"HomeButton", WAKE_EVENT_HOME_BUTTON},
});

std::vector<WAKE_EVENT> ReadWakeEvents(std::string_view text, FaultNote& note) {
  std::vector<WAKE_EVENT> events;
  ForEachItem(text, [&](std::string_view item) {
    if (const auto* const event = FindWord(kEvents, item)) {
      events.push_back(event->value);
    } else {
      note.At(item, "unknown wake event", kOneOf<kEvents>);
    }
  });
  return events;
}

}  // namespace

constinit const Expectation kWakeEventWords = kOneOf<kEvents>;

std::optional<Fault> CheckWakeEvents(std::string_view text) {
  FaultNote note(text);
  ReadWakeEvents(text, note);
  return note.First();
}

}  // namespace vexor

using namespace vexor;

std::vector<WAKE_EVENT> ParseWakeEvents(std::string_view text) {
  FaultNote unused(text);
  return ReadWakeEvents(text, unused);
}
