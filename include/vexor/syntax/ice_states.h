// Idle states of the image-compute engine.
//
//   list  state words joined by ";", in any case: "Power-On", "PowerOn", "Power-Off", "PowerOff",
//         "D0", "D0I3", "D3"; ParseIceState alone takes "None", too; blanks around a word are
//         passed over
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

// Returns the one state that a list asks for: of several the first in the order power on, power
// off, D0, D0I3, D3, wherever it stands; unknown words are passed over. ICE_STATE_UNKNOWN for
// "None" and when no word is known.
VEXOR_EXPORT ICE_POWER_STATES ParseIceState(std::string_view list);

// Returns the states of a list, in its order; nothing at all when an item is unknown or empty.
// A trailing ";" gives no item.
VEXOR_EXPORT std::vector<int> ParseExeIceSleepStates(std::string_view list);
