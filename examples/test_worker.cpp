#include "test_worker.h"

#include <thread>

namespace {

constexpr Duration kLatestWake = std::chrono::minutes(2);  // so much too late is a failure
constexpr unsigned kWokeLate = 0x20000008;                 // in a sleep test's error word

// Stands for code deep inside a test, which does not know the log but only its own thread.
void Note(const std::string& text, TRACE_LEVEL level) {
  const std::thread::id thread = std::this_thread::get_id();
  if (VexorLogging* const log = VexorLogging::GetThreadLogFileReference(thread)) {
    log->LogNote(text, level);
  }
}

// Every worker has its own sequence of random numbers, and another one after a restart.
unsigned MakeSeed(const Run& run, VEXOR_PM_TEST_ID test, unsigned core) {
  return UserRand(run.seed).NextUint() + (static_cast<unsigned>(test) << 16U) + (core << 8U) +
         run.progress.Restarts();
}

bool IsSleepTest(const RunningTest& test) { return test.plan.id == PM_TEST_GSTATES; }

}  // namespace

TestWorker::TestWorker(Run& run, RunningTest& test, unsigned core)
    : run_(run),
      test_(test),
      core_(core),
      key_(test.plan.name + "." + std::to_string(core)),
      done_(run.progress.GetWorker(key_)),
      requests_(GetRequests(test.plan.id)),
      random_(MakeSeed(run, test.plan.id, core)),
      meter_(requests_, random_.NextUint()) {
  test.failures += done_.failures;
  test.code |= done_.code;
  ++test.at_work;
}

void TestWorker::Work(unsigned number) {
  RouteThread();
  SimulatedThread thread(run_.machine, number);
  const Plan& plan = test_.plan;
  Note((done_.iterations == 0 ? "begins: " : "goes on: ") + FormatTime(plan.active) + " active, " +
           FormatTime(plan.in_state) + " idle",
       TRACE_INFORMATION);
  thread.Work(plan.start_delay);
  while (done_.iterations < plan.iterations) Iterate(thread);
  Note("ends after " + std::to_string(done_.iterations) + " iterations", TRACE_INFORMATION);
  --test_.at_work;
}

void TestWorker::RouteThread() const {
  const std::thread::id thread = std::this_thread::get_id();
  VexorLogging::SetThreadTestLog(thread, test_.plan.id, test_.plan.level, test_.log.get());
  if (requests_.front().scope != "Core") return;
  const auto core = static_cast<unsigned short>(core_);
  const auto module = static_cast<unsigned short>(core_ / 2);
  VexorLogging::SetThreadAffinityLog(thread, 0, module, core, 0);
}

void TestWorker::Iterate(SimulatedThread& thread) {
  const auto mean = static_cast<long>(run_.iteration.count());
  const Duration time(random_.Next32(mean / 2, mean * 3 / 2 + 1));
  thread.Work(time);
  const Request& request = requests_[done_.iterations % requests_.size()];
  const bool woke_late = IsSleepTest(test_) && SleepsTooLong(request);

  Cells cells(kColumns);
  const unsigned health = run_.night.GetHealth(test_.plan.id, core_, request.name, random_);
  const double reading = meter_.Read(request, time, health, cells);
  const bool passed = !woke_late && reading >= GetLeast(request);
  ++done_.iterations;
  if (test_.plan.verify && !passed) Fail(request, woke_late, reading, cells);
  LogIteration(request, passed, cells);
  run_.progress.KeepWorker(key_, done_);
}

// Puts the machine to sleep, and all tests with it.
bool TestWorker::SleepsTooLong(const Request& request) {
  const std::string state(request.name);
  const ONTIME_TYPE& asked = test_.plan.in_state;
  const Duration time(random_.Next32(static_cast<long>(asked.minMs), long{1} + asked.maxMs));
  const Duration too_long = run_.night.TakeOversleep();
  const bool late = too_long > kLatestWake;
  const auto format = [](Duration value) {
    return FormatTime(static_cast<unsigned>(value.count()));
  };
  test_.log->LogMsgData("enters " + state + " for " + format(time), TRACE_INFORMATION, state,
                        "enter");
  run_.machine.Suspend(time + too_long);
  test_.log->LogMsgData("woke from " + state + " after " + format(time + too_long),
                        late ? TRACE_CRITICAL : TRACE_INFORMATION, state, late ? "late" : "woke");
  return late;
}

void TestWorker::Fail(const Request& request, bool woke_late, double reading, Cells& cells) {
  const unsigned code = woke_late ? request.code | kWokeLate : request.code;
  cells[kNotes] = woke_late ? ExplainCode(request.test, code) + " woke too late"
                            : ExplainFault(request, reading);
  done_.code |= code;
  ++done_.failures;
  test_.code |= code;
  ++test_.failures;
}

void TestWorker::LogIteration(const Request& request, bool passed, Cells& cells) const {
  const bool verify = test_.plan.verify;
  cells[kIter] = std::to_string(done_.iterations);
  cells[kScope] = request.scope;
  if (verify) cells[kResult] = passed ? "PASS" : "FAIL";
  cells[kFailCount] = std::to_string(test_.failures);
  cells[kRequest] = request.name;
  if (cells[kStatus].empty()) cells[kStatus] = passed ? "reached" : "missed";
  test_.log->LogData(cells, verify && !passed ? TRACE_CRITICAL : TRACE_INFORMATION);
  test_.log->LogNote("\"" + std::string(request.name) + "\" was asked for, counters were read",
                     TRACE_DEBUG);
}
