// Shows the progress of a long command.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>

namespace tools {

// A progress bar on standard error, shown after a second. Prints nothing if standard error is not a
// terminal.
class Progress {
 public:
  // `total` is the amount of work, in any unit; with 0 no bar is shown.
  explicit Progress(std::uint64_t total);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Finish(); }

  // Counts finished work. Any thread may call; call it for larger amounts of work, not single rows.
  void Add(std::uint64_t amount);

  // Removes the bar for good.
  void Finish();

 private:
  using Clock = std::chrono::steady_clock;

  void Draw(std::uint64_t done);

  const std::uint64_t total_;
  std::atomic<std::uint64_t> done_ = 0;
  std::mutex mutex_;  // guards what follows
  Clock::time_point next_;
  int shown_ = -1;  // percent; -1 for no bar
};

}  // namespace tools
