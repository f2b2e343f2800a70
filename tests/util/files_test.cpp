#include "vexor/util/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "temporary_folder.h"

namespace {

TEST(Paths, AreSplitAtBothSeparators) {
  const struct {
    const char* path;
    const char* folder;
    const char* name;
    bool relative;
  } kPaths[] = {
      {"C:\\logs\\run.csv", "C:\\logs\\", "run.csv", false},
      {"C:/logs\\day/run.csv", "C:/logs\\day/", "run.csv", false},
      {"run.csv", "", "run.csv", true},
      {"logs/", "logs/", "", true},
      {"", "", "", true},
      {"/", "/", "", false},
      {"\\x", "\\", "x", false},
      {"C:run.csv", "", "C:run.csv", true},
      {"z:\\", "z:\\", "", false},
      {"1:\\x", "1:\\", "x", true},
      {"ab:/x", "ab:/", "x", true},
  };
  for (const auto& [path, folder, name, relative] : kPaths) {
    EXPECT_EQ(GetFilePath(path), folder) << path;
    EXPECT_EQ(GetFileBaseName(path), name) << path;
    EXPECT_EQ(IsRelativePath(path), relative) << path;
  }
}

TEST(Files, AreFoundReadAndListed) {
  const TemporaryFolder folder;
  const std::string missing = folder / "missing";
  const std::string empty = folder / "b-empty";
  const std::string text = folder / "a-text";
  std::filesystem::create_directory(folder / "c-folder");
  WriteBytes(empty, "");
  WriteBytes(text, "one\r\ntwo\rhalf\n\nlast two\xff");

  const struct {
    std::string path;
    bool exists;
    bool empty;
    std::string bytes;
    std::string unified;
  } kFiles[] = {
      {missing, false, true, "", ""},
      {empty, true, true, "", ""},
      {text, true, false, "one\r\ntwo\rhalf\n\nlast two\xff", "one\ntwo\nhalf\n\nlast two\xff"},
      {folder / "c-folder", true, true, "", ""},
      {folder / "c-folder/", true, true, "", ""},
  };
  for (const auto& file : kFiles) {
    EXPECT_EQ(DoesFileExist(file.path), file.exists) << file.path;
    EXPECT_EQ(IsFileEmpty(file.path), file.empty) << file.path;
    EXPECT_EQ(ReadFile(file.path, false), file.bytes) << file.path;
    EXPECT_EQ(ReadFile(file.path, true), file.unified) << file.path;
  }
  EXPECT_EQ(GetFilesInFolder(folder.path()), (std::vector<std::string>{"a-text", "b-empty"}));
  EXPECT_EQ(GetFilesInFolder(missing), std::vector<std::string>());
  EXPECT_EQ(GetFilesInFolder(folder.path() + "/").size(), 2U);
  EXPECT_EQ(GetFilesInFolder(""), std::vector<std::string>());
}

TEST(Files, AreSavedOrReturnTheError) {
  const TemporaryFolder folder;
  EXPECT_EQ(vexor::SaveFile(folder / "f", "new\r\n"), std::error_code());
  EXPECT_EQ(ReadBytes(folder / "f"), "new\r\n");
  EXPECT_EQ(vexor::SaveFile(folder / "missing/f", ""), std::errc::no_such_file_or_directory);
}

TEST(Files, MakeFoldersCreatesMissingFolders) {
  const TemporaryFolder folder;
  WriteBytes(folder / "file", "");
  // Windows tells only of the piece that is in the way.
  const bool is_windows = std::filesystem::path::preferred_separator == '\\';
  const std::errc below_a_file = is_windows ? std::errc::file_exists : std::errc::not_a_directory;
  const struct {
    std::string path;
    std::errc error;
  } folders[] = {
      {folder / "a/b//c", {}},
      {folder / "a/b/c/", {}},
      {folder.path(), {}},
      {"", {}},
      {"/", {}},
      {folder / "file/a/b", below_a_file},
      {folder / "file", std::errc::file_exists},
      {folder / std::string("z\0", 2), std::errc::invalid_argument},
  };
  for (const auto& [path, error] : folders) {
    const std::error_code made = vexor::MakeFolders(path);
    EXPECT_TRUE(error == std::errc{} ? !made : made == error) << path << ": " << made.message();
    EXPECT_TRUE(made || path.empty() || std::filesystem::is_directory(path)) << path;
  }
  EXPECT_FALSE(std::filesystem::exists(folder / "z"));
}

TEST(Files, FindTheFirstLineWithAText) {
  const TemporaryFolder folder;
  const std::string file = folder / "f";
  WriteBytes(file, "one\r\n\nTwo two\ntwo\r\nlast");
  const struct {
    const char* text;
    int number;
    const char* line;
  } kSearches[] = {{"one", 1, "one"}, {"", 1, "one"},    {"two", 3, "Two two"}, {"last", 5, "last"},
                   {"TWO", 0, "-"},   {"one\r", 0, "-"}, {"two\ntwo", 0, "-"}};
  for (const auto& [text, number, found] : kSearches) {
    std::string line = "-";
    EXPECT_EQ(FindStrInFile(file, text), number) << text;
    EXPECT_EQ(FindLineInFile(file, text, line), number > 0) << text;
    EXPECT_EQ(line, found) << text;
  }

  std::string line = "-";
  EXPECT_EQ(FindStrInFile(folder / "missing", "x"), -1);
  EXPECT_LE(FindStrInFile(folder.path(), ""), 0) << "a folder has no lines, and may not be opened";
  testing::internal::CaptureStdout();
  EXPECT_FALSE(FindLineInFile(folder / "missing", "x", line));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "can't open\n");
  EXPECT_EQ(line, "-");
}

}  // namespace
