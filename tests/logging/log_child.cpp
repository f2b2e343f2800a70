// Logs from several threads to a series of files in the folder in the first argument until it is
// killed. When a line is on the disk, its thread records that in a file of its own.
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "vexor/logging/log_file.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const std::string folder = argv[1];
  constexpr int kThreads = 4;
  ConsoleOutput::SetPrintLevel(TRACE_NO_LOG);
  VexorLogging log("header");
  log.SetLinesLimitToSplit(30);
  if (!log.Initialize(folder, "run", TRACE_DEBUG, LOG_FILE_NEW, false, true)) return 1;
  std::vector<std::jthread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      const std::string name = std::to_string(thread);
      std::ofstream returned(folder + "/returned" + name);
      for (int i = 0;; ++i) {
        const std::string line = name + " " + std::to_string(i);
        log.LogLine(line, TRACE_DEBUG);
        returned << line << '\n' << std::flush;
      }
    });
  }
}
