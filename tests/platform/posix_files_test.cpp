// Special files of POSIX systems: pipes, devices, and descriptors of the standard streams.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include "logging/log_test_tools.h"
#include "platform/platform.h"
#include "temporary_folder.h"
#include "vexor/logging/log_merge.h"

namespace {

TEST(LogFile, RefusesPipesAndDevices) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe.csv").c_str(), 0666), 0);
  std::filesystem::create_symlink(folder / "pipe.csv", folder / "link.csv");
  std::filesystem::create_symlink("/dev/null", folder / "null.csv");
  for (const char* name : {"pipe", "link", "null"}) {
    VexorLogging log;
    testing::internal::CaptureStdout();
    EXPECT_FALSE(OpenPlain(log, folder, name, LOG_FILE_APPEND)) << name;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Cannot open log file " + (folder / name) + ".csv: it is no regular file\n");
  }
}

// The texts of the rows of a path, through all that a tool calls, and what could not be read.
std::pair<std::string, std::error_code> ReadRows(const std::string& path) {
  vexor::LogMerge merge(vexor::FindLogs({path}).series);
  std::string texts;
  while (merge.Next()) texts.append(merge.Row().Text()).append(";");
  return {texts, merge.Faults().empty() ? std::error_code() : merge.Faults()[0].error};
}

TEST(LogReader, WaitsForAPipeThatSomebodyWrites) {
  const TemporaryFolder folder;
  const std::string path = folder / "pipe.csv";
  ASSERT_EQ(mkfifo(path.c_str(), 0666), 0);
  EXPECT_EQ(ReadRows(path), std::pair(std::string(), make_error_code(std::errc::broken_pipe)));
  constexpr auto kPause = std::chrono::milliseconds(50);
  const std::jthread writer([&] {
    std::this_thread::sleep_for(kPause);
    std::ofstream pipe(path);
    for (const char* const text : {"first\nsec", "ond\n"}) {
      std::this_thread::sleep_for(kPause);
      pipe << text << std::flush;
    }
  });
  EXPECT_EQ(ReadRows(path), std::pair(std::string("first;second;"), std::error_code()));
}

TEST(LogReader, ReportsFilesWithoutPermission) {
  if (geteuid() == 0) GTEST_SKIP() << "root reads every file";
  const TemporaryFolder folder;
  WriteBytes(folder / "log.csv", "a\n");
  ASSERT_EQ(chmod((folder / "log.csv").c_str(), 0), 0);
  const vexor::FoundLogs found = vexor::FindLogs({folder.path()});
  ASSERT_EQ(found.others.size(), 1U);
  EXPECT_EQ(found.others[0].error, std::errc::permission_denied);
}

TEST(File, DoesNotReplaceAClosedStandardStream) {
  const TemporaryFolder folder;
  const int saved = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 10);
  close(STDOUT_FILENO);
  vexor::File file;
  const std::error_code error = file.Open(folder / "f", vexor::OpenMode::kTruncate);
  const ssize_t printed = write(STDOUT_FILENO, "printed", 7);
  dup2(saved, STDOUT_FILENO);
  close(saved);
  EXPECT_FALSE(error);
  EXPECT_EQ(printed, -1);
  EXPECT_FALSE(file.Append("logged"));
  EXPECT_EQ(ReadBytes(folder / "f"), "logged");
}

}  // namespace
