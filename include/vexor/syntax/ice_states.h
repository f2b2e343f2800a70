// Idle states of the image-compute engine.
//
//   list  state words joined by ";", in any case: "Power-On", "PowerOn", "Power-Off", "PowerOff",
//         "D0", "D0I3", "D3", and "None" for ParseIceState only; blanks around a word are ignored
//
// Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "vexor/export.h"

enum ICE_POWER_STATES : std::int32_t {
  ICE_STATE_UNKNOWN = 0,
  ICE_STATE_POWER_OFF = 1,
  ICE_STATE_POWER_ON = 2,
  ICE_STATE_D0 = 3,
  ICE_STATE_D3 = 4,
  ICE_STATE_D0I3 = 5,
};

// Returns one state of a list. If the list has several, power on wins over power off, then D0,
// D0I3, D3, whatever their order in the list. Unknown words are ignored. ICE_STATE_UNKNOWN for
// "None" and if no word is known.
VEXOR_EXPORT ICE_POWER_STATES ParseIceState(std::string_view list);

// Returns the states of a list, in order. Returns an empty vector if any item is unknown or empty;
// a trailing ";" is allowed.
VEXOR_EXPORT std::vector<int> ParseExeIceSleepStates(std::string_view list);
