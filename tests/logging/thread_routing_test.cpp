#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "logging/log_test_tools.h"
#include "vexor/logging/log_file.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

TEST(Routing, FindsTheFirstRegistrationOfAThread) {
  const std::jthread first([] {});
  const std::jthread second([] {});
  const std::thread::id a = first.get_id();
  const std::thread::id b = second.get_id();
  VexorLogging log;
  VexorLogging other;
  other.SetGlobalTraceLevel(TRACE_CRITICAL);
  EXPECT_EQ(VexorLogging::GetThreadTestId(a), PM_TEST_VEXOR);
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(a), nullptr);
  EXPECT_EQ(other.GetThreadLogLevel(a), TRACE_CRITICAL);
  EXPECT_EQ(other.GetTestLogLevel(PM_TEST_SAGV), TRACE_CRITICAL);

  VexorLogging::SetThreadTestLog(a, PM_TEST_SAGV, TRACE_DEBUG, &log);
  VexorLogging::SetThreadTestLog(a, PM_TEST_HWP, TRACE_NO_LOG, &other);
  VexorLogging::SetThreadTestLog(b, PM_TEST_SAGV, TRACE_INFORMATION, nullptr);
  EXPECT_EQ(VexorLogging::GetThreadTestId(a), PM_TEST_SAGV);
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(a), &log);
  EXPECT_EQ(other.GetThreadLogLevel(a), TRACE_DEBUG);
  EXPECT_EQ(other.GetThreadLogLevel(b), TRACE_INFORMATION);
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(b), nullptr);
  EXPECT_EQ(other.GetTestLogLevel(PM_TEST_SAGV), TRACE_DEBUG);
  EXPECT_EQ(other.GetTestLogLevel(PM_TEST_HWP), TRACE_NO_LOG);
}

TEST(Routing, IsClearedByALogThatIsNotContinued) {
  const TemporaryFolder folder;
  const std::jthread thread([] {});
  VexorLogging other;
  VexorLogging::SetThreadTestLog(thread.get_id(), PM_TEST_SAGV, TRACE_DEBUG, &other);
  VexorLogging::SetThreadAffinityLog(thread.get_id(), 1, 2, 3, 4);
  VexorLogging log;
  const auto initialize = [&](bool continues) {
    return Open(log, folder, "run", TRACE_CRITICAL, LOG_FILE_NEW, false, continues);
  };
  ASSERT_TRUE(initialize(true));
  EXPECT_EQ(VexorLogging::GetThreadTestId(thread.get_id()), PM_TEST_SAGV);
  ASSERT_TRUE(initialize(false));
  EXPECT_EQ(VexorLogging::GetThreadTestId(thread.get_id()), PM_TEST_VEXOR);
  EXPECT_EQ(VexorLogging::GetThreadAffinityLog(thread.get_id()), "01:02:003:4");

  const std::thread::id self = std::this_thread::get_id();
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), &log);
  EXPECT_EQ(other.GetThreadLogLevel(self), TRACE_CRITICAL);
  {
    VexorLogging short_lived;
    ASSERT_TRUE(OpenPlain(short_lived, folder, "short"));
    EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), &short_lived);
  }
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), nullptr);
  EXPECT_EQ(other.GetThreadLogLevel(self), TRACE_INFORMATION);
}

TEST(Routing, FindsTheLogOfTheCallingThread) {
  const TemporaryFolder folder;
  VexorLogging log;
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  CaptureStdout();
  {
    const std::jthread verbose([&] {
      VexorLogging::LogSpecificLevel("console", TRACE_INFORMATION);
      VexorLogging::LogSpecificLevel("dropped", TRACE_DEBUG);
      VexorLogging::SetThreadTestLog(std::this_thread::get_id(), PM_TEST_SAGV, TRACE_DEBUG, &log);
      VexorLogging::LogSpecificLevel("under the thread's level", TRACE_DEBUG);
    });
    const std::jthread terse([&] {  // while the other is alive: it would get its identifier
      const std::thread::id self = std::this_thread::get_id();
      VexorLogging::SetThreadTestLog(self, PM_TEST_SAGV, TRACE_CRITICAL, &log);
      VexorLogging::LogSpecificLevel("dropped", TRACE_INFORMATION);
    });
  }
  EXPECT_EQ(GetCapturedStdout(), "console\n");
  EXPECT_EQ(ReadLog(folder / "run.csv"), "under the thread's level\n");
}

TEST(Routing, RegistersAThreadThatMovesALogToItsNextFile) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  VexorLogging log;
  log.SetLinesLimitToSplit(1);
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  std::thread([&] {
    const std::thread::id self = std::this_thread::get_id();
    log.LogLine("1", TRACE_CRITICAL);
    EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), nullptr);
    log.LogLine("2", TRACE_CRITICAL);
    EXPECT_EQ(VexorLogging::GetThreadLogFileReference(self), &log);
  }).join();
}

TEST(Routing, LabelsThreads) {
  const std::thread::id self = std::this_thread::get_id();
  VexorLogging::SetThreadAffinityLog(self, 0, 100, 7, 65535);
  EXPECT_EQ(VexorLogging::GetThreadAffinityLog(self), "00:100:007:65535");
  VexorLogging::SetThreadAffinityLog(self, 12, 3, 1234, 0);
  EXPECT_EQ(VexorLogging::GetThreadAffinityLog(self), "12:03:1234:0");
  EXPECT_EQ(VexorLogging::GetThreadAffinityLog(std::thread::id()), "");

  const struct {
    unsigned short package;
    unsigned short core;
    const char* label;
  } kLabels[] = {{1, 5, "01:005"},         {0, 7, "00:007"},           {40000, 3, "  :003"},
                 {123, 40000, "123:   "},  {40000, 40000, ""},         {32752, 32752, "  :   "},
                 {32753, 32753, ""},       {32752, 32753, "  :   "},   {32753, 32751, "  :32751"},
                 {32753, 32752, "  :   "}, {32751, 65535, "32751:   "}};
  for (const auto& [package, core, label] : kLabels) {
    EXPECT_EQ(VexorLogging::GetPkgCoreInfo(package, core), label);
  }
}

}  // namespace
