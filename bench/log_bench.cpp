// Measures the average time per durable log line over all threads. Compares it with the lower limit
// that the disk sets, a loop of write and flush, and with another logger that flushes.
//
//   log_bench [FOLDER [ROUNDS [SECONDS]]]
//
// The speed of a disk varies, so the log and its peer are measured in turns, and the result is the
// median of the rounds' ratios. The folder should be on a real disk.
#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/platform.h"
#include "table.h"
#include "vexor/logging/log_file.h"

namespace {

using std::chrono::steady_clock;

const std::string kLine = std::string(119, 'x') + "\n";

// Calls `work` in each of the threads until the time is over; returns calls per second. The first
// calls are not measured, as they cost more: for example, a new file's name has to be flushed.
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

double MeasureFloor(const std::string& folder, int threads, std::size_t /*a file a thread*/,
                    double seconds) {
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

// spdlog's file sink, changed so that every line is on the disk when the call returns.
class DurableSink final : public spdlog::sinks::base_sink<std::mutex> {
 public:
  explicit DurableSink(const std::string& file) {
    calls_.open(file, vexor::OpenMode::kTruncate, handle_);
  }
  DurableSink(const DurableSink&) = delete;
  DurableSink& operator=(const DurableSink&) = delete;
  ~DurableSink() override { calls_.close(handle_); }

 protected:
  void sink_it_(const spdlog::details::log_msg& message) override {
    spdlog::memory_buf_t line;
    formatter_->format(message, line);
    std::size_t written = 0;
    calls_.write(handle_, {line.data(), line.size()}, written);
    calls_.flush(handle_);
  }
  void flush_() override {}

 private:
  const vexor::FileCalls& calls_ = vexor::kSystemFileCalls;
  vexor::FileHandle handle_ = vexor::kNoFile;
};

double MeasureSpdlog(const std::string& folder, int threads, std::size_t logs, double seconds) {
  std::vector<std::unique_ptr<spdlog::logger>> loggers;
  for (std::size_t i = 0; i < logs; ++i) {
    loggers.push_back(std::make_unique<spdlog::logger>(
        "log", std::make_shared<DurableSink>(folder + "/spdlog" + std::to_string(i))));
    loggers.back()->set_pattern("%v");
  }
  const std::string_view text = std::string_view(kLine).substr(0, kLine.size() - 1);
  return Measure(threads, seconds,
                 [&](int i) { loggers[static_cast<std::size_t>(i) % logs]->info(text); });
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Returns lines per second for this number of threads and files.
using Measurement = double (*)(const std::string& folder, int threads, std::size_t files,
                               double seconds);

struct Comparison {
  const char* work;
  int threads;
  std::size_t logs;
  const char* against;
  Measurement measure_other;
  int their_threads;
  std::size_t their_files;
};

constexpr Comparison kComparisons[] = {
    {"LogLine, one thread", 1, 1, "write and fdatasync", MeasureFloor, 1, 1},
    {"LogLine, one thread", 1, 1, "spdlog with fdatasync", MeasureSpdlog, 1, 1},
    {"LogLine, 8 threads on one log", 8, 1, "one thread's loop", MeasureFloor, 1, 1},
    {"LogLine, 8 threads on one log", 8, 1, "spdlog with fdatasync", MeasureSpdlog, 8, 1},
    {"LogLine, 8 threads with a log each", 8, 8, "8 loops of them", MeasureFloor, 8, 8},
    {"LogLine, 8 threads with a log each", 8, 8, "spdlog with fdatasync", MeasureSpdlog, 8, 8},
};

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : "log_bench_files";
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 9;
  const double seconds = argc > 3 ? std::atof(argv[3]) : 0.3;
  std::filesystem::create_directories(folder);
  for (const Comparison& comparison : kComparisons) {
    std::vector<double> others;
    std::vector<double> logs;
    std::vector<double> ratios;
    const auto measure_other = [&] {
      others.push_back(comparison.measure_other(folder, comparison.their_threads,
                                                comparison.their_files, seconds));
    };
    for (int round = 0; round < rounds; ++round) {
      // The order alternates, so that neither always runs right after the other.
      if (round % 2 == 0) measure_other();
      logs.push_back(MeasureLog(folder, comparison.threads, comparison.logs, seconds));
      if (round % 2 != 0) measure_other();
      ratios.push_back(others.back() / logs.back());
    }
    vexor::PrintRow(comparison.work, comparison.against, 1e9 / Median(logs), 1e9 / Median(others),
                    Median(ratios));
  }
  std::filesystem::remove_all(folder);
}
