// Objects of the process that outlive all others.
#pragma once

#include <atomic>
#include <cstddef>
#include <mutex>
#include <new>

namespace vexor {

// Holds an object that is made at its first use and never destroyed. In a static library, objects
// of the program's own source files may be constructed before the library's and destroyed after
// them: what they use must be there all the time. Any thread may be the first user.
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
