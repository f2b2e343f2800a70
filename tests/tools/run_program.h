// Runs a program without a shell, so that a command means the same on every system.
#pragma once

#include <string>
#include <vector>

struct Streams {
  std::string input = {};   // the file that is standard input; empty for none
  std::string output = {};  // the file that standard output is appended to; empty for a closed one
  std::string errors = {};  // the same for standard error
};

// Returns the exit status of the program, the first of the words, which is searched for in PATH;
// -1 when it could not be started or did not end by itself.
int RunProgram(const std::vector<std::string>& words, const Streams& streams);
