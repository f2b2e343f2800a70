// Finds options in an argument vector, as main() receives it. The argument directly after an option
// is its value, whatever it looks like. The program's name is searched like any other argument.
//
//   hasCmdOption(argv, argv + argc, "-t");  // true for "-T" too
//   getCmdOption(argv, argv + argc, "-T");  // "5" with "prog -T 5"; null for "-t"
//
// The functions return pointers into the vector, not copies. No argument and no option may be null.
// Any thread may call.
#pragma once

#include <string_view>
#include <vector>

#include "vexor/export.h"

// Returns whether one of the arguments is the option, in any case.
VEXOR_EXPORT bool hasCmdOption(char** begin, char** end, const char* option);

// Returns the argument after the first one that is the option; null if there is none or nothing
// follows. Case matters.
VEXOR_EXPORT char* getCmdOption(char** begin, char** end, std::string_view option);

// Returns the arguments after all those that are the option; none for an `argc` below 1. Case
// matters.
VEXOR_EXPORT std::vector<const char*> getCmdOptions(char** argv, int argc, std::string_view option);
