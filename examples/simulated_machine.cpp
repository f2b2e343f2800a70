#include "simulated_machine.h"

#include <algorithm>
#include <atomic>

namespace {

std::atomic<Duration::rep> clock_face = 0;  // what the machine's clock shows

}  // namespace

SimulatedMachine::SimulatedMachine(Time start, unsigned threads)
    : threads_(threads), running_(threads), start_(start) {
  ShowTime();
  vexor::SetLocalClock(&SimulatedMachine::Now);
}

SimulatedMachine::~SimulatedMachine() { vexor::SetLocalClock(nullptr); }

Time SimulatedMachine::Now() { return Time(Duration(clock_face)); }

void SimulatedMachine::ShowTime() const {
  clock_face = (start_ + awake_ + asleep_).time_since_epoch().count();
}

void SimulatedMachine::Suspend(Duration time) {
  const std::lock_guard lock(mutex_);
  asleep_ += time;
  ShowTime();
}

void SimulatedMachine::Wait(unsigned number, Duration time) {
  std::unique_lock lock(mutex_);
  waits_.emplace(awake_ + time, number);
  RunNext();
  turn_.wait(lock, [&] { return running_ == number; });
}

void SimulatedMachine::Remove() {
  const std::lock_guard lock(mutex_);
  --threads_;
  RunNext();
}

// If all threads wait, wakes the next one.
void SimulatedMachine::RunNext() {
  if (waits_.empty() || waits_.size() < threads_) return;
  awake_ = std::max(awake_, waits_.begin()->first);
  running_ = waits_.begin()->second;
  waits_.erase(waits_.begin());
  ShowTime();
  turn_.notify_all();
}

SimulatedThread::SimulatedThread(SimulatedMachine& machine, unsigned number)
    : machine_(machine), number_(number) {
  Work(Duration(0));
}

SimulatedThread::~SimulatedThread() { machine_.Remove(); }

void SimulatedThread::Work(Duration time) { machine_.Wait(number_, time); }
