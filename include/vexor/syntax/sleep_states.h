// Sleep, shutdown and reset flows.
//
//   flow  a word in any case: "S0ix", "CS", "S3", "S4", "S5", "ShutDown", "S5-ShutDown",
//         "S5ShutDown", "PowerOff", "S5-PowerOff", "S5PowerOff", "Hybrid-ShutDown", "Warm-Reset",
//         "WarmReset", "Cold-Reset", "ColdReset", "Global-Reset", "GlobalReset", "S5-Flow",
//         "Power-Button", "S4-by-PowerButton", "Reset-Button", "ResetButton",
//         "Host-Reset-With-Power-Down", "CSME-Partition-Reset", "CSME-CMoff-with-PD", "G3OnSleep",
//         "G3OnS4", "G3OnS5", "G3"
//   list  items joined by ";", each a flow, or a flow and its duration such as "S3=sec:30-60";
//         blanks around the parts are ignored: "S0ix; S3=sec:30-60; Warm-Reset"
//
// Any thread may call.
#pragma once

#include <string_view>
#include <vector>

#include "vexor/export.h"
#include "vexor/syntax/time.h"

namespace vexor {

struct SleepState {
  unsigned int flow = 0;  // the code, see ParseGandSStates
  ONTIME_TYPE time;       // not set if the item has no duration
};

}  // namespace vexor

// Returns the code of a flow, in most cases one bit; 0 for any other text, including a list and a
// flow with blanks around it.
VEXOR_EXPORT unsigned int ParseGandSStates(std::string_view text);

// Returns the flows of a list with their durations, in order; unknown flows are skipped. Durations
// are parsed by ParseOnTimeType.
VEXOR_EXPORT std::vector<vexor::SleepState> ParseSleepStates(std::string_view text);
