#include "vexor/syntax/sleep_states.h"

#include <array>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/words.h"
#include "util/text.h"

namespace vexor {

namespace {

// Some flows deliberately have no bit of their own ("S5-Flow" has that of "S5", "S4-by-PowerButton"
// is 5): programs that store the codes rely on these values.
constexpr auto kFlows = std::to_array<Word<unsigned int>>({
    {"S0ix", 0x1},
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
    {"WarmReset", 0x20},
    {"Cold-Reset", 0x8000},
    {"ColdReset", 0x8000},
    {"Global-Reset", 0x4000},
    {"GlobalReset", 0x4000},
    {"S5-Flow", 0x8},
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
    {"G3", 0x800},
});

unsigned int ReadFlow(std::string_view word, FaultNote& note) {
  if (const auto* const flow = FindWord(kFlows, word)) return flow->value;
  note.At(word, "unknown sleep state", kOneOf<kFlows>);
  return 0;
}

ONTIME_TYPE ReadTime(std::string_view text, FaultNote& note) {
  if (text.empty()) note.At(text, "no time", "unit:value or unit:low-high");
  if (const auto fault = CheckDuration(text)) note.Within(text, *fault);
  return ParseOnTimeType(text);
}

std::vector<SleepState> ReadSleepStates(std::string_view text, FaultNote& note) {
  std::vector<SleepState> states;
  for (std::string_view item; TakeFilledItem(text, ';', item);) {
    const std::size_t equals = item.find('=');
    SleepState state;
    state.flow = ReadFlow(TrimBlanks(item.substr(0, equals)), note);
    if (equals != std::string_view::npos) {
      state.time = ReadTime(TrimBlanks(item.substr(equals + 1)), note);
    }
    if (state.flow != 0) states.push_back(state);
  }
  return states;
}

}  // namespace

constinit const Expectation kSleepFlowWords = kOneOf<kFlows>;

std::optional<Fault> CheckGandSState(std::string_view text) {
  FaultNote note(text);
  if (!text.empty()) ReadFlow(text, note);
  return note.First();
}

std::optional<Fault> CheckSleepStates(std::string_view text) {
  FaultNote note(text);
  ReadSleepStates(text, note);
  return note.First();
}

}  // namespace vexor

using namespace vexor;

unsigned int ParseGandSStates(std::string_view text) {
  FaultNote unused(text);
  return ReadFlow(text, unused);
}

std::vector<SleepState> ParseSleepStates(std::string_view text) {
  FaultNote unused(text);
  return ReadSleepStates(text, unused);
}
