// What is special about files here: pipes, devices, and numbers that stand for the standard
// streams.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "logging/log_test_tools.h"
#include "platform/platform.h"
#include "temporary_folder.h"

namespace {

TEST(LogFile, IsARegularFile) {
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

TEST(File, IsNotTakenForAStandardStreamThatIsClosed) {
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
