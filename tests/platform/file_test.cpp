#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/platform.h"
#include "platform/test_disk.h"
#include "temporary_folder.h"

namespace {

using vexor::File;
using vexor::OpenMode;

TEST(File, AppendsInOneCallAlongsideOtherWritersAndNoticesItsRemoval) {
  const TemporaryFolder folder;
  const TestDisk disk;
  File first;
  File second;
  ASSERT_FALSE(first.Open(folder / "f", OpenMode::kTruncate));
  ASSERT_FALSE(second.Open(folder / "f", OpenMode::kAppend));
  EXPECT_FALSE(first.Append("one "));
  EXPECT_FALSE(second.Append("two "));
  EXPECT_FALSE(first.Append("three"));
  EXPECT_EQ(TestDisk::Calls(TestDisk::kWrite), 3);
  EXPECT_EQ(ReadBytes(folder / "f"), "one two three");
  const auto rights = std::filesystem::status(folder / "f").permissions();
  EXPECT_NE(rights & std::filesystem::perms::owner_read, std::filesystem::perms::none);
  EXPECT_FALSE(first.ReadStatus()->removed);
  std::error_code in_use;  // not every system removes a file that is open
  const bool removed = std::filesystem::remove(folder / "f", in_use);
  EXPECT_EQ(first.ReadStatus()->removed, removed);
}

TEST(File, CompletesShortWritesAndRemovesThePartOfAFailedOne) {
  const TemporaryFolder folder;
  const TestDisk disk;
  File file;
  ASSERT_FALSE(file.Open(folder / "f", OpenMode::kAppend));
  TestDisk::LimitWrite(3);
  EXPECT_FALSE(file.Append("12345678"));
  TestDisk::LimitSpace(5);
  EXPECT_EQ(file.Append("abcdefgh"), std::errc::no_space_on_device);
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  EXPECT_FALSE(file.Append("xyz"));
  EXPECT_EQ(ReadBytes(folder / "f"), "12345678xyz");
}

TEST(ReplaceFileContent, FlushesBeforeItRenames) {
  const TemporaryFolder folder;
  const TestDisk disk;
  TestDisk::Break(TestDisk::kRename);
  EXPECT_TRUE(vexor::ReplaceFileContent(folder / "new", "text"));
  EXPECT_EQ(TestDisk::Calls(TestDisk::kFlush), 1);
  EXPECT_FALSE(std::filesystem::exists(folder / "new"));
}

}  // namespace
