// Clocks, short waits and time stamps.
//
//   const auto start = std::chrono::steady_clock::now();
//   SleepMicroS(50);                                  // exact: spins
//   GetDeltaMicroSeconds(start);                      // 50
//   GetCurTimeStamp();                                // 2024-03-07 09:05:02.017
//
// Any thread may call.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "vexor/export.h"

// Returns the seconds since the epoch of the C runtime's clock.
VEXOR_EXPORT std::uint64_t GetSeconds();

// Returns the steady clock in milliseconds. Only the difference of two results is meaningful.
VEXOR_EXPORT std::uint64_t GetMilliSeconds();

// Returns the steady-clock time since `start`, in whole milliseconds. `start` must not be later
// than now.
VEXOR_EXPORT std::uint64_t GetDeltaMilliSeconds(std::chrono::steady_clock::time_point start);

// Returns the steady-clock time since `start`, in whole microseconds. `start` must not be later
// than now.
VEXOR_EXPORT std::uint64_t GetDeltaMicroSeconds(std::chrono::steady_clock::time_point start);

// Returns the processor's time-stamp counter, or the steady clock in nanoseconds if it has none.
VEXOR_EXPORT std::uint64_t Rdtsc();

// Spins until the time-stamp counter has advanced by at least `n`.
VEXOR_EXPORT void TscPause(std::uint64_t n);

// Gives the processor one spin-wait hint.
VEXOR_EXPORT void Pause();

// Sleeps for `ms` milliseconds, then spins for 100 microseconds, even if `ms` is 0.
VEXOR_EXPORT void SleepMilliS(std::uint32_t ms);

// Spins until `us` microseconds have passed; returns at once for 0. Never yields the thread, so
// short waits are exact.
VEXOR_EXPORT void SleepMicroS(std::uint64_t us);

namespace vexor {

// A function that returns the local time. Local, so that a simulated clock needs no time zone.
using LocalTimePoint = std::chrono::local_time<std::chrono::milliseconds>;
using LocalClock = LocalTimePoint (*)();

// Replaces the clock of the functions below, and so the time stamps of all logs: a program that
// simulates a machine or replays a recording logs the simulated time. Null restores the system's
// clock. The clock is called from any thread, even while a log is being written: it must not log,
// and must not throw.
VEXOR_EXPORT void SetLocalClock(LocalClock clock);

}  // namespace vexor

// Returns the local time for log lines: "%d-%02d-%02d %02d:%02d:%02d.%03d" of year, month, day,
// hours, minutes, seconds and milliseconds.
VEXOR_EXPORT std::string GetCurTimeStamp();

// Returns the local time for file names: the same numbers as "%d%02d%02d_%02d%02d%02d%03d".
VEXOR_EXPORT std::string GetTimeStamp();

// Returns the local date as "%d-%b-%Y" and the time as "%I:%M:%S %p", such as
// "07-Mar-2024 09:05:02 AM", or only one of them; empty text if both flags are false. Always uses
// the "C" locale.
VEXOR_EXPORT std::string CurrentTimeDateAsString(bool with_time, bool with_date);
