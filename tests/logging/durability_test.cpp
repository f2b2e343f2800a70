// What is on the disk after a log call has returned, even if the process, the machine or the disk
// fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "logging/durable_file.h"
#include "logging/log_test_tools.h"
#include "platform/child_process.h"
#include "platform/test_disk.h"
#include "platform/test_waits.h"
#include "vexor/logging/log_file.h"
#include "vexor/logging/log_merge.h"
#include "vexor/syntax/error_codes.h"

namespace {

using std::chrono::steady_clock;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// Counts how often each line occurs in the files of the folder whose names begin with the prefix,
// without headers and without lines that lack their line end.
std::map<std::string, int> CountLines(const std::string& folder, std::string_view prefix) {
  std::map<std::string, int> counts;
  for (const std::string& name : GetFilesInFolder(folder)) {
    if (!name.starts_with(prefix)) continue;
    const std::string text = ReadLog(folder + "/" + name);
    for (const std::string& line : Lines(text.substr(0, text.rfind('\n') + 1))) {
      if (line != "header") ++counts[line];
    }
  }
  return counts;
}

// What a log reader finds in a folder.
struct Reading {
  std::size_t lines = 0;  // whole ones, headers left out
  std::size_t cut_off = 0;
  std::size_t nul_blocks = 0;
  bool has_false_alarms = false;
};

Reading ReadFolder(const std::string& folder) {
  Reading reading;
  const vexor::FoundLogs found = vexor::FindLogs({folder});
  for (const vexor::FoundSeries& series : found.series) {
    if (!series.missing.empty() || !series.leftovers.empty()) reading.has_false_alarms = true;
  }
  vexor::LogMerge merge(found.series);
  while (merge.Next()) {
    const vexor::LogRow row = merge.Row();
    if (row.Kind() == vexor::LogRowKind::kNulBlock) {
      ++reading.nul_blocks;
    } else if (row.Has(vexor::LogDamage::kCutOff)) {
      ++reading.cut_off;
    } else if (row.IsDamaged()) {
      reading.has_false_alarms = true;
    } else if (row.Text() != "header") {
      ++reading.lines;
    }
  }
  reading.has_false_alarms = reading.has_false_alarms || !merge.Faults().empty();
  return reading;
}

std::size_t CountTornFiles(const std::string& folder) {
  std::size_t count = 0;
  for (const std::string& name : GetFilesInFolder(folder)) {
    if (!name.starts_with("run")) continue;
    const std::string bytes = ReadBytes(folder + "/" + name);
    if (!bytes.empty() && !bytes.ends_with('\n')) ++count;
  }
  return count;
}

TEST(Durability, SurvivesTheEndOfTheProcess) {
  const char* asked_for = std::getenv("VEXOR_KILL_ROUNDS");
  const int rounds = asked_for != nullptr ? std::atoi(asked_for) : 200;
  const auto end = steady_clock::now() + std::chrono::seconds(3);
  std::minstd_rand random(std::random_device{}());
  int round = 0;
  int killed_while_logging = 0;
  for (; round < rounds; ++round) {
    if (asked_for == nullptr && round >= 20 && steady_clock::now() > end) break;
    const TemporaryFolder folder;
    {
      const ChildProcess child({VEXOR_LOG_CHILD, folder.path()}, {});
      ASSERT_TRUE(child.started());
      if (round % 4 != 0) {
        while (IsFileEmpty(folder / "returned0")) std::this_thread::yield();
      }
      std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
    }
    const std::map<std::string, int> logged = CountLines(folder.path(), "run");
    const std::map<std::string, int> returned = CountLines(folder.path(), "returned");
    for (const auto& [line, count] : logged) EXPECT_EQ(count, 1) << line;
    for (const auto& [line, count] : returned) EXPECT_TRUE(logged.contains(line)) << line;
    EXPECT_LE(logged.size(), returned.size() + 4) << "lines that no thread has logged";
    const Reading reading = ReadFolder(folder.path());
    EXPECT_EQ(reading.lines, logged.size());
    EXPECT_EQ(reading.cut_off, CountTornFiles(folder.path()));
    EXPECT_TRUE(reading.nul_blocks == 0 && !reading.has_false_alarms);
    if (!returned.empty()) ++killed_while_logging;
  }
  EXPECT_GE(killed_while_logging, round / 2);
  std::cout << round << " processes killed, " << killed_while_logging << " of them while logging\n";
}

TEST(Durability, HoldsBeforeAndAfterTheLibrarysGlobalObjects) {
  const TemporaryFolder folder;
  ChildProcess child({VEXOR_EXIT_CHILD, folder.path()},
                     {.input = {}, .output = folder / "output", .errors = folder / "errors"});
  EXPECT_EQ(child.Wait(), 0) << ReadLog(folder / "errors");
  EXPECT_EQ(ReadLog(folder / "run.csv"),
            "header\n01:02:003:4 is routed\n" + GetErrorCode(PM_TEST_CSTATES, 1) + "\n");
  EXPECT_EQ(ReadLog(folder / "output"),
            "the first line\nLog File: " + (folder / "run.csv") + "\nthe last line\n");
}

TEST(Durability, SurvivesAPowerCut) {
  constexpr int kThreads = 8;
  constexpr int kLines = 60;
  const QuietConsole quiet;
  const TemporaryFolder folder;
  const TestDisk disk;
  TestDisk::PretendFlushes(std::chrono::microseconds(500));
  VexorLogging log("header");
  log.SetLinesLimitToSplit(50);
  ASSERT_TRUE(Open(log, folder, "run"));
  std::array<std::atomic<int>, kThreads> returned = {};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      for (int i = 0; i < kLines; ++i) {
        log.LogLine(std::to_string(thread) + " " + std::to_string(i), TRACE_DEBUG);
        returned[static_cast<std::size_t>(thread)] = i + 1;
      }
    });
  }
  struct Cut {
    std::array<int, kThreads> returned;
    std::map<std::string, std::uint64_t> sizes;
  };
  std::vector<Cut> cuts;
  while (cuts.empty() || cuts.back().returned.back() < kLines) {
    Cut cut;
    std::copy(returned.begin(), returned.end(), cut.returned.begin());
    cut.sizes = TestDisk::DurableSizes();
    cuts.push_back(cut);
    std::this_thread::sleep_for(std::chrono::microseconds(100));
  }
  for (std::thread& thread : threads) thread.join();

  struct Place {
    std::string path;
    std::uint64_t end;
  };
  std::map<std::string, Place> places;
  for (const auto& [path, size] : TestDisk::DurableSizes()) {
    std::uint64_t end = 0;
    for (const std::string& line : Lines(ReadBytes(path))) {
      end += line.size() + 1;
      places[line.substr(0, line.find('\r'))] = {path, end};
    }
  }
  for (const Cut& cut : cuts) {
    for (int thread = 0; thread < kThreads; ++thread) {
      for (int i = 0; i < cut.returned[static_cast<std::size_t>(thread)]; ++i) {
        const auto place = places.find(std::to_string(thread) + " " + std::to_string(i));
        ASSERT_NE(place, places.end());
        const auto size = cut.sizes.find(place->second.path);
        ASSERT_TRUE(size != cut.sizes.end() && size->second >= place->second.end) << place->first;
      }
    }
  }
  // What a power cut may leave: the files as they were on the disk, some with NUL bytes behind.
  for (std::size_t i = 0; i < cuts.size(); i += 1 + cuts.size() / 20) {
    const TemporaryFolder left;
    std::size_t blocks = 0;
    for (const auto& [path, size] : cuts[i].sizes) {
      std::string bytes = ReadBytes(path);
      std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(size), bytes.end(), '\0');
      if (i % 2 == 0) bytes.resize(size);
      if (bytes.size() > size) ++blocks;
      WriteBytes(left / std::filesystem::path(path).filename().string(), bytes);
    }
    const Reading reading = ReadFolder(left.path());
    EXPECT_EQ(reading.lines, CountLines(left.path(), "run").size());
    EXPECT_EQ(reading.nul_blocks, blocks);
    EXPECT_TRUE(reading.cut_off == 0 && !reading.has_false_alarms);
  }
  const std::map<std::string, int> logged = CountLines(folder.path(), "run");
  EXPECT_EQ(logged.size(), std::size_t{kThreads * kLines});
  for (const auto& [line, count] : logged) EXPECT_EQ(count, 1) << line;
}

TEST(Durability, WaitsForAFlushThatBeganAfterTheLineWithoutBlockingOtherLogs) {
  const TemporaryFolder folder;
  const TestDisk disk;
  VexorLogging log;
  VexorLogging other;
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  ASSERT_TRUE(OpenPlain(other, folder, "other"));
  TestDisk::HoldFlushes("run.csv");
  std::atomic<int> returned = 0;
  const auto log_line = [&] {
    log.LogLine("line", TRACE_CRITICAL);
    ++returned;
  };
  const auto wait_for_lines = [&](std::size_t bytes) {
    while (ReadLog(folder / "run.csv").size() < bytes) std::this_thread::yield();
  };
  std::vector<std::thread> threads;
  threads.emplace_back(log_line);
  while (TestDisk::Calls(TestDisk::kFlush) == 0) std::this_thread::yield();
  for (int i = 0; i < 3; ++i) threads.emplace_back(log_line);
  wait_for_lines(4 * 5);
  other.LogLine("line", TRACE_CRITICAL);  // is not held up
  EXPECT_EQ(returned, 0);
  TestDisk::ReleaseFlushes();
  for (std::thread& thread : threads) thread.join();
  // One for the first line, one that the other three share, one for the other log.
  EXPECT_EQ(TestDisk::Calls(TestDisk::kFlush), 3);
}

TEST(Durability, LeavingAFileDoesNotBlockOtherLogs) {
  const QuietConsole quiet;
  const struct {
    const char* name;
    void (*leave)(VexorLogging& log, const TemporaryFolder& folder);
  } kWays[] = {
      {"a split", [](VexorLogging& log, auto&) { log.LogLine("2", TRACE_CRITICAL); }},
      {"CloseFile", [](VexorLogging& log, auto&) { log.CloseFile(true); }},
      {"Initialize", [](VexorLogging& log, auto& folder) { OpenPlain(log, folder, "next"); }},
      {"UnlockLogging",
       [](VexorLogging& log, auto&) {
         log.LockLogging();
         for (int i = 0; i < 100; ++i) log.LogLine("2", TRACE_CRITICAL);
         log.UnlockLogging();
       }},
      {"a removed file", [](VexorLogging& log, auto& folder) {
         std::error_code in_use;
         std::filesystem::remove(folder / "run_0.csv", in_use);
         log.LogLine("2", TRACE_CRITICAL);
       }}};
  for (const auto& [name, leave] : kWays) {
    SCOPED_TRACE(name);
    const TemporaryFolder folder;
    const TestDisk disk;
    VexorLogging log;
    VexorLogging other;
    log.SetLinesLimitToSplit(1);
    ASSERT_TRUE(OpenPlain(log, folder, "run") && OpenPlain(other, folder, "other"));
    TestDisk::HoldFlushes("run_");
    std::thread first([&] { log.LogLine("1", TRACE_CRITICAL); });
    while (TestDisk::Calls(TestDisk::kFlush) == 0) std::this_thread::yield();
    std::atomic<bool> returned = false;
    std::thread second([&, leave = leave] {
      leave(log, folder);
      returned = true;
    });
    while (TestDisk::Calls(TestDisk::kOpen) < 3 && log.IsInitialized()) std::this_thread::yield();
    for (int i = 0; i < 20; ++i) other.LogLine("line", TRACE_CRITICAL);  // is not held up
    EXPECT_FALSE(returned);
    TestDisk::ReleaseFlushes();
    first.join();
    second.join();
    EXPECT_LE(TestDisk::OpenFiles(), 2);
  }
}

// A log moves under the same lock under which another log starts and forgets all threads.
TEST(Durability, RegistersAThreadBeforeItWaitsForTheDisk) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  const TestDisk disk;
  VexorLogging log;
  VexorLogging other;
  log.SetLinesLimitToSplit(1);
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  log.LogLine("1", TRACE_CRITICAL);
  TestDisk::HoldFlushes("run_1");
  std::thread thread([&] { log.LogLine("2", TRACE_CRITICAL); });
  const std::thread::id id = thread.get_id();
  while (TestDisk::Calls(TestDisk::kFlush) < 2) std::this_thread::yield();
  ASSERT_TRUE(OpenPlain(other, folder, "other"));
  TestDisk::ReleaseFlushes();
  thread.join();
  VexorLogging::SetThreadTestLog(id, PM_TEST_SAGV, TRACE_DEBUG, &other);
  EXPECT_EQ(VexorLogging::GetThreadTestId(id), PM_TEST_SAGV);
  EXPECT_EQ(VexorLogging::GetThreadLogFileReference(id), &other);
}

TEST(Durability, DoesNotGatherLinesForAFileThatIsLeft) {
  const TemporaryFolder folder;
  const TestDisk disk;
  std::error_code error;
  const auto file = vexor::DurableFile::Open(folder / "f", "f", vexor::OpenMode::kAppend, error);
  ASSERT_FALSE(file->Append("1") || file->Append("2"));
  EXPECT_FALSE(file->AwaitsMore());
  EXPECT_TRUE(file->Flush(2));  // for two threads: the next one waits for two lines
  ASSERT_FALSE(file->Append("3"));
  EXPECT_TRUE(file->AwaitsMore());
  ASSERT_FALSE(file->Append("4"));
  EXPECT_FALSE(file->AwaitsMore());
  EXPECT_TRUE(file->Flush(4));
  ASSERT_FALSE(file->Append("5"));
  EXPECT_TRUE(file->AwaitsMore());
  file->EndAppending();
  EXPECT_FALSE(file->AwaitsMore());
  EXPECT_TRUE(file->Flush(5));
}

// Shared flushes make the lines of many threads cheap: the threads that the last flush covered are
// about to append again.
TEST(Durability, DelaysAFlushForLinesThatItCanCover) {
  const TemporaryFolder folder;
  const TestDisk disk;
  std::error_code error;
  static std::shared_ptr<vexor::DurableFile> file;
  file = vexor::DurableFile::Open(folder / "f", "f", vexor::OpenMode::kAppend, error);
  ASSERT_FALSE(file->Append("1") || file->Append("2"));
  ASSERT_TRUE(file->Flush(2));
  ASSERT_FALSE(file->Append("3"));
  static std::atomic<int> looks;
  looks = 0;
  test_waits::at_clock = [] {
    if (++looks == 2) static_cast<void>(file->Append("4"));
  };
  EXPECT_TRUE(file->Flush(3));
  test_waits::at_clock = nullptr;
  ASSERT_EQ(file->Appended(), 4U) << "the flush did not wait";
  EXPECT_TRUE(file->Flush(4));
  EXPECT_EQ(TestDisk::Calls(TestDisk::kFlush), 2);
  file.reset();
}

// Writing a line takes less time than putting a thread to sleep and waking it.
TEST(Durability, SpinsBrieflyWhileAnotherThreadWrites) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  static constexpr int kEnough = 20;
  static std::atomic<int> spins;
  static std::atomic<bool> is_writing;
  spins = 0;
  is_writing = false;
  VexorLogging log("");
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  vexor::FileCalls calls = vexor::kSystemFileCalls;
  calls.write = [](vexor::FileHandle handle, std::string_view bytes, std::size_t& written) {
    is_writing = true;
    const auto end = steady_clock::now() + std::chrono::seconds(5);
    while (spins < kEnough && steady_clock::now() < end) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return vexor::kSystemFileCalls.write(handle, bytes, written);
  };
  vexor::file_calls = &calls;
  std::thread writer([&] { log.LogLine("1", TRACE_CRITICAL); });
  while (!is_writing) std::this_thread::yield();
  test_waits::at_spin = [] { ++spins; };
  log.LogLine("2", TRACE_CRITICAL);
  writer.join();
  test_waits::at_spin = nullptr;
  vexor::file_calls = &vexor::kSystemFileCalls;
  EXPECT_GE(spins, kEnough);
  EXPECT_LE(spins, 100 * kEnough) << "sleeps when that takes longer";
}

// A file may be long and must not be read again under the mutex. When the log opens it there, the
// test replaces its content by one of the same size with more lines, which the log must not notice.
TEST(Durability, CountsLinesWithoutBlockingOtherLogs) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  const TestDisk disk;
  WriteBytes(folder / "run_0.csv", "1234\n2");
  const vexor::FileCalls* const before = vexor::file_calls;
  static constexpr auto kOpen = [](const std::string& path, vexor::OpenMode mode,
                                   vexor::FileHandle& handle) {
    std::fstream(path, std::ios::binary | std::ios::in | std::ios::out) << "\n\n\n\n\n2";
    return vexor::kSystemFileCalls.open(path, mode, handle);
  };
  vexor::FileCalls calls = *before;
  calls.open = kOpen;
  VexorLogging log("");
  log.SetLinesLimitToSplit(3);
  vexor::file_calls = &calls;
  EXPECT_TRUE(OpenPlain(log, folder, "run", LOG_FILE_APPEND));
  vexor::file_calls = before;
  log.LogLine("3", TRACE_CRITICAL);
  EXPECT_EQ(ReadLog(folder / "run_0.csv"), "\n\n\n\n\n2\n3\n");
  log.LogLine("4", TRACE_CRITICAL);
  EXPECT_EQ(ReadLog(folder / "run_1.csv"), "4\n");
}

TEST(Faults, AreReportedOnceAndLinesGoToStandardOutput) {
  const TemporaryFolder folder;
  const std::string file = folder / "run.csv";
  const TestDisk disk;
  VexorLogging log("header");
  ASSERT_TRUE(Open(log, folder, "run"));
  const auto printed_by = [&](const std::vector<std::string>& lines) {
    CaptureStdout();
    for (const std::string& line : lines) log.LogLine(line, TRACE_DEBUG);
    return Lines(GetCapturedStdout());
  };
  EXPECT_TRUE(printed_by({"1"}).empty());

  TestDisk::LimitSpace(5);  // a line and a half
  std::vector<std::string> printed = printed_by({"2", "full", "full too"});
  ASSERT_EQ(printed.size(), 3U);
  EXPECT_TRUE(printed[0].starts_with("Cannot write to log file " + file + ": ")) << printed[0];
  EXPECT_EQ(printed[1], "full");
  EXPECT_EQ(printed[2], "full too");
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  EXPECT_TRUE(printed_by({"3"}).empty());
  EXPECT_EQ(ReadLog(file), "header\n1\n2\n3\n");

  TestDisk::Break(TestDisk::kCut);  // what is torn stays torn
  TestDisk::LimitSpace(3);
  EXPECT_EQ(printed_by({"torn"}).size(), 2U);
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  TestDisk::LimitWrite(1);
  EXPECT_TRUE(printed_by({"4"}).empty());
  EXPECT_EQ(ReadLog(file), "header\n1\n2\n3\ntor\n4\n");

  TestDisk::Break(TestDisk::kFlush);
  printed = printed_by({"5", "6"});
  ASSERT_EQ(printed.size(), 1U);
  EXPECT_TRUE(printed[0].starts_with("Cannot flush log file " + file + ": ")) << printed[0];
  TestDisk::Repair(TestDisk::kFlush);
  EXPECT_TRUE(printed_by({"7"}).empty());
  EXPECT_FALSE(log.FlushToDisk());  // what a failed flush lost stays lost
  EXPECT_EQ(ReadLog(file), "header\n1\n2\n3\ntor\n4\n5\n6\n7\n");

  ASSERT_TRUE(Open(log, folder, "next"));
  EXPECT_TRUE(log.FlushToDisk());
  TestDisk::Break(TestDisk::kSyncName);
  EXPECT_EQ(printed_by({"1", "2"}).size(), 1U);
}

TEST(Faults, EndWhenALostFileCanBeOpenedAgain) {
  const TemporaryFolder folder;
  const std::string file = folder / "run.csv";
  const TestDisk disk;
  VexorLogging log("header");
  ASSERT_TRUE(Open(log, folder, "run"));
  log.LogLine("1", TRACE_DEBUG);
  std::error_code in_use;
  if (!std::filesystem::remove(file, in_use)) GTEST_SKIP() << "open files cannot be removed here";
  std::filesystem::remove(folder.path());
  CaptureStdout();
  log.LogLine("2", TRACE_DEBUG);
  log.LogLine("3", TRACE_DEBUG);
  std::filesystem::create_directory(folder.path());
  log.LogLine("4", TRACE_DEBUG);
  std::vector<std::string> printed = Lines(GetCapturedStdout());
  ASSERT_EQ(printed.size(), 3U);
  EXPECT_TRUE(printed[0].starts_with("Cannot create again the removed log file " + file + ": "))
      << printed[0];
  EXPECT_EQ(printed[2], "3");
  EXPECT_EQ(ReadLog(file), "header\n4\n");
  EXPECT_EQ(TestDisk::Calls(TestDisk::kSyncName), 2);  // of either file

  std::filesystem::remove(file);
  WriteBytes(file, "of others\nand");
  log.SetLinesLimitToSplit(4);
  CaptureStdout();
  for (const char* line : {"5", "6"}) log.LogLine(line, TRACE_DEBUG);
  EXPECT_EQ(GetCapturedStdout(), "Log file " + file + " was removed and is created again\n" +
                                     "Continue on Log File: " + (folder / "run_1.csv") + "\n");
  EXPECT_EQ(ReadLog(file), "of others\nand\nheader\n5\n");
  EXPECT_EQ(ReadLog(folder / "run_1.csv"), "header\n6\n");
}

TEST(Faults, EndWhenTheNextFileCanBeCreated) {
  const TemporaryFolder folder;
  const TestDisk disk;
  VexorLogging log;
  log.SetLinesLimitToSplit(1);
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  log.LogLine("1", TRACE_CRITICAL);
  TestDisk::Break(TestDisk::kOpen, std::errc::too_many_files_open);
  CaptureStdout();
  log.LogLine("2", TRACE_CRITICAL);
  EXPECT_FALSE(log.IsInitialized());
  log.LogLine("3", TRACE_CRITICAL);
  TestDisk::Repair(TestDisk::kOpen);
  log.LogLine("4", TRACE_CRITICAL);
  const std::vector<std::string> printed = Lines(GetCapturedStdout());
  EXPECT_EQ(printed, (std::vector<std::string>{"Unable to create log file", "2", "3",
                                               "Continue on Log File: " + (folder / "run_1.csv")}));
  EXPECT_EQ(ReadLog(folder / "run_1.csv"), "4\n");
}

TEST(LogFile, LeavesNoFileOpen) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  const TestDisk disk;
  TestDisk::PretendFlushes({});
  VexorLogging log;
  for (int i = 0; i < 10000; ++i) {
    ASSERT_TRUE(OpenPlain(log, folder, "run"));
    ASSERT_EQ(TestDisk::OpenFiles(), 1);
  }
  log.SetLinesLimitToSplit(1);
  for (int i = 0; i < 1000; ++i) log.LogLine("line", TRACE_CRITICAL);
  EXPECT_EQ(TestDisk::OpenFiles(), 1);
  EXPECT_EQ(GetFilesInFolder(folder.path()).size(), 1000U);
  log.CloseFile(true);
  EXPECT_EQ(TestDisk::OpenFiles(), 0);
}

TEST(LogFile, UsesTheLineEndsOfTheSystem) {
  const TemporaryFolder folder;
  VexorLogging log;
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  log.LogLine("a\nb", TRACE_CRITICAL);
  log.LogLine("c\r\n", TRACE_CRITICAL);
  const bool plain = vexor::kLineEnd == "\n";
  EXPECT_EQ(ReadBytes(folder / "run.csv"), plain ? "a\nb\nc\r\n" : "a\r\nb\r\nc\r\n");
}

// Without TestDisk, whose locks would synchronise the threads and hide races.
TEST(Threads, LogRegisterSplitAndSwitchAtOnce) {
  constexpr int kThreads = 32;
  constexpr int kLines = 30;
  const QuietConsole quiet;
  const TemporaryFolder folder;
  VexorLogging first("header");
  VexorLogging second("header");
  first.SetLinesLimitToSplit(25);
  ASSERT_TRUE(Open(first, folder, "first") && Open(second, folder, "second"));
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      const std::thread::id self = std::this_thread::get_id();
      VexorLogging& log = thread % 2 == 0 ? first : second;
      VexorLogging::SetThreadTestLog(self, PM_TEST_SAGV, TRACE_DEBUG, &log);
      for (int i = 0; i < kLines; ++i) {
        VexorLogging::SetThreadAffinityLog(self, 1, 2, 3, static_cast<unsigned short>(i));
        const std::string line = std::to_string(thread) + " " + std::to_string(i);
        if (i % 3 == 0) VexorLogging::LogSpecificLevel(line, TRACE_DEBUG);
        if (i % 3 == 1) log.LogLine(line, TRACE_DEBUG);
        if (i % 3 == 2) log.LogData({line}, log.GetThreadLogLevel(self));
      }
    });
  }
  threads.emplace_back([&] {
    for (int i = 0; i < 20; ++i) {
      first.LockLogging();
      second.SetGlobalTraceLevel(i % 2 == 0 ? TRACE_DEBUG : static_cast<TRACE_LEVEL>(7));
      second.Initialize(folder.path(), "second", TRACE_DEBUG, LOG_FILE_APPEND, false, true, true);
      first.SaveFile();
      first.ResetInitHeaderLine();
      first.UnlockLogging();
      EXPECT_NE(first.GetLogFile(), second.GetLogFile());
      EXPECT_TRUE(second.IsInitialized() && first.FlushToDisk());
    }
  });
  for (std::thread& thread : threads) thread.join();

  std::map<std::string, int> lines = CountLines(folder.path(), "first");
  lines.merge(CountLines(folder.path(), "second"));
  EXPECT_EQ(lines.size(), std::size_t{kThreads * kLines});
  for (const auto& [line, count] : lines) EXPECT_EQ(count, 1) << line;
}

}  // namespace
