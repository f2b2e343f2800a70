// Measures durable log lines against the floor that the disk sets: a bare loop of write and flush.
//
//   log_bench [FOLDER [ROUNDS [SECONDS]]]
//
// The disk's speed changes from moment to moment, so floor and log take turns, round by round, and
// what counts is the median of the rounds' ratios. The folder should lie on a real disk.
#include <algorithm>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/platform.h"
#include "vexor/logging/log_file.h"

namespace {

using std::chrono::steady_clock;

const std::string kLine = std::string(119, 'x') + "\n";

// Calls `work` in each of the threads until the time is over; returns calls a second. What the
// first calls cost alone, such as the name of a new file on the disk, is not measured.
template <class Work>
double Measure(int threads, double seconds, Work work) {
  std::atomic<bool> over = false;
  std::atomic<std::uint64_t> calls = 0;
  std::barrier start(threads + 1);
  std::vector<std::thread> workers;
  for (int i = 0; i < threads; ++i) {
    workers.emplace_back([&, i] {
      work(i);
      start.arrive_and_wait();
      std::uint64_t count = 0;
      for (; !over; ++count) work(i);
      calls += count;
    });
  }
  start.arrive_and_wait();
  const auto begin = steady_clock::now();
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  over = true;
  for (std::thread& worker : workers) worker.join();
  const std::chrono::duration<double> passed = steady_clock::now() - begin;
  return static_cast<double>(calls) / passed.count();
}

double MeasureFloor(const std::string& folder, int threads, double seconds) {
  const vexor::FileCalls& calls = vexor::kSystemFileCalls;
  std::vector<vexor::FileHandle> files(static_cast<std::size_t>(threads));
  for (int i = 0; i < threads; ++i) {
    calls.open(folder + "/floor" + std::to_string(i), vexor::OpenMode::kTruncate,
               files[static_cast<std::size_t>(i)]);
  }
  const double rate = Measure(threads, seconds, [&](int i) {
    std::size_t written = 0;
    calls.write(files[static_cast<std::size_t>(i)], kLine, written);
    calls.flush(files[static_cast<std::size_t>(i)]);
  });
  for (const vexor::FileHandle file : files) calls.close(file);
  return rate;
}

double MeasureLog(const std::string& folder, int threads, std::size_t logs, double seconds) {
  std::vector<VexorLogging> files(logs);  // never resized
  for (std::size_t i = 0; i < logs; ++i) {
    files[i].Initialize(folder, "log" + std::to_string(i), TRACE_DEBUG, LOG_FILE_NEW, false, true,
                        false, true);
  }
  return Measure(threads, seconds, [&](int i) {
    files[static_cast<std::size_t>(i) % logs].LogLine(kLine, TRACE_DEBUG);
  });
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

struct Comparison {
  const char* name;
  int floor_threads;
  int log_threads;
  std::size_t logs;
  double goal;
};

constexpr Comparison kComparisons[] = {
    {"one thread, against one loop", 1, 1, 1, 0.95},
    {"eight threads on one log, against one loop", 1, 8, 1, 2.5},
    {"eight threads with a log each, against eight loops", 8, 8, 8, 0.9},
};

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : "log_bench_files";
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 9;
  const double seconds = argc > 3 ? std::atof(argv[3]) : 0.3;
  std::filesystem::create_directories(folder);
  for (const Comparison& comparison : kComparisons) {
    std::vector<double> floors;
    std::vector<double> logs;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
      // Which of the two comes first changes, so that neither gains from the other's end.
      const auto floor = [&] {
        floors.push_back(MeasureFloor(folder, comparison.floor_threads, seconds));
      };
      if (round % 2 == 0) floor();
      logs.push_back(MeasureLog(folder, comparison.log_threads, comparison.logs, seconds));
      if (round % 2 != 0) floor();
      ratios.push_back(logs.back() / floors.back());
    }
    std::printf("%-52s %8.0f lines/s, floor %8.0f lines/s, ratio %5.2f (goal %.2f)\n",
                comparison.name, Median(logs), Median(floors), Median(ratios), comparison.goal);
  }
  std::filesystem::remove_all(folder);
}
