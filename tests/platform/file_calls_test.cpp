// The writer, the settings file and the log on a failing disk. Each call of a run fails in turn,
// alone or with all that follow; the disk is full after a number of bytes; or writes are short.
#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include "logging/log_test_tools.h"
#include "platform/platform.h"
#include "platform/test_disk.h"
#include "temporary_folder.h"
#include "vexor/config/reader.h"
#include "vexor/config/writer.h"
#include "vexor/util/config_file.h"

namespace {

struct Fault {
  const char* name;
  void (*set)(int nth, std::uint64_t bytes);
  bool is_error = true;
};

constexpr Fault kFaults[] = {
    {"one call",
     [](int nth, std::uint64_t /*bytes*/) {
       TestDisk::Break(TestDisk::kAny, std::errc::io_error, nth, 1);
     }},
    {"all calls from one on",
     [](int nth, std::uint64_t /*bytes*/) {
       TestDisk::Break(TestDisk::kAny, std::errc::io_error, nth);
     }},
    {"full disk",
     [](int nth, std::uint64_t bytes) {
       TestDisk::LimitSpace(bytes * static_cast<unsigned>(nth));
     }},
    {"short writes",
     [](int nth, std::uint64_t bytes) {
       TestDisk::LimitWrite(1 + bytes * static_cast<unsigned>(nth));
     },
     false},
};

void RepairDisk() {
  TestDisk::Repair(TestDisk::kAny);
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  TestDisk::LimitWrite(TestDisk::kUnlimited);
}

// The file must have its old or its new content, the new one if the call succeeded, and the folder
// no other file.
void ExpectOldOrNew(const TemporaryFolder& folder, bool written, bool is_error,
                    const std::string& now, const std::string& old_text,
                    const std::string& new_text) {
  EXPECT_EQ(written, TestDisk::Faults() == 0 || !is_error);
  EXPECT_TRUE(now == new_text || (!written && now == old_text)) << now;
  EXPECT_EQ(GetFilesInFolder(folder.path()).size(), 1U);
  EXPECT_EQ(TestDisk::OpenFiles(), 0);
}

void WriteConfig(const Fault& fault, int nth) {
  const TemporaryFolder folder;
  const std::string path = folder / "lab.xml";
  WriteBytes(path, "old");
  static _XML_FULL_CFG cfg;
  fault.set(nth, 997);
  const bool written = WriteXMLConfig(path.c_str(), cfg, false);
  const std::string now = ReadBytes(path);
  RepairDisk();
  ExpectOldOrNew(folder, written, fault.is_error, now, "old", vexor::FormatXMLConfig(cfg));
  EXPECT_TRUE(WriteXMLConfig(path.c_str(), cfg, false));
}

void WriteSettings(const Fault& fault, int nth) {
  const TemporaryFolder folder;
  const std::string path = folder / "settings";
  const std::string end(vexor::kLineEnd);
  WriteBytes(path, "a = 1");
  ConfigFile file(path);
  fault.set(nth, 1);
  const bool written = file.WriteKeyValue("b", "2");
  // A folder that cannot be synchronised is no error.
  const bool is_error = fault.is_error && TestDisk::Calls(TestDisk::kSyncName) == 0;
  ExpectOldOrNew(folder, written, is_error, ReadBytes(path), "a = 1", "a=1" + end + "b=2" + end);
  RepairDisk();
  EXPECT_TRUE(file.WriteKeyValue("c", "3"));
  EXPECT_EQ(ReadBytes(path), "a=1" + end + "b=2" + end + "c=3" + end);
}

// Every line must occur exactly once, in the files or on standard output, and not mix with another.
void WriteLog(const Fault& fault, int nth) {
  const TemporaryFolder folder;
  testing::internal::CaptureStdout();
  bool is_open = false;
  {
    VexorLogging log("header");
    log.SetLinesLimitToSplit(3);
    fault.set(nth, 1);
    is_open = Open(log, folder, "run", TRACE_DEBUG, LOG_FILE_NEW, true);
    log.LogLine("line 0.", TRACE_DEBUG);
    log.UnlockLogging();
    for (const char c : {'1', '2', '3', '4', '5'}) {
      if (c == '4') RepairDisk();
      log.LogLine(std::string("line ") + c + ".", TRACE_DEBUG);
    }
    log.SaveFile();
  }
  EXPECT_EQ(TestDisk::OpenFiles(), 0);
  const std::string printed = testing::internal::GetCapturedStdout();
  std::string all = "\n" + printed;
  for (const std::string& name : GetFilesInFolder(folder.path())) {
    all += "\n" + ReadLog(folder / name);
  }
  for (const char c : {'0', '1', '2', '3', '4', '5'}) {
    const std::string line = std::string("\nline ") + c + ".\n";
    const std::size_t at = all.find(line);
    EXPECT_NE(at, std::string::npos) << "lost " << c << " in" << all;
    if (at == std::string::npos) continue;
    EXPECT_EQ(all.find(line, at + 1), std::string::npos) << "doubled " << c << " in" << all;
  }
  EXPECT_EQ(printed.find("line 5.") == std::string::npos, is_open) << all;
}

TEST(FileCalls, MayFailAtAnyStep) {
  const QuietConsole quiet;
  int faulty_runs = 0;
  for (const auto run : {WriteConfig, WriteSettings, WriteLog}) {
    for (const Fault& fault : kFaults) {
      int nth = 0;
      do {
        SCOPED_TRACE(testing::Message() << fault.name << ", " << nth);
        const TestDisk disk;
        TestDisk::PretendFlushes({});
        run(fault, nth++);
        if (HasFailure()) return;
        if (TestDisk::Faults() > 0) ++faulty_runs;
      } while (TestDisk::Faults() > 0);
    }
  }
  std::cout << faulty_runs << " runs on a failing disk\n";
}

}  // namespace
