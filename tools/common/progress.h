// How far a command that takes long has come.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>

namespace tools {

// A bar on standard error, for work that takes more than a second. Nothing is printed unless
// standard error is a terminal.
class Progress {
 public:
  // `total` is the amount of work, in any unit; with 0 no bar is shown.
  explicit Progress(std::uint64_t total);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Finish(); }

  // Counts work that is done. Any thread may call; worth calling for large amounts only.
  void Add(std::uint64_t amount);

  // Wipes the bar, for good.
  void Finish();

 private:
  using Clock = std::chrono::steady_clock;

  void Draw(std::uint64_t done);

  const std::uint64_t total_;
  std::atomic<std::uint64_t> done_ = 0;
  std::mutex mutex_;  // of what follows
  Clock::time_point next_;
  int shown_ = -1;  // percent; -1 for no bar
};

}  // namespace tools
