#include "vexor/util/config_file.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "platform/test_disk.h"
#include "temporary_folder.h"

namespace {

TEST(ConfigFile, ReadsEntries) {
  const struct {
    const char* text;
    const char* key;
    const char* value;
  } kFiles[] = {
      {"rate = 5 ; per second", "rate", "5"},
      {"a=b=c", "a", "b=c"},
      {" \tmax rate\t= 5", "max", "5"},
      {"key=\t two  words \t", "key", "two  words"},
      {"k==", "k", "="},
      {"   \n\n;a=1\n  ; b\nk=v\n", "k", "v"},
      {"\r\nk=v\r\n \r\n", "k", "v"},
      {"K=upper\nk=lower", "k", "lower"},
      {"k=v", "K", "none"},
      {"", "k", "none"},
  };
  const TemporaryFolder folder;
  for (const auto& [text, key, value] : kFiles) {
    WriteBytes(folder / "f", text);
    const ConfigFile file(folder / "f");
    EXPECT_EQ(file.GetValueOfKey(key), value) << text;
    EXPECT_EQ(file.KeyExists(key), std::string(value) != "none") << text;
  }
  EXPECT_FALSE(ConfigFile(folder / "missing").KeyExists(""));
}

// Reads the file with four characters on standard input. At the end of the process, prints on
// standard error what was printed before and how many of the characters were not read.
void ReadAsUser(const std::string& path) {
  static std::istringstream typed("1234");
  std::cin.rdbuf(typed.rdbuf());
  std::cout.rdbuf(std::cerr.rdbuf());
  std::atexit([] { std::cerr << "left " << typed.rdbuf()->in_avail() << '\n'; });
  const ConfigFile file(path);
}

TEST(ConfigFileDeathTest, EndsTheProcessForAMalformedFile) {
  const struct {
    const char* text;
    const char* message;
  } kFiles[] = {
      {"two words", "CFG: Couldn't find separator on line: \n"},
      {"\t\n", "CFG: Couldn't find separator on line: \n"},
      {"a ; = 1", "CFG: Couldn't find separator on line: \n"},
      {"a=1\nkey=\n", "CFG: Bad format for line: \n"},
      {"key=  \t ;x", "CFG: Bad format for line: \n"},
      {" \t=5", "CFG: Bad format for line: \n"},
      {"a=1\nb=2\na=1\n", "CFG: Can only have unique key names!\n"},
      {"a b=1\na c=2\n", "CFG: Can only have unique key names!\n"},
  };
  const TemporaryFolder folder;
  for (const auto& [text, message] : kFiles) {
    WriteBytes(folder / "f", text);
    EXPECT_EXIT(ReadAsUser(folder / "f"), testing::ExitedWithCode(1),
                std::string(message) + "left 2\n")
        << text;
  }
}

TEST(ConfigFile, RewritesItsEntriesSorted) {
  const TemporaryFolder folder;
  const std::string path = folder / "f";
  const std::string end(vexor::kLineEnd);
  WriteBytes(path, "; comment\nb = 2 ; two\n\nB=1\n");
  ConfigFile file(path);
  EXPECT_TRUE(file.WriteKeyValue("a", "new"));
  EXPECT_TRUE(file.WriteKeyValue("b", "changed=x"));
  EXPECT_EQ(ReadBytes(path), "B=1" + end + "a=new" + end + "b=changed=x" + end);
  EXPECT_EQ(ConfigFile(path).GetValueOfKey("b"), "changed=x");

  ConfigFile copy = file;
  const TestDisk disk;
  TestDisk::LimitSpace(4);
  EXPECT_FALSE(copy.WriteKeyValue("c", "3"));
  EXPECT_EQ(ConfigFile(path).GetValueOfKey("c"), "none");
  TestDisk::LimitSpace(TestDisk::kUnlimited);
  EXPECT_TRUE(copy.WriteKeyValue("d", "4"));
  EXPECT_EQ(ConfigFile(path).GetValueOfKey("c"), "3");
  EXPECT_FALSE(ConfigFile(folder / "no/folder").WriteKeyValue("a", "b"));
}

TEST(ConfigFile, IsWrittenInAFolderThatAllowsNoNewFiles) {
  const TemporaryFolder folder;
  const std::string path = folder / "f";
  const std::string end(vexor::kLineEnd);
  const TestDisk disk;
  const struct {
    TestDisk::Step step;
    std::errc error;
    bool is_written;
  } kFaults[] = {
      {TestDisk::kOpen, std::errc::permission_denied, true},
      {TestDisk::kOpen, std::errc::read_only_file_system, true},
      {TestDisk::kRename, std::errc::operation_not_permitted, true},
      {TestDisk::kSyncName, std::errc::permission_denied, true},
      {TestDisk::kSyncName, std::errc::io_error, true},
      {TestDisk::kRename, std::errc::io_error, false},
  };
  for (const auto& [step, error, is_written] : kFaults) {
    WriteBytes(path, "old = 1");
    TestDisk::Break(step, error, 0, 1);
    EXPECT_EQ(ConfigFile(path).WriteKeyValue("new", "2"), is_written);
    EXPECT_EQ(ReadBytes(path), is_written ? "new=2" + end + "old=1" + end : "old = 1");
    EXPECT_EQ(vexor::ListFiles(folder.path()).size(), 1U);
  }
}

}  // namespace
