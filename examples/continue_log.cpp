// Continues a log over several runs of a program, for example between restarts of the machine: each
// run continues the series of files where the last one ended, and keeps the existing files.
//
//   continue_log LOG-FOLDER

#include <cstdio>
#include <string>

#include "vexor/vexor.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: continue_log LOG-FOLDER\n", stderr);
    return 2;
  }
  const std::string folder = argv[1];
  if (const std::error_code error = vexor::MakeFolders(folder)) {
    std::fprintf(stderr, "%s: %s\n", folder.c_str(), error.message().c_str());
    return 1;
  }
  constexpr std::uint32_t kLinesPerFile = 10;
  VexorLogging log;
  log.SetLinesLimitToSplit(kLinesPerFile);
  if (!vexor::ContinueLog(log, folder, "run", TRACE_INFORMATION)) return 1;
  for (int cycle = 1; cycle <= 12; ++cycle) {
    log.LogNote("cycle " + std::to_string(cycle), TRACE_INFORMATION);
  }
  return 0;
}
