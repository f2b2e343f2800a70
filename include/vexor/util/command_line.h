// Options in an argument vector, as a program's entry point receives it. Only the argument directly
// behind an option is its value, whatever it looks like; the program's name is scanned like any
// argument.
//
//   hasCmdOption(argv, argv + argc, "-t");  // true for "-T" too
//   getCmdOption(argv, argv + argc, "-T");  // "5" with "prog -T 5"; null for "-t"
//
// The texts are those of the caller, not copies; none of them, and no option, may be null. Any
// thread may call.
#pragma once

#include <string_view>
#include <vector>

#include "vexor/export.h"

// Returns whether one of the arguments is the option, in any case.
VEXOR_EXPORT bool hasCmdOption(char** begin, char** end, const char* option);

// Returns the argument behind the first one that is the option, in exactly its case; null when
// there is none or nothing follows.
VEXOR_EXPORT char* getCmdOption(char** begin, char** end, std::string_view option);

// Returns the arguments behind all that are the option, in exactly its case. None for an `argc`
// below 1.
VEXOR_EXPORT std::vector<const char*> getCmdOptions(char** argv, int argc, std::string_view option);
