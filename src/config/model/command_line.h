// Test options on the command line: "/cstate -at msec:80 -eof".
#pragma once

#include <span>
#include <string>
#include <vector>

#include "vexor/config/overrides.h"

namespace vexor {

// Returns the tests that the arguments name, each with its options. Invalid arguments are left out
// and reported in `faults`, one line each.
std::vector<_PM_TEST_CONFIG_NODE> ReadTestOptions(std::span<char* const> arguments,
                                                  std::vector<std::string>& faults);

}  // namespace vexor
