// A running test, and one thread of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "bad_night.h"
#include "measurements.h"
#include "progress.h"
#include "simulated_machine.h"
#include "vexor/vexor.h"

// The parsed options of a test.
struct Plan {
  VEXOR_PM_TEST_ID id = PM_TEST_MAX;
  std::string name;
  ONTIME_TYPE active;
  ONTIME_TYPE in_state;
  Duration start_delay = {};
  std::uint64_t iterations = 0;
  std::vector<unsigned> cores;  // one thread for each
  TRACE_LEVEL level = TRACE_INFORMATION;
  bool verify = true;
};

struct RunningTest {
  Plan plan;
  std::unique_ptr<VexorLogging> log = std::make_unique<VexorLogging>();
  std::unique_ptr<ContextUtils> auto_run = {};
  std::uint64_t failures = 0;
  unsigned code = 0;        // the error words of all failures
  std::size_t at_work = 0;  // threads that are not done
};

// Data that all threads of a run share, without a lock: threads of the simulated machine run one at
// a time.
struct Run {
  unsigned seed;
  Duration iteration;  // how long one takes, on average
  Progress& progress;
  SimulatedMachine& machine;
  BadNight& night;
};

// Runs the iterations of a test on one core.
class TestWorker {
 public:
  // Continues after the last iteration in the run's progress.
  TestWorker(Run& run, RunningTest& test, unsigned core);

  // Does the work, on a thread of its own: the machine's thread of this number.
  void Work(unsigned number);

 private:
  void RouteThread() const;
  void Iterate(SimulatedThread& thread);
  bool SleepsTooLong(const Request& request);
  void Fail(const Request& request, bool woke_late, double reading, Cells& cells);
  void LogIteration(const Request& request, bool passed, Cells& cells) const;

  Run& run_;
  RunningTest& test_;
  unsigned core_;
  std::string key_;
  WorkerProgress done_;
  std::span<const Request> requests_;
  UserRand random_;
  Meter meter_;
};
