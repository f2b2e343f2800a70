#include "common/progress.h"

#include <algorithm>
#include <cassert>
#include <iostream>
#include <string>
#include <utility>

#include "common/terminal.h"

namespace tools {
namespace {

constexpr auto kDelay = std::chrono::seconds(1);
constexpr auto kPause = std::chrono::milliseconds(100);
constexpr int kWidth = 40;

}  // namespace

Progress::Progress(std::uint64_t total)
    : total_(ErrorsAreOnTerminal() ? total : 0), next_(Clock::now() + kDelay) {}

void Progress::Finish() {
  const std::lock_guard lock(mutex_);
  next_ = Clock::time_point::max();
  if (std::exchange(shown_, -1) < 0) return;
  constexpr std::size_t kLength = kWidth + std::string_view("[] 100 %").size();
  std::cerr << '\r' << std::string(kLength, ' ') << '\r' << std::flush;
}

void Progress::Add(std::uint64_t amount) {
  if (total_ == 0) return;
  const std::uint64_t done = done_ += amount;
  // A thread that does not get the mutex goes on working: another one is drawing.
  const std::unique_lock lock(mutex_, std::try_to_lock);
  if (!lock.owns_lock() || Clock::now() < next_) return;
  next_ = Clock::now() + kPause;
  Draw(std::min(done, total_));
}

void Progress::Draw(std::uint64_t done) {
  assert(total_ > 0 && done <= total_);
  const double part = static_cast<double>(done) / static_cast<double>(total_);
  const int percent = static_cast<int>(part * 100);
  if (percent == shown_) return;
  shown_ = percent;
  std::string bar(static_cast<std::size_t>(part * kWidth), '#');
  bar.resize(kWidth, '.');
  std::cerr << "\r[" << bar << "] " << percent << " %" << std::flush;
}

}  // namespace tools
