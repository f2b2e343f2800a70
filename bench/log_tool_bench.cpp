// Measures "vexorlog summary" on a log of 1 GB, and on one of 200 MB against other programs that do
// less with the same file, all in one run:
//
//   log_tool_bench VEXORLOG [FOLDER [ROUNDS]]
//
// The programs are measured in turns. The results are processor time (user and system, on all
// processors, smallest of all rounds) and maximum resident memory.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include "suite_log.h"

namespace {

constexpr std::size_t kLarge = 1'000'000'000;
constexpr std::size_t kSmall = 200'000'000;

constexpr const char* kPythonCount = R"(
import collections, csv, sys
with open(sys.argv[1], newline="") as file:
    rows = csv.reader(file)
    header = next(rows)
    test, result = header.index("TestType"), header.index("Result")
    print(collections.Counter((row[test], row[result]) for row in rows))
)";

struct Work {
  std::string name;
  std::vector<std::string> command;
  double seconds = std::numeric_limits<double>::infinity();
  long megabytes = 0;
};

double SecondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Runs the program and waits for it; false if it could not be started or did not exit by itself.
bool Measure(Work& work) {
  std::vector<char*> arguments;
  for (std::string& word : work.command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t streams;
  posix_spawn_file_actions_init(&streams);
  posix_spawn_file_actions_addopen(&streams, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int error =
      posix_spawnp(&child, arguments[0], &streams, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&streams);
  if (error != 0) return false;
  int status = 0;
  rusage used = {};
  if (wait4(child, &status, 0, &used) != child) return false;
  work.seconds = std::min(work.seconds, SecondsOf(used.ru_utime) + SecondsOf(used.ru_stime));
  work.megabytes = std::max(work.megabytes, used.ru_maxrss / 1024);
  constexpr int kFailuresFound = 1;  // which is what the tool says of this log
  return WIFEXITED(status) && WEXITSTATUS(status) <= kFailuresFound;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: log_tool_bench VEXORLOG [FOLDER [ROUNDS]]\n";
    return 2;
  }
  const std::string tool = argv[1];
  const std::string folder = argc > 2 ? argv[2] : "log_bench_files";
  const int rounds = argc > 3 ? std::atoi(argv[3]) : 3;
  std::filesystem::create_directories(folder);
  const std::string small = vexor::WriteSuiteLog(folder, "small", kSmall);
  const std::string large = vexor::WriteSuiteLog(folder, "large", kLarge);
  std::vector<Work> works = {
      {"vexorlog summary, 1 GB", {tool, "summary", large}},
      {"vexorlog summary, 200 MB", {tool, "summary", small}},
      {"Miller, two columns counted, 200 MB",
       {"mlr", "--icsv", "--ojson", "count-distinct", "-f", "TestType,Result", small}},
      {"Python's csv, two columns counted, 200 MB", {"python3", "-c", kPythonCount, small}},
      {"wc -l, 200 MB", {"wc", "-l", small}},
  };
  bool all_ran = true;
  for (int round = 0; round < rounds; ++round) {
    for (Work& work : works) {
      if (Measure(work)) continue;
      std::cerr << work.name << ": cannot be run, or failed\n";
      all_ran = false;
    }
  }
  std::filesystem::remove_all(folder);
  std::printf("%-44s %14s %8s %14s\n", "program", "processor time", "memory", "against 200 MB");
  for (const Work& work : works) {
    std::printf("%-44s %12.3f s %5ld MB %14.1f\n", work.name.c_str(), work.seconds, work.megabytes,
                work.seconds / works[1].seconds);
  }
  return all_ran ? 0 : 1;
}
