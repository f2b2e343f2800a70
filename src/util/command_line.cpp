#include "vexor/util/command_line.h"

#include <algorithm>

#include "util/text.h"

using namespace vexor;

// The asymmetry is deliberate: hasCmdOption ignores case, the functions that return values do not.

bool hasCmdOption(char** begin, char** end, const char* option) {
  return std::any_of(begin, end,
                     [option](const char* argument) { return EqualsIgnoreCase(argument, option); });
}

char* getCmdOption(char** begin, char** end, std::string_view option) {
  char** const found = std::find(begin, end, option);
  return found == end || found + 1 == end ? nullptr : found[1];
}

std::vector<const char*> getCmdOptions(char** argv, int argc, std::string_view option) {
  std::vector<const char*> values;
  for (int i = 0; i + 1 < argc; ++i) {
    if (argv[i] == option) values.push_back(argv[i + 1]);
  }
  return values;
}
