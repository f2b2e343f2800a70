// The writer, the settings file and the log while one call of the system after the other fails, the
// N-th of all calls of a run, for every N: alone, with all that follow, or as a disk that is full
// from there on.
#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include "config/config_files.h"
#include "logging/log_test_tools.h"
#include "platform/platform.h"
#include "temporary_folder.h"
#include "vexor/config/writer.h"
#include "vexor/util/config_file.h"

namespace {

using vexor::FileHandle;
using vexor::kSystemFileCalls;

enum class Fault : std::uint8_t { kOne, kAllFromThere, kFullDisk, kShortWrites };
constexpr Fault kFaults[] = {Fault::kOne, Fault::kAllFromThere, Fault::kFullDisk,
                             Fault::kShortWrites};

struct {
  Fault fault = Fault::kOne;
  int nth = 0;  // 0 for none
  int calls = 0;
  bool fired = false;
} state;

bool Fails() {
  ++state.calls;
  if (state.nth == 0 || state.calls < state.nth) return false;
  const bool fails = state.fault == Fault::kOne ? state.calls == state.nth : true;
  state.fired = state.fired || fails;
  return fails;
}

std::error_code IoError() { return std::make_error_code(std::errc::io_error); }

// A full disk takes half of what it is given, then nothing.
std::error_code Write(FileHandle handle, std::string_view bytes, std::size_t& written) {
  if (!Fails()) return kSystemFileCalls.write(handle, bytes, written);
  if (state.fault == Fault::kShortWrites) {
    return kSystemFileCalls.write(handle, bytes.substr(0, 1 + bytes.size() / 2), written);
  }
  if (state.fault == Fault::kFullDisk && bytes.size() > 1) {
    return kSystemFileCalls.write(handle, bytes.substr(0, bytes.size() / 2), written);
  }
  return std::make_error_code(std::errc::no_space_on_device);
}

// Whether a call other than a write fails.
bool OtherFails() {
  return state.fault != Fault::kFullDisk && state.fault != Fault::kShortWrites && Fails();
}

class FailingCalls {
 public:
  FailingCalls(Fault fault, int nth) {
    state = {.fault = fault, .nth = nth};
    vexor::file_calls = &kCalls;
  }
  FailingCalls(const FailingCalls&) = delete;
  FailingCalls& operator=(const FailingCalls&) = delete;
  ~FailingCalls() { vexor::file_calls = &kSystemFileCalls; }

 private:
  static constexpr vexor::FileCalls kCalls = {
      .open =
          [](const std::string& path, vexor::OpenMode mode, FileHandle& handle) {
            return OtherFails() ? IoError() : kSystemFileCalls.open(path, mode, handle);
          },
      .write = Write,
      .flush = [](FileHandle) { return OtherFails() ? IoError() : std::error_code(); },
      .read_status =
          [](FileHandle handle, vexor::FileStatus& status) {
            return OtherFails() ? IoError() : kSystemFileCalls.read_status(handle, status);
          },
      .cut =
          [](FileHandle handle, std::uint64_t size) {
            return OtherFails() ? IoError() : kSystemFileCalls.cut(handle, size);
          },
      .close = [](FileHandle handle) { kSystemFileCalls.close(handle); },
      .sync_name = [](const std::string&) { return OtherFails() ? IoError() : std::error_code(); },
      .rename =
          [](const std::string& from, const std::string& to) {
            return OtherFails() ? IoError() : kSystemFileCalls.rename(from, to);
          },
      .remove = [](const std::string& path) { kSystemFileCalls.remove(path); },
  };
};

// The old content or the new one, the new one where the call says so, and no other file.
void ExpectOldOrNew(const TemporaryFolder& folder, bool written, const std::string& now,
                    const std::string& old_text, const std::string& new_text) {
  EXPECT_TRUE(now == new_text || (!written && now == old_text)) << now;
  EXPECT_EQ(GetFilesInFolder(folder.path()).size(), 1U);
}

void WriteConfig(Fault fault, int nth) {
  const TemporaryFolder folder;
  const std::string path = folder / "lab.xml";
  WriteBytes(path, "old");
  static _XML_FULL_CFG cfg;
  const std::string document = vexor::FormatXMLConfig(cfg);
  bool written = false;
  {
    const FailingCalls calls(fault, nth);
    written = WriteXMLConfig(path.c_str(), cfg, false);
  }
  ExpectOldOrNew(folder, written, ReadBytes(path), "old", document);
  EXPECT_TRUE(WriteXMLConfig(path.c_str(), cfg, false));
}

void WriteSettings(Fault fault, int nth) {
  const TemporaryFolder folder;
  const std::string path = folder / "settings";
  const std::string end(vexor::kLineEnd);
  WriteBytes(path, "a = 1");
  ConfigFile file(path);
  bool written = false;
  {
    const FailingCalls calls(fault, nth);
    written = file.WriteKeyValue("b", "2");
  }
  ExpectOldOrNew(folder, written, ReadBytes(path), "a = 1", "a=1" + end + "b=2" + end);
  EXPECT_TRUE(file.WriteKeyValue("c", "3"));
  EXPECT_EQ(ReadBytes(path), "a=1" + end + "b=2" + end + "c=3" + end);
}

// Every line is found once, in the files or on standard output, and none is torn into another.
void WriteLog(Fault fault, int nth) {
  const TemporaryFolder folder;
  testing::internal::CaptureStdout();
  {
    VexorLogging log("header");
    log.SetLinesLimitToSplit(3);
    const FailingCalls calls(fault, nth);
    log.Initialize(folder.path(), "run", TRACE_DEBUG, LOG_FILE_NEW, true, true, false, true);
    log.LogLine("line 0.", TRACE_DEBUG);
    log.UnlockLogging();
    for (const char c : {'1', '2', '3', '4', '5'}) {
      if (c == '4') state.nth = 0;
      log.LogLine(std::string("line ") + c + ".", TRACE_DEBUG);
    }
    log.SaveFile();
  }
  std::string all = "\n" + testing::internal::GetCapturedStdout();
  for (const std::string& name : GetFilesInFolder(folder.path())) {
    all += "\n" + ReadLog(folder / name);
  }
  for (const char c : {'0', '1', '2', '3', '4', '5'}) {
    const std::string line = std::string("\nline ") + c + ".\n";
    const std::size_t at = all.find(line);
    EXPECT_NE(at, std::string::npos) << "lost " << c << " in" << all;
    if (at != std::string::npos) {
      EXPECT_EQ(all.find(line, at + 1), std::string::npos) << "doubled " << c << " in" << all;
    }
  }
}

TEST(FileCalls, MayFailOneAfterTheOther) {
  const QuietConsole quiet;
  int faults = 0;
  for (const auto run : {WriteConfig, WriteSettings, WriteLog}) {
    for (const Fault fault : kFaults) {
      int nth = 1;
      do {
        SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault) << ", call " << nth);
        run(fault, nth++);
        if (HasFailure()) return;
        faults += state.fired ? 1 : 0;
      } while (state.fired);
    }
  }
  std::cout << faults << " calls failed\n";
}

}  // namespace
