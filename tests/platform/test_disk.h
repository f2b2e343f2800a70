// A disk that fails on demand and knows what would survive a power cut.
#pragma once

#include <chrono>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <system_error>

#include "platform/platform.h"

// While an object exists, it intercepts the library's file calls; one object at a time. The calls
// still reach the real files.
class TestDisk {
 public:
  enum Step : std::uint8_t { kOpen, kWrite, kFlush, kStatus, kSyncName, kRename, kCut, kAny };
  static constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

  TestDisk();
  TestDisk(const TestDisk&) = delete;
  TestDisk& operator=(const TestDisk&) = delete;
  ~TestDisk();

  // Lets calls of this step fail after `spared` more of them have succeeded; at most `times` calls.
  static void Break(Step step, std::errc error = std::errc::io_error, int spared = 0,
                    int times = std::numeric_limits<int>::max());
  static void Repair(Step step);

  // Lets the disk be full after this many more bytes.
  static void LimitSpace(std::uint64_t bytes);

  // Limits the bytes that one write accepts.
  static void LimitWrite(std::uint64_t bytes);

  // Makes flushes wait this long and succeed, without flushing the real disk.
  static void PretendFlushes(std::chrono::microseconds duration);

  // Flushes of files whose path contains the text begin, but do not end until `ReleaseFlushes`.
  static void HoldFlushes(const std::string& part_of_path);
  static void ReleaseFlushes();

  static int OpenFiles();
  static int Calls(Step step);

  // How many calls have failed, or were cut short.
  static int Faults();

  // What a power cut at this moment would leave: the sizes, as they were when their last completed
  // flush began, of the files whose names are on the disk.
  static std::map<std::string, std::uint64_t> DurableSizes();
};
