// A small test engine, from start to end: it reads a configuration, runs a simulated test on
// threads of its own for every test that is switched on, and leaves a log for the run and one, or a
// series, for each test.
//
//   test_engine CONFIGURATION LOG-FOLDER [/cstate -at msec:80 ...]
//
// Options of tests behind the two paths override those of the configuration.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <latch>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "vexor/vexor.h"

namespace {

constexpr std::uint64_t kMostCycles = 25;     // a simulated test is short
constexpr unsigned kMostMicroseconds = 2000;  // and so are its states
constexpr std::uint32_t kLinesPerFile = 30;
constexpr unsigned kWorkers = 2;

// What a test needs of its options, once they are understood.
struct Plan {
  VEXOR_PM_TEST_ID id = PM_TEST_MAX;
  ONTIME_TYPE active;
  ONTIME_TYPE in_state;
  std::uint64_t cycles = 0;
  std::vector<int> packages;
  std::vector<int> cores;
  TRACE_LEVEL level = TRACE_INFORMATION;
  bool verify = true;
};

struct RunningTest {
  Plan plan;
  std::unique_ptr<VexorLogging> log = std::make_unique<VexorLogging>();
};

Plan UnderstandOptions(VEXOR_PM_TEST_ID id, const _PM_TEST_NODE& options) {
  Plan plan;
  plan.id = id;
  plan.active = ParseOnTimeType(options.ActiveTime);
  plan.in_state = ParseOnTimeType(options.InStateTime);
  const auto cycle = static_cast<float>(plan.active.avgMs + plan.in_state.avgMs);
  plan.cycles = std::clamp<std::uint64_t>(
      ParseExeCycleTimeType(options.ExeCycles, 1, cycle, 0).cycles, 1, kMostCycles);
  plan.packages = ParsePkgAffinity(options.PkgAffinity);
  plan.cores = ParseUnitAffinity(options.CoreAffinity, 1);
  plan.level = ParseTraceLevelID(options.Log_Level, TRACE_INFORMATION);
  plan.verify = ParseTestModeID(options.TestMode) != TEST_MODE_EXERCISE;
  return plan;
}

std::vector<RunningTest> PlanTests(_XML_FULL_CFG& cfg) {
  std::vector<RunningTest> tests;
  for (int id = vexor::kFirstAutoRunTest; id <= vexor::kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    const _PM_TEST_NODE* const options = vexor::FindTestNode(cfg.GlobalPM, test);
    if (options == nullptr || !vexor::IsAutoRun(cfg.TestControl, test)) continue;
    tests.push_back({.plan = UnderstandOptions(test, *options)});
  }
  return tests;
}

// Code deep inside a test, which knows no more than its thread.
void Note(const std::string& text, TRACE_LEVEL level) {
  const std::thread::id thread = std::this_thread::get_id();
  if (VexorLogging* const log = VexorLogging::GetThreadLogFileReference(thread)) {
    log->LogNote(text, level);
  }
}

// Stands for the machine: spends the time, and lets the two counters grow.
void SpendOneCycle(UserRand& random, _RESIDENCY_NODE& residency) {
  residency.resPrev = residency.resNow;
  residency.refPrev = residency.refNow;
  const std::uint32_t idle = random.Next32(100, kMostMicroseconds);
  SleepMicroS(idle);
  residency.resNow += idle;
  residency.refNow += idle + random.Next32(10, 200);
}

void RunWorker(const RunningTest& test, unsigned worker, std::latch& all_registered) {
  const Plan& plan = test.plan;
  const std::thread::id thread = std::this_thread::get_id();
  VexorLogging::SetThreadTestLog(thread, plan.id, plan.level, test.log.get());
  VexorLogging::SetThreadAffinityLog(thread, 0, 0, static_cast<unsigned short>(worker), 0);
  all_registered.arrive_and_wait();
  Note("begins: " + FormatTime(plan.active) + " active, " + FormatTime(plan.in_state) + " idle",
       TRACE_INFORMATION);
  UserRand random(static_cast<unsigned>(plan.id) * kWorkers + worker);
  _RESIDENCY_NODE residency{.resNow = 1, .refNow = 1};
  for (std::uint64_t cycle = 1; cycle <= plan.cycles; ++cycle) {
    SpendOneCycle(random, residency);
    const double percent = GetResPercent(residency);
    test.log->LogMsgData("cycle " + std::to_string(cycle) + ", \"idle\" for " +
                             RemoveZerosFromNumber(percent) + " %",
                         TRACE_INFORMATION,
                         VexorLogging::GetPkgCoreInfo(0, static_cast<unsigned short>(worker)),
                         percent > 0 ? "ok" : "?");
  }
  Note("ends: at most " + RemoveZerosFromNumber(residency.maxPercent) + " % idle",
       TRACE_INFORMATION);
}

// The sleep test of this example wakes too early, which the configuration may ask to ignore.
unsigned Judge(const Plan& plan) {
  constexpr unsigned kSleep = 0x8;
  constexpr unsigned kWokeEarly = 0x10000000;
  return plan.id == PM_TEST_GSTATES && plan.verify ? kSleep | kWokeEarly : 0;
}

// All threads live at the same time: a thread's first registration counts for good, and a thread
// that begins when another has ended may get its identifier.
void Run(const std::vector<RunningTest>& tests) {
  std::latch all_registered(static_cast<std::ptrdiff_t>(tests.size() * kWorkers));
  std::vector<std::thread> workers;
  for (const RunningTest& test : tests) {
    for (unsigned i = 0; i < kWorkers; ++i) {
      workers.emplace_back([&test, i, &all_registered] { RunWorker(test, i, all_registered); });
    }
  }
  for (std::thread& worker : workers) worker.join();
}

// Returns whether the test passed.
bool Report(const Plan& plan, unsigned ignored, VexorLogging& engine_log) {
  const unsigned code = IgnoreErrorCode(ignored, Judge(plan));
  const std::string name = GetPMTestName(plan.id);
  if (code == 0) {
    engine_log.LogMsgData(name + " passed", TRACE_INFORMATION, name, "pass");
  } else {
    engine_log.LogMsgData(name + " failed:" + GetErrorCode(plan.id, code), TRACE_CRITICAL, name,
                          "fail");
  }
  return code == 0;
}

// The tests' logs first: to open a log that does not continue another takes the routing of all
// threads back.
bool OpenLogs(const _GLOBALCONFIG_XMLCFG& global, const std::string& folder,
              std::vector<RunningTest>& tests, VexorLogging& engine_log) {
  for (RunningTest& test : tests) {
    test.log->SetLinesLimitToSplit(kLinesPerFile);
    if (!test.log->Initialize(folder, GetPMTestName(test.plan.id), test.plan.level, LOG_FILE_NEW,
                              false, false, false, true)) {
      return false;
    }
  }
  return engine_log.Initialize(folder, global.Log_File_Name,
                               ParseTraceLevelID(global.Log_Level, TRACE_INFORMATION),
                               ParseLogFileOptions(global.Log_Add_Option));
}

bool ReadConfiguration(int argc, char** argv, _XML_FULL_CFG& cfg) {
  ResetVexorXmlConfiguration(cfg);
  if (!VexorConfigParser().ReadXMLPar(argv[1], &cfg, true, false)) return false;
  std::vector<std::string> faults;
  for (const _PM_TEST_CONFIG_NODE& node : getCmdPMTestsOptions(argv, argc, faults)) {
    vexor::ApplyTestOptions(cfg, node);
  }
  for (const std::string& fault : faults) std::fprintf(stderr, "test_engine: %s\n", fault.c_str());
  return faults.empty();
}

int RunAll(int argc, char** argv) {
  _XML_FULL_CFG cfg;
  if (!ReadConfiguration(argc, argv, cfg)) return 2;
  const std::string folder = argv[2];
  std::filesystem::create_directories(folder);
  std::vector<RunningTest> tests = PlanTests(cfg);
  VexorLogging engine_log;
  if (!OpenLogs(cfg.GlobalConfig, folder, tests, engine_log)) return 2;
  for (const std::string& line : GetXMLTestControlInfo(cfg)) {
    engine_log.LogNote(line, TRACE_INFORMATION);
  }
  const auto ignored =
      static_cast<unsigned>(String2Integer(cfg.GlobalConfig.Ignore_Error_Code, 0, false));
  Run(tests);
  std::size_t passed = 0;
  for (const RunningTest& test : tests) {
    if (Report(test.plan, ignored, engine_log)) ++passed;
  }
  std::printf("%zu of %zu tests passed; their logs are in %s\n", passed, tests.size(),
              folder.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: test_engine CONFIGURATION LOG-FOLDER [/TEST -OPTION VALUE ...]\n");
    return 2;
  }
  try {
    return RunAll(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "test_engine: %s: %s\n", argv[1], error.what());
    return 2;
  }
}
