#include "vexor/syntax/ice_states.h"

#include <algorithm>
#include <array>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/words.h"
#include "util/text.h"

namespace vexor {

namespace {

// In order of precedence: a list of several states gives the one in the topmost row.
constexpr auto kStates = std::to_array<Word<ICE_POWER_STATES>>({
    {"Power-On", ICE_STATE_POWER_ON},
    {"PowerOn", ICE_STATE_POWER_ON},
    {"Power-Off", ICE_STATE_POWER_OFF},
    {"PowerOff", ICE_STATE_POWER_OFF},
    {"D0", ICE_STATE_D0},
    {"D0I3", ICE_STATE_D0I3},
    {"D3", ICE_STATE_D3},
    {"None", ICE_STATE_UNKNOWN},
});
static_assert(kStates.back().value == ICE_STATE_UNKNOWN);

// All rows but the last: "None" is not valid in an execution list.
constexpr auto kExecutedStates = [] {
  std::array<Word<ICE_POWER_STATES>, kStates.size() - 1> states{};
  std::copy_n(kStates.begin(), states.size(), states.begin());
  return states;
}();

ICE_POWER_STATES ReadIceState(std::string_view list, FaultNote& note) {
  const auto* first = kStates.data() + kStates.size() - 1;
  for (std::string_view item; TakeFilledItem(list, ';', item);) {
    item = TrimBlanks(item);
    if (const auto* const state = FindWord(kStates, item)) {
      first = std::min(first, state);
    } else {
      note.At(item, "unknown device state", kOneOf<kStates>);
    }
  }
  return first->value;
}

std::vector<int> ReadExecutedStates(std::string_view list, FaultNote& note) {
  std::vector<int> states;
  for (std::string_view item; TakeItem(list, ';', item);) {
    const auto* const state = FindWord(kExecutedStates, TrimBlanks(item));
    if (state == nullptr) {
      note.At(item, "unknown device state, so the list is not read", kOneOf<kExecutedStates>);
      return {};
    }
    states.push_back(state->value);
  }
  return states;
}

}  // namespace

constinit const Expectation kIceStateWords = kOneOf<kStates>;
constinit const Expectation kExeIceStateWords = kOneOf<kExecutedStates>;

std::optional<Fault> CheckIceStates(std::string_view text) {
  FaultNote note(text);
  ReadIceState(text, note);
  return note.First();
}

std::optional<Fault> DoubtIceStates(std::string_view text) {
  FaultNote note(text);
  std::string_view rest = text;
  std::string_view item;
  const bool has_state = TakeFilledItem(rest, ';', item);
  if (has_state && TakeFilledItem(rest, ';', item)) {
    note.At(item, "several states, of which only one is requested", "one state",
            FaultKind::kOneOfSeveral);
  }
  return note.First();
}

std::optional<Fault> CheckExeIceSleepStates(std::string_view text) {
  FaultNote note(text);
  ReadExecutedStates(text, note);
  return note.First();
}

}  // namespace vexor

using namespace vexor;

ICE_POWER_STATES ParseIceState(std::string_view list) {
  FaultNote unused(list);
  return ReadIceState(list, unused);
}

std::vector<int> ParseExeIceSleepStates(std::string_view list) {
  FaultNote unused(list);
  return ReadExecutedStates(list, unused);
}
