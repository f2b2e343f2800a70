// Work on many items at a time, with results in order.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace tools {

// Calls `make(0)` to `make(count - 1)` on as many threads as the machine has cores, and `use` with
// each result in this order, on the calling thread. At most a few results per thread wait for
// `use`. An exception in either ends the work and is thrown.
template <class Make, class Use>
void MapInOrder(std::size_t count, Make make, Use use) {
  using Result = decltype(make(std::size_t{}));
  constexpr std::size_t kMostWaiting = 16;  // per thread
  const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
  const std::size_t threads = std::min(cores, count);
  if (threads < 2) {
    for (std::size_t i = 0; i < count; ++i) use(make(i));
    return;
  }

  std::mutex mutex;
  std::condition_variable changed;
  std::map<std::size_t, Result> waiting;
  std::exception_ptr failure;
  std::size_t next = 0;  // to make
  std::size_t used = 0;
  const auto take = [&]() -> std::optional<std::size_t> {
    std::unique_lock lock(mutex);
    changed.wait(lock,
                 [&] { return failure || next >= count || next < used + threads * kMostWaiting; });
    return failure || next >= count ? std::nullopt : std::optional(next++);
  };
  const auto fail = [&] {
    const std::lock_guard lock(mutex);
    if (!failure) failure = std::current_exception();
  };
  const auto work = [&] {
    try {
      while (const auto i = take()) {
        Result result = make(*i);
        const std::lock_guard lock(mutex);
        waiting.emplace(*i, std::move(result));
        changed.notify_all();
      }
    } catch (...) {
      fail();
      changed.notify_all();
    }
  };
  const auto use_all = [&] {
    while (used < count) {
      std::unique_lock lock(mutex);
      changed.wait(lock, [&] { return failure || waiting.contains(used); });
      if (failure) return;
      auto result = waiting.extract(used);
      ++used;
      changed.notify_all();
      lock.unlock();
      use(std::move(result.mapped()));
    }
  };

  {
    std::vector<std::jthread> workers;
    try {
      for (std::size_t i = 0; i < threads; ++i) workers.emplace_back(work);
      use_all();
    } catch (...) {
      fail();
      changed.notify_all();
    }
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace tools
