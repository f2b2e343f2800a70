// A small but complete test engine: it reads a configuration, runs a simulated test, on threads of
// its own, for every test that is switched on, and writes a log of the run and a series of logs for
// each test.
//
//   test_engine CONFIGURATION LOG-FOLDER [OPTION ...] [/cstate -at msec:80 ...]
//
//   --iterations N  lets each test run N iterations, or fewer if its "ExeCycles" says so
//   --hours H       spreads them over H hours of simulated time
//   --seed N        seed of the run, instead of "Seeds" in the configuration; equal seeds give
//                   equal runs
//   --bad-night     lets the machine fail in several ways
//
// Options of tests override those of the configuration. When the machine goes down in a bad night,
// the engine ends without warning, with status 3. Started again with the same arguments, by hand or
// by the machine's auto-run entry, it continues where it was.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "test_worker.h"
#include "vexor/vexor.h"

namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kLinesPerFile = 50;
constexpr unsigned kCores = 4;
constexpr int kFaultStatus = 2;
constexpr int kMachineDownStatus = 3;
constexpr Duration kBootTime = 3min;
constexpr unsigned kWasReset = 0x00200020;  // an error word of the whole machine

// Friday evening.
constexpr Time kBegin = std::chrono::local_days(std::chrono::year(2026) / 3 / 6) + 20h;

// ---- The command line.

struct Options {
  unsigned seed = 0;  // 0: the configuration's
  unsigned hours = 10;
  unsigned iterations = 25;
  bool bad_night = false;
};

// Returns the options between the two paths and the first section of a test.
Options ReadOptions(char** begin, char** end) {
  Options options;
  const struct {
    std::string_view name;
    std::uint64_t most;
    unsigned& value;
  } kNumbers[] = {{"--seed", UINT32_MAX, options.seed},
                  {"--hours", 300, options.hours},
                  {"--iterations", 1'000'000, options.iterations}};
  for (char** argument = begin; argument != end && **argument != '/'; ++argument) {
    const std::string name = *argument;
    if (name == "--bad-night") {
      options.bad_night = true;
      continue;
    }
    const auto number = std::ranges::find(kNumbers, name, [](const auto& row) { return row.name; });
    if (number == std::end(kNumbers)) throw std::invalid_argument(name + ": unknown option");
    const char* const text = getCmdOption(argument, end, name);
    const std::uint64_t value = String2Integer(text == nullptr ? "" : text, 0);
    if (value == 0 || value > number->most) {
      throw std::invalid_argument(name + ": expected a number from 1 to " +
                                  std::to_string(number->most));
    }
    number->value = static_cast<unsigned>(value);
    ++argument;
  }
  return options;
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

// ---- From options to a plan.

std::vector<unsigned> ChooseCores(const std::vector<int>& affinity) {
  std::vector<unsigned> cores;
  for (unsigned core = 0; core < kCores; ++core) {
    if (IsInAffinity(affinity, static_cast<int>(core))) cores.push_back(core);
  }
  return cores.empty() ? std::vector{0U} : cores;
}

Plan UnderstandOptions(VEXOR_PM_TEST_ID id, const _PM_TEST_NODE& options, unsigned iterations) {
  Plan plan;
  plan.id = id;
  plan.name = GetPMTestName(id);
  plan.active = ParseOnTimeType(options.ActiveTime);
  plan.in_state = ParseOnTimeType(options.InStateTime);
  plan.start_delay = Duration(ParseUnitTime(options.StartDelayTime, 0, 0));
  const auto cycle = static_cast<float>(plan.active.avgMs + plan.in_state.avgMs);
  plan.iterations = std::clamp<std::uint64_t>(
      ParseExeCycleTimeType(options.ExeCycles, 1, cycle, 0).cycles, 1, iterations);
  const bool is_core_test = GetRequests(id).front().scope == "Core";
  plan.cores =
      is_core_test ? ChooseCores(ParseUnitAffinity(options.CoreAffinity, 1)) : std::vector{0U};
  plan.level = ParseTraceLevelID(options.Log_Level, TRACE_INFORMATION);
  plan.verify = ParseTestModeID(options.TestMode) != TEST_MODE_EXERCISE;
  return plan;
}

std::vector<RunningTest> PlanTests(_XML_FULL_CFG& cfg, unsigned iterations) {
  std::vector<RunningTest> tests;
  for (int id = vexor::kFirstAutoRunTest; id <= vexor::kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    const _PM_TEST_NODE* const options = vexor::FindTestNode(cfg.GlobalPM, test);
    if (options == nullptr || !vexor::IsAutoRun(cfg.TestControl, test)) continue;
    tests.push_back({.plan = UnderstandOptions(test, *options, iterations)});
  }
  return tests;
}

// Includes the engine's own thread.
unsigned CountThreads(const std::vector<RunningTest>& tests) {
  std::size_t count = 1;
  for (const RunningTest& test : tests) count += test.plan.cores.size();
  return static_cast<unsigned>(count);
}

// ---- Logs.

// Stores which file a test logs to.
class AutoRunEntry : public ContextUtils {
 public:
  AutoRunEntry(Progress& progress, const VexorLogging& log) : progress_(progress), log_(log) {}

  bool CreateAutoRun(std::string script, unsigned char /*flags*/) override {
    progress_.KeepLog(script, log_.GetLogFile());
    return true;
  }

 private:
  Progress& progress_;
  const VexorLogging& log_;
};

// Opens a log in the folder: a new one, or an existing one to continue.
void OpenLog(VexorLogging& log, const std::string& folder, const std::string& name,
             TRACE_LEVEL level, LOG_FILE_OPTIONS option) {
  if (!log.Initialize(folder, name, level, option, false, false, false, true)) {
    throw std::runtime_error(VexorLogging::BuildLogFile(folder, name) + ": cannot be opened");
  }
}

// A new run starts new series and removes the files of an earlier run. After a restart, a series
// continues after its last file.
void OpenSeries(const std::string& folder, RunningTest& test, Progress& progress) {
  const Plan& plan = test.plan;
  test.log->SetLinesLimitToSplit(kLinesPerFile);
  if (progress.Restarts() == 0) {
    for (const std::string& file : GetFilesInFolder(folder)) {
      if (file.starts_with(plan.name + "_")) std::filesystem::remove(folder + "/" + file);
    }
  }
  if (!vexor::ContinueLog(*test.log, folder, plan.name, plan.level)) {
    throw std::runtime_error(VexorLogging::BuildLogFile(folder, plan.name) + ": cannot be opened");
  }
  test.auto_run = std::make_unique<AutoRunEntry>(progress, *test.log);
  test.log->SetAutoRunInfo(test.auto_run.get(), {plan.name, '\0'});
  progress.KeepLog(plan.name, test.log->GetLogFile());
}

// Opens the tests' logs first: opening a log that is not continued clears the routing of all
// threads.
void OpenLogs(const _GLOBALCONFIG_XMLCFG& global, const std::string& folder,
              std::vector<RunningTest>& tests, Progress& progress, VexorLogging& engine_log) {
  for (RunningTest& test : tests) OpenSeries(folder, test, progress);
  OpenLog(engine_log, folder, global.Log_File_Name,
          ParseTraceLevelID(global.Log_Level, TRACE_INFORMATION),
          progress.Restarts() > 0 ? LOG_FILE_APPEND : ParseLogFileOptions(global.Log_Add_Option));
}

// ---- The run.

[[noreturn]] void GoDown(Run& run, BadNight::Loss loss, std::vector<RunningTest>& tests) {
  if (loss == BadNight::Loss::kPowerCut) CutPower(*tests.front().log, *tests.back().log);
  run.progress.KeepClock();  // which has a battery
  std::fprintf(stderr, "test_engine: the machine %s; start again to go on\n",
               loss == BadNight::Loss::kReset ? "was reset" : "lost power");
  std::_Exit(kMachineDownStatus);
}

// Logs now and then that the engine is alive, until all tests are done.
void Watch(Run& run, std::vector<RunningTest>& tests, VexorLogging& engine_log,
           SimulatedThread& thread) {
  while (true) {
    const BadNight::LossOfPower loss = run.night.GetNextLoss();
    thread.Work(std::min(run.iteration, loss.at - SimulatedMachine::Now()));
    const auto at_work = std::ranges::count_if(tests, &RunningTest::at_work);
    if (at_work == 0) return;
    if (SimulatedMachine::Now() >= loss.at) GoDown(run, loss.kind, tests);
    engine_log.LogMsgData("tests at work: " + std::to_string(at_work), TRACE_INFORMATION, "alive",
                          "ok");
  }
}

void LogStart(const Run& run, const _XML_FULL_CFG& cfg, VexorLogging& engine_log) {
  if (const unsigned restarts = run.progress.Restarts(); restarts > 0) {
    engine_log.LogMsgData(ExplainCode(PM_TEST_VEXOR, kWasReset) + " went on after a restart",
                          TRACE_CRITICAL, "restart", std::to_string(restarts));
    return;
  }
  for (const std::string& line : GetXMLTestControlInfo(cfg)) {
    engine_log.LogNote(line, TRACE_INFORMATION);
  }
}

// All threads exist at the same time. A thread that is started after another has ended may get its
// identifier, for which the first registration stays in effect.
void RunTests(Run& run, std::vector<RunningTest>& tests, VexorLogging& engine_log) {
  std::vector<TestWorker> workers;
  for (RunningTest& test : tests) {
    for (const unsigned core : test.plan.cores) workers.emplace_back(run, test, core);
  }
  std::vector<std::jthread> threads;
  threads.reserve(workers.size());
  for (unsigned i = 0; i < workers.size(); ++i) {
    threads.emplace_back([&worker = workers[i], i] { worker.Work(i + 1); });
  }
  SimulatedThread thread(run.machine, 0);
  Watch(run, tests, engine_log, thread);
}

// Returns whether the test passed.
bool Report(const RunningTest& test, unsigned ignored, VexorLogging& engine_log) {
  const unsigned code = IgnoreErrorCode(ignored, test.code);
  const std::string& name = test.plan.name;
  if (code == 0) {
    engine_log.LogMsgData(name + " passed", TRACE_INFORMATION, name, "PASS");
  } else {
    engine_log.LogMsgData(name + " failed: " + ExplainCode(test.plan.id, code) +
                              " failures: " + std::to_string(test.failures),
                          TRACE_CRITICAL, name, "FAIL");
  }
  return code == 0;
}

std::string Describe(const Options& options, const std::string& configuration) {
  return std::to_string(options.seed) + " " + std::to_string(options.hours) + " " +
         std::to_string(options.iterations) + (options.bad_night ? " bad " : " good ") +
         configuration;
}

// Runs all tests and returns how many passed.
std::size_t RunNight(const Options& options, const _XML_FULL_CFG& cfg, const std::string& folder,
                     std::vector<RunningTest>& tests, Progress& progress) {
  const Duration length = std::chrono::hours(options.hours);
  const Time begin = progress.Restarts() > 0 ? progress.GetClock(kBegin) + kBootTime : kBegin;
  SimulatedMachine machine(begin, CountThreads(tests));
  BadNight night = options.bad_night ? BadNight(options.seed, kBegin, length) : BadNight();
  Run run = {.seed = options.seed,
             .iteration = length / options.iterations,
             .progress = progress,
             .machine = machine,
             .night = night};
  VexorLogging engine_log;
  OpenLogs(cfg.GlobalConfig, folder, tests, progress, engine_log);
  LogStart(run, cfg, engine_log);
  RunTests(run, tests, engine_log);
  const auto ignored =
      static_cast<unsigned>(String2Integer(cfg.GlobalConfig.Ignore_Error_Code, 0, false));
  return static_cast<std::size_t>(std::ranges::count_if(
      tests, [&](const RunningTest& test) { return Report(test, ignored, engine_log); }));
}

int RunAll(int argc, char** argv) {
  Options options = ReadOptions(argv + 3, argv + argc);
  _XML_FULL_CFG cfg;
  if (!ReadConfiguration(argc, argv, cfg)) return kFaultStatus;
  if (options.seed == 0) {
    options.seed = static_cast<unsigned>(String2Integer(cfg.GlobalConfig.Seeds, 1));
  }
  const std::string folder = argv[2];
  std::filesystem::create_directories(folder);
  Progress progress(folder, Describe(options, argv[1]));
  std::vector<RunningTest> tests = PlanTests(cfg, options.iterations);
  const std::size_t passed = RunNight(options, cfg, folder, tests, progress);
  progress.Finish();
  std::printf("%zu of %zu tests passed; their logs are in %s\n", passed, tests.size(),
              folder.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr,
                 "usage: test_engine CONFIGURATION LOG-FOLDER [--iterations N] [--hours H] "
                 "[--seed N] [--bad-night] [/TEST -OPTION VALUE ...]\n");
    return kFaultStatus;
  }
  try {
    return RunAll(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "test_engine: %s\n", error.what());
    return kFaultStatus;
  }
}
