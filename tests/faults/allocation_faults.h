// Memory that runs out on demand: the program's own operators new and delete.
#pragma once

#include <cstdint>

class AllocationFaults {
 public:
  enum class Kind : std::uint8_t { kOnce, kFromThenOn };

  // The N-th allocation of an armed call fails, for N from 1; none for 0.
  static void Set(std::uint64_t nth, Kind kind);

  // Whether one has failed since then.
  static bool Fired();

  // Runs a call of this thread under the fault.
  template <class Call>
  static auto Arm(const Call& call) {
    const Arming arming;
    return call();
  }

 private:
  struct Arming {
    Arming() { Switch(true); }
    Arming(const Arming&) = delete;
    Arming& operator=(const Arming&) = delete;
    ~Arming() { Switch(false); }
  };

  static void Switch(bool on);
};
