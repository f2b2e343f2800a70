// The clock of a simulated machine, and the threads that run on it.
//
// Time passes only while all threads wait: then the clock advances to the earliest time that one of
// them waits for. Threads run one at a time, in the order of these times. So ten hours take
// seconds, and every run has the same result.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <utility>

#include "vexor/util/clock.h"

using Duration = std::chrono::milliseconds;
using Time = vexor::LocalTimePoint;

class SimulatedMachine {
 public:
  // Starts the machine at the time `start`, for so many threads. Logs are stamped with its clock
  // for as long as it exists. There may be one machine at a time.
  SimulatedMachine(Time start, unsigned threads);
  SimulatedMachine(const SimulatedMachine&) = delete;
  SimulatedMachine& operator=(const SimulatedMachine&) = delete;
  ~SimulatedMachine();

  static Time Now();

  // Sleeps, and so suspends all threads; they continue where they were.
  void Suspend(Duration time);

 private:
  friend class SimulatedThread;

  void Wait(unsigned number, Duration time);
  void Remove();
  void RunNext();
  void ShowTime() const;

  std::mutex mutex_;
  std::condition_variable turn_;
  unsigned threads_;
  unsigned running_;
  Time start_;
  Duration awake_ = {};                            // since the start
  Duration asleep_ = {};                           // in all
  std::set<std::pair<Duration, unsigned>> waits_;  // `awake_` at the end of the wait, thread
};

// Makes the current thread the thread of this number (from 0) of the machine while it exists.
class SimulatedThread {
 public:
  // Returns once all threads of the machine are there and this one's turn has come.
  SimulatedThread(SimulatedMachine& machine, unsigned number);
  SimulatedThread(const SimulatedThread&) = delete;
  SimulatedThread& operator=(const SimulatedThread&) = delete;
  ~SimulatedThread();

  // Lets this much time pass awake, during which other threads run.
  void Work(Duration time);

 private:
  SimulatedMachine& machine_;
  unsigned number_;
};
