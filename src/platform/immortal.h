// Global objects that are constructed at their first use and never destroyed.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <new>

namespace vexor {

// Holds an object that is constructed at its first use and never destroyed. With a static library,
// the program's own global objects may be constructed before the library's and destroyed after
// them, and they may log. Any thread may be the first user. Holds no pointer and allocates nothing
// itself, so that an `Immortal` can be constinit and usable before main.
template <class T>
class Immortal {
 public:
  constexpr Immortal() = default;
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;

  T& operator*() {
    if (!made_.load(std::memory_order_acquire)) Make();
    return *std::launder(reinterpret_cast<T*>(&bytes_));
  }
  T* operator->() { return &**this; }

 private:
  void Make() {
    std::call_once(once_, [this] {
      ::new (static_cast<void*>(&bytes_)) T();
      made_.store(true, std::memory_order_release);
    });
  }

  struct alignas(T) Bytes {
    std::byte bytes[sizeof(T)];
  };

  Bytes bytes_ = {};
  std::once_flag once_;
  std::atomic<bool> made_ = false;
};

}  // namespace vexor
