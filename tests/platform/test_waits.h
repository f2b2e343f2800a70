// Stands between the library and the system where a thread waits: what runs whenever one reads the
// performance counter or spins. The linker puts it there (--wrap).
#pragma once

#include <atomic>

namespace test_waits {

using Hook = void (*)();

inline std::atomic<Hook> at_clock = nullptr;
inline std::atomic<Hook> at_spin = nullptr;

}  // namespace test_waits
