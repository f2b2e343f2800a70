#include "vexor/logging/log_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "logging/log_test_tools.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

TEST(LogNames, JoinFolderAndName) {
  const struct {
    const char* path;
    const char* name;
    const char* file;
  } kNames[] = {{"logs", "run", "logs/run.csv"},
                {"logs/", "run.csv", "logs/run.csv"},
                {"C:\\logs\\", "RUN.CSV", "C:\\logs\\RUN.CSV"},
                {"", "run", "run.csv"},
                {"logs", "run.csv.txt", "logs/run.csv.txt.csv"},
                {"a.csv", "csv", "a.csv/csv.csv"}};
  for (const auto& [path, name, file] : kNames) {
    EXPECT_EQ(VexorLogging::BuildLogFile(path, name), file);
  }
  EXPECT_TRUE(std::regex_match(VexorLogging::BuildLogFile("logs", ""),
                               std::regex(R"(logs/VexorLog_\d{8}_\d{9}\.csv)")));
}

TEST(LogNames, HaveTheIndexOfTheSeries) {
  const struct {
    const char* name;
    unsigned index;
    const char* next;
  } kNames[] = {{"run.csv", 0, "run_0.csv"},
                {"run_0.csv", 1, "run_1.csv"},
                {"run_9.csv", 10, "run_10.csv"},
                {"RUN_4.CSV", 5, "RUN_5.CSV"},
                {"run.csv", 3, "run_3.csv"},
                {"run_1.csv", 3, "run_1_3.csv"},
                {"run_0.csv", 0, "run_0_0.csv"},
                {"run_00.csv", 1, "run_00_1.csv"},
                {"run_10.csv", 1, "run_10_1.csv"},
                {"d_0/run.csv", 1, "d_0/run_1.csv"},
                {"a.b\\run", 0, "a.b\\run_0"},
                {"run.x", 2, "run_2.x"},
                {".csv", 0, "_0.csv"}};
  for (const auto& [name, index, next] : kNames) {
    EXPECT_EQ(VexorLogging::UpdateFileNameToSplit(name, index), next);
  }
}

TEST(LogFile, OpensItsFileAsTheOptionSays) {
  EXPECT_EQ(ParseLogFileOptions("Overwrite"), LOG_FILE_OVERWRITE);
  EXPECT_EQ(ParseLogFileOptions("New"), LOG_FILE_NEW);
  for (const char* text : {"", "new", "Append", "Overwrite "}) {
    EXPECT_EQ(ParseLogFileOptions(text), LOG_FILE_APPEND) << text;
  }
  const TemporaryFolder folder;
  for (const int option : {0, 1, 2, 3, -1}) {
    WriteBytes(folder / "run.csv", "old\n");
    VexorLogging log;
    ASSERT_TRUE(OpenPlain(log, folder, "run", static_cast<LOG_FILE_OPTIONS>(option)));
    log.LogLine("new", TRACE_CRITICAL);
    EXPECT_EQ(ReadLog(folder / "run.csv"), option == 0 ? "old\nnew\n" : "new\n") << option;
  }
}

TEST(LogFile, WritesOneLinePerCallAndEndsATornLineFirst) {
  const TemporaryFolder folder;
  WriteBytes(folder / "run.csv", "whole\ntor");
  VexorLogging log;
  ASSERT_TRUE(OpenPlain(log, folder, "run.csv", LOG_FILE_APPEND));
  for (const char* text : {"bare", "ended\n", "", "\n", "two\nlines", "quote\",raw"}) {
    log.LogLine(text, TRACE_CRITICAL);
  }
  EXPECT_EQ(ReadLog(folder / "run.csv"), "whole\ntor\nbare\nended\n\n\ntwo\nlines\nquote\",raw\n");
}

TEST(LogFile, DropsLinesAboveItsLevelUnlessForced) {
  const TemporaryFolder folder;
  VexorLogging log;
  EXPECT_EQ(log.GetGlobalLogLevel(), TRACE_INFORMATION);
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  log.LogLine("1", TRACE_INFORMATION);
  log.LogLine("dropped", TRACE_DEBUG);
  log.LogLine("2", TRACE_DEBUG, true);
  log.SetGlobalTraceLevel(TRACE_NO_LOG);
  log.LogNote("dropped", TRACE_CRITICAL);
  log.LogNote("3", TRACE_NO_LOG);
  log.LogNote("4", TRACE_CRITICAL, true);
  EXPECT_EQ(ReadLog(folder / "run.csv"), "1\n2\n3\n4\n");
}

TEST(LogFile, PrintsItsLinesWhileNoFileIsOpen) {
  const TemporaryFolder folder;
  VexorLogging log("a,Notes,Level");
  CaptureStdout();
  log.LogLine("before\n", TRACE_CRITICAL);
  log.LogLine("dropped", TRACE_DEBUG);
  log.LogNote("row", TRACE_CRITICAL);
  EXPECT_EQ(GetCapturedStdout(), "before\n\n,row,Critical\n");

  CaptureStdout();
  EXPECT_FALSE(log.Initialize(folder / "no/such", "run", TRACE_CRITICAL, LOG_FILE_NEW));
  EXPECT_FALSE(log.IsInitialized());
  log.LogLine("after", TRACE_CRITICAL);
  const std::string printed = GetCapturedStdout();
  EXPECT_TRUE(std::regex_match(
      printed,
      std::regex("Cannot open log file " + (folder / "no/such/run.csv") + ": [^\n]+\nafter\n")))
      << printed;

  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  EXPECT_TRUE(log.IsInitialized());
  log.LogLine("in the file", TRACE_CRITICAL);
  log.CloseFile(true);
  EXPECT_FALSE(log.IsInitialized());
  CaptureStdout();
  log.LogLine("closed", TRACE_CRITICAL);
  EXPECT_EQ(GetCapturedStdout(), "closed\n");
  EXPECT_EQ(ReadLog(folder / "run.csv"), "in the file\n");
}

TEST(LogFile, PrintsItsNameAndReturnsItsPaths) {
  const TemporaryFolder folder;
  const std::string file = folder / "run.csv";
  VexorLogging log("");
  const auto initialize = [&](bool continues, bool silent) {
    CaptureStdout();
    EXPECT_TRUE(log.Initialize(folder.path() + "/", "run", TRACE_DEBUG, LOG_FILE_APPEND, false,
                               true, continues, silent));
    return GetCapturedStdout();
  };
  EXPECT_EQ(initialize(false, false), "Log File: " + file + "\n");
  EXPECT_EQ(initialize(true, false), "Continue on Log File: " + file + "\n");
  EXPECT_EQ(initialize(false, true), "");
  EXPECT_EQ(log.GetLogFile(), file);
  EXPECT_EQ(log.GetLogPath(), folder.path() + "/");
  EXPECT_EQ(log.GetGlobalLogLevel(), TRACE_DEBUG);
  log.SetLogOvrOptions("-a -b");
  EXPECT_EQ(log.GetLogOvrOptions(), "-a -b");
  log.GetBuffer()[VexorLogging::kBufferSize - 1] = 'x';
  EXPECT_EQ(log.GetBuffer()[0], '\0');
}

TEST(LogFile, KeepsItsFolderWhenTheCurrentFolderChanges) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::create_directory(folder / "logs");
  std::filesystem::current_path(folder.path());
  VexorLogging log("");
  log.SetLinesLimitToSplit(1);
  const bool started =
      log.Initialize("logs", "run", TRACE_DEBUG, LOG_FILE_NEW, false, true, false, true);
  log.LogLine("0", TRACE_CRITICAL);
  std::filesystem::current_path(before);
  log.LogLine("1", TRACE_CRITICAL);
  ASSERT_TRUE(started);
  EXPECT_EQ(log.GetLogFile(), "logs/run_1.csv");
  EXPECT_EQ(ReadLog(folder / "logs/run_1.csv"), "1\n");
}

TEST(LogFile, WritesTheHeaderAboveTheFirstLine) {
  const TemporaryFolder folder;
  const std::string file = folder / "run.csv";
  VexorLogging log("A,B\n");
  const auto initialize = [&](bool continues) {
    return Open(log, folder, "run", TRACE_CRITICAL, LOG_FILE_APPEND, false, continues);
  };
  ASSERT_TRUE(initialize(false));
  log.LogLine("dropped", TRACE_DEBUG);
  EXPECT_EQ(ReadLog(file), "");
  log.LogLine("1", TRACE_CRITICAL);
  log.UpdateHeaderLine("C");
  log.LogLine("2", TRACE_CRITICAL);
  log.ResetInitHeaderLine();
  log.LogLine("3", TRACE_CRITICAL);
  EXPECT_EQ(ReadLog(file), "A,B\n1\n2\nC\n3\n");
  ASSERT_TRUE(initialize(true));
  log.LogHeaderLine();
  log.LogHeaderLine();
  EXPECT_EQ(ReadLog(file), "A,B\n1\n2\nC\n3\nC\n");
  log.LogLine("4", TRACE_CRITICAL);
  EXPECT_EQ(ReadLog(file), "A,B\n1\n2\nC\n3\nC\n4\n");
  log.CloseFile(true);
  CaptureStdout();
  log.ResetInitHeaderLine();
  log.LogHeaderLine();
  log.LogLine("5", TRACE_CRITICAL);
  EXPECT_EQ(GetCapturedStdout(), "5\n");
}

TEST(LogFile, BeginsWithAHeaderAndAVersionNoteOfTheSameWidth) {
  const TemporaryFolder folder;
  VexorLogging log;
  ASSERT_TRUE(log.Initialize(folder.path(), "run", TRACE_CRITICAL, LOG_FILE_NEW, false, false,
                             false, true));
  const std::string text = ReadLog(folder / "run.csv");
  EXPECT_TRUE(text.starts_with("Time,TestType,Iter,Affinity,Scope,")) << text;
  EXPECT_NE(text.find(",GT-SR%,ClipCause, Level\n"), std::string::npos);
  const Rows rows = ParseCsv(text);
  ASSERT_EQ(rows.size(), 2U);
  ASSERT_EQ(rows[0].size(), 44U);
  ASSERT_EQ(rows[1].size(), 44U);
  EXPECT_EQ(rows[1][1], "VEXOR");
  EXPECT_EQ(rows[1][43], "Critical");
  EXPECT_EQ(rows[0][9], "Notes");
  EXPECT_TRUE(std::regex_match(
      rows[1][9],
      std::regex(R"(Version,3\.21\.522\.0 -- Driver Version: N/A -- Hash 0x[0-9a-f]{1,8})"
                 R"( -- Build date: \d{4}-\d\d-\d\d @ \d\d:\d\d:\d\d UTC)")))
      << rows[1][9];

  ASSERT_TRUE(log.Initialize(folder.path(), "quiet", TRACE_NO_LOG, LOG_FILE_NEW, false, false,
                             false, true));
  EXPECT_EQ(ReadLog(folder / "quiet.csv"), "");
}

TEST(LogFile, ComposesRowsUnderItsHeader) {
  const TemporaryFolder folder;
  VexorLogging log("Time,TestType,Iter,Affinity,Scope,Request,Status,Notes, Level");
  ASSERT_TRUE(Open(log, folder, "run"));
  std::thread([&] {
    const std::thread::id thread = std::this_thread::get_id();
    VexorLogging::SetThreadTestLog(thread, PM_TEST_CSTATES, TRACE_DEBUG, &log);
    VexorLogging::SetThreadAffinityLog(thread, 0, 1, 2, 3);
    log.LogNote("a, \"b\"\r\n", TRACE_DEBUG);
    log.LogMsgData("text", TRACE_CRITICAL, "a\nb", "");
    log.LogWorkloadData("text", static_cast<TRACE_LEVEL>(9), "scope", true);
    log.LogData({"1", "2", "", "4", "5", "6", "7,"}, TRACE_NO_LOG);
    log.LogData({}, TRACE_NO_LOG);
  }).join();
  log.UpdateHeaderLine("a,b");
  log.LogData({"lone return\r", "line feed\n"}, TRACE_CRITICAL);
  EXPECT_NE(ReadBytes(folder / "run.csv").find("\n\"lone return\r\",line feed"), std::string::npos);
  log.UpdateHeaderLine("\"Iter\",x");
  log.LogMsgData("1", TRACE_CRITICAL, "2", "3");

  Rows rows = ParseCsv(ReadLog(folder / "run.csv"));
  ASSERT_EQ(rows.size(), 8U);
  rows.erase(rows.begin() + 6);  // seen above
  const std::regex time(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3})");
  for (std::size_t i = 1; i < 6; ++i) {
    EXPECT_TRUE(std::regex_match(rows[i][0], time)) << rows[i][0];
    rows[i][0] = "T";
  }
  const std::string label = "00:01:002:3";
  const Rows expected = {
      {"T", "CSTATES", "", label, "", "", "", "a, \"b\"", "Debug"},
      {"T", "CSTATES", "", label, "", "a\nb", "", "text", "Critical"},
      {"T", "CSTATES", "", label, "scope", "", "", "text", ""},
      {"T", "CSTATES", "1", label, "2", "", "4", "5", "6", "7,", "No-Log"},
      {"T", "CSTATES", "", label, "", "", "", "", "No-Log"},
      {"1", "2", "3"},
  };
  EXPECT_EQ(Rows(rows.begin() + 1, rows.end()), expected);
}

TEST(LockedLog, KeepsItsLinesUntilItIsUnlockedSavedOrClosed) {
  const TemporaryFolder folder;
  const std::string file = folder / "run.csv";
  VexorLogging log;
  ASSERT_TRUE(OpenPlain(log, folder, "run", LOG_FILE_NEW, true));
  EXPECT_TRUE(log.IsLoggingLocked());
  log.LogLine("1", TRACE_CRITICAL);
  log.LogLine("dropped", TRACE_DEBUG);
  log.LogNote("2", TRACE_CRITICAL);
  log.LogHeaderLine();
  EXPECT_EQ(ReadLog(file), "");
  EXPECT_TRUE(log.SaveFile());
  EXPECT_EQ(ReadLog(file), "1\n2\n");
  EXPECT_TRUE(log.IsLoggingLocked());
  log.LogLine("3", TRACE_CRITICAL);
  log.UnlockLogging();
  EXPECT_FALSE(log.IsLoggingLocked());
  log.LogLine("4", TRACE_CRITICAL);
  EXPECT_EQ(ReadLog(file), "1\n2\n3\n4\n");
  log.LockLogging();
  log.LogLine("5", TRACE_CRITICAL);
  log.CloseFile(true);
  EXPECT_EQ(ReadLog(file), "1\n2\n3\n4\n5\n");

  ASSERT_TRUE(OpenPlain(log, folder, "run", LOG_FILE_APPEND, true));
  log.LogLine("lost", TRACE_CRITICAL);
  log.LogLine("lost", TRACE_CRITICAL);
  CaptureStdout();
  log.CloseFile(false);
  log.CloseFile(false);
  EXPECT_EQ(GetCapturedStdout(),
            "Log file " + file + " drops 2 line(s) kept while it was locked\n");
  EXPECT_EQ(ReadLog(file), "1\n2\n3\n4\n5\n");
}

// The files of the folder, each with its lines: "run_0.csv: 1 2 run_1.csv: 3 ".
std::string Series(const TemporaryFolder& folder) {
  std::string files;
  for (const std::string& name : GetFilesInFolder(folder.path())) {
    files += name + ": " + ReadLog(folder / name);
  }
  std::ranges::replace(files, '\n', ' ');
  return files;
}

TEST(LogSeries, SplitsBeforeTheLineThatWouldExceedTheLimit) {
  const QuietConsole quiet;
  const struct {
    const char* header;
    std::uint32_t limit;
    const char* files;
  } kSeries[] = {
      {"", 2, "run_0.csv: 1 2 run_1.csv: 3 4 run_2.csv: 5 "},
      {"H", 3, "run_0.csv: H 1 2 run_1.csv: H 3 4 run_2.csv: H 5 "},
      {"H", 5, "run_0.csv: H 1 2 3 4 run_1.csv: H 5 "},
      {"H", 6, "run_0.csv: H 1 2 3 4 5 "},
      {"H", 0, "run.csv: H 1 2 3 4 5 "},
      {"H1\nH2", 4, "run_0.csv: H1 H2 1 2 run_1.csv: H1 H2 3 4 run_2.csv: H1 H2 5 "},
  };
  for (const auto& series : kSeries) {
    const TemporaryFolder folder;
    VexorLogging log(series.header);
    log.SetLinesLimitToSplit(series.limit);
    ASSERT_TRUE(Open(log, folder, "run"));
    for (const char* line : {"1", "2", "3", "4", "5"}) log.LogLine(line, TRACE_CRITICAL);
    EXPECT_EQ(Series(folder), series.files);
  }
}

TEST(LogSeries, WritesAtLeastOneLineToEachFile) {
  const TemporaryFolder folder;
  VexorLogging log("H");
  log.SetLinesLimitToSplit(1);
  ASSERT_TRUE(Open(log, folder, "run"));
  log.LogHeaderLine();
  CaptureStdout();
  for (const char* line : {"1\n2", "3", "4"}) log.LogLine(line, TRACE_CRITICAL);
  EXPECT_EQ(GetCapturedStdout(), "Continue on Log File: " + (folder / "run_1.csv") +
                                     "\nContinue on Log File: " + (folder / "run_2.csv") + "\n");
  EXPECT_EQ(Series(folder), "run_0.csv: H 1 2 run_1.csv: H 3 run_2.csv: H 4 ");
  EXPECT_EQ(log.GetLogFile(), folder / "run_2.csv");
  EXPECT_EQ(log.GetLogPath(), folder.path());
}

TEST(LogSeries, CountsTheLinesOfAnExistingFile) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  WriteBytes(folder / "run_0.csv", "a\nb");
  WriteBytes(folder / "run_1.csv", "of an earlier run\n");
  VexorLogging log;
  log.SetLinesLimitToSplit(3);
  ASSERT_TRUE(OpenPlain(log, folder, "run", LOG_FILE_APPEND));
  for (const char* line : {"1", "2"}) log.LogLine(line, TRACE_CRITICAL);
  EXPECT_EQ(Series(folder), "run_0.csv: a b 1 run_1.csv: 2 ");
}

TEST(LogSeries, BeginsWhenALimitIsSetLater) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  VexorLogging log;
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  for (const char* line : {"1", "2", "3"}) log.LogLine(line, TRACE_CRITICAL);
  log.SetLinesLimitToSplit(2);
  for (const char* line : {"4", "5", "6"}) log.LogLine(line, TRACE_CRITICAL);
  EXPECT_EQ(Series(folder), "run.csv: 1 2 3 run_1.csv: 4 5 run_2.csv: 6 ");
}

TEST(LogSeries, ContinuesAfterTheNumberInTheName) {
  const QuietConsole quiet;
  const struct {
    const char* name;
    bool locked;
    bool unexpected;
    const char* files;
  } kSeries[] = {
      {"run_7", true, false, "run_7.csv: 1 run_8.csv: 2 "},
      {"run_7.CSV", false, true, "run_7.CSV: 1 run_8.CSV: 2 "},
      {"run_7", false, false, "run_7_0.csv: 1 run_7_1.csv: 2 "},
      {"run", true, true, "run.csv: 1 run_1.csv: 2 "},
      {"run_x", false, true, "run_x.csv: 1 run_x_1.csv: 2 "},
      {"run_0x1F", false, true, "run_0x1F.csv: 1 run_0x1F_32.csv: 2 "},
      {"run_99999999999999999999", false, true,
       "run_99999999999999999999.csv: 1 run_99999999999999999999_1.csv: 2 "},
      {"run_4294967295", false, true, "run_4294967295.csv: 1 run_4294967295_1.csv: 2 "},
  };
  for (const auto& series : kSeries) {
    const TemporaryFolder folder;
    VexorLogging log;
    log.SetLinesLimitToSplit(1);
    if (series.unexpected) log.UnexpectedInit();
    ASSERT_TRUE(OpenPlain(log, folder, series.name, LOG_FILE_APPEND, series.locked));
    for (const char* line : {"1", "2"}) log.LogLine(line, TRACE_CRITICAL);
    log.CloseFile(true);
    EXPECT_EQ(Series(folder), series.files);

    if (!series.unexpected) continue;  // the flag served once
    ASSERT_TRUE(OpenPlain(log, folder, "again"));
    EXPECT_EQ(log.GetLogFile(), folder / "again_0.csv");
  }
}

TEST(LogSeries, KeepsCountingWhenALogIsContinued) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  VexorLogging log;
  log.SetLinesLimitToSplit(1);
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  for (const char* line : {"1", "2", "3"}) log.LogLine(line, TRACE_CRITICAL);
  ASSERT_TRUE(Open(log, folder, "other", TRACE_CRITICAL, LOG_FILE_NEW, false, true));
  for (const char* line : {"4", "5"}) log.LogLine(line, TRACE_CRITICAL);
  EXPECT_EQ(Series(folder), "other.csv: 4 other_3.csv: 5 run_0.csv: 1 run_1.csv: 2 run_2.csv: 3 ");
  ASSERT_TRUE(OpenPlain(log, folder, "anew"));
  for (const char* line : {"6", "7"}) log.LogLine(line, TRACE_CRITICAL);
  EXPECT_EQ(ReadLog(folder / "anew_1.csv"), "7\n");
}

TEST(LogSeries, ContinueLogAppendsToTheLastFile) {
  const QuietConsole quiet;
  const struct {
    std::uint32_t limit;
    std::vector<const char*> there;
    const char* files;
  } kSeries[] = {
      {2, {}, "run_0.csv: 1 2 run_1.csv: 3 "},
      {2,
       {"run.csv", "run_0.csv", "run_1.csv"},
       "run.csv: x run_0.csv: x run_1.csv: x 1 run_2.csv: 2 3 "},
      {2,
       {"run_0.csv", "run_9.csv", "run_10.csv"},
       "run_0.csv: x run_10.csv: x 1 run_11.csv: 2 3 run_9.csv: x "},
      {2,
       {"run_007.csv", "run_0x1.csv", "run_1_0.csv", "run_2.txt", "xrun_3.csv"},
       "run_0.csv: 1 2 run_007.csv: x run_0x1.csv: x run_1.csv: 3 run_1_0.csv: x run_2.txt: x "
       "xrun_3.csv: x "},
      {0, {"run.csv", "run_1.csv"}, "run.csv: x 1 2 3 run_1.csv: x "},
  };
  for (const auto& series : kSeries) {
    const TemporaryFolder folder;
    for (const char* name : series.there) WriteBytes(folder / name, "x\n");
    VexorLogging log("");
    log.SetLinesLimitToSplit(series.limit);
    log.SetGlobalTraceLevel(TRACE_NO_LOG);
    ASSERT_TRUE(vexor::ContinueLog(log, folder.path(), "run", TRACE_NO_LOG));
    for (const char* line : {"1", "2", "3"}) log.LogLine(line, TRACE_NO_LOG);
    EXPECT_EQ(Series(folder), series.files);
    EXPECT_FALSE(vexor::ContinueLog(log, folder / "missing", "run", TRACE_NO_LOG));
    ASSERT_TRUE(OpenPlain(log, folder, "anew"));
    EXPECT_EQ(log.GetLogFile(), folder / (series.limit > 0 ? "anew_0.csv" : "anew.csv"));
  }
}

class FrontEnd : public ContextUtils {
 public:
  explicit FrontEnd(VexorLogging& log) : log_(log) {}
  bool CreateAutoRun(std::string script, unsigned char flags) override {
    calls.push_back(script + ":" + std::to_string(flags));
    if (throws) throw 1;
    log_.LogLine("from the front end", TRACE_CRITICAL);
    return false;
  }
  std::vector<std::string> calls;
  bool throws = false;

 private:
  VexorLogging& log_;
};

TEST(LogAutoRun, IsUpdatedAfterTheLogMoves) {
  const TemporaryFolder folder;
  VexorLogging log;
  FrontEnd front_end(log);
  log.SetLinesLimitToSplit(2);
  ASSERT_TRUE(OpenPlain(log, folder, "run"));
  const auto log_two = [&] {
    CaptureStdout();
    for (const char* line : {"1", "2"}) log.LogLine(line, TRACE_CRITICAL);
    const std::string printed = GetCapturedStdout();
    return printed.substr(printed.find('\n') + 1);  // after the announcement of the new file
  };
  log.LogLine("0", TRACE_CRITICAL);
  EXPECT_EQ(log_two(), "");
  log.SetAutoRunInfo(&front_end, {"script", static_cast<unsigned char>(0xFF)});
  EXPECT_EQ(log_two(), "Update VexorPanel auto-run\n");
  EXPECT_TRUE(front_end.calls.empty());
  log.SetAutoRunInfo(&front_end, {"script", static_cast<unsigned char>(0xFD)});
  log_two();
  EXPECT_EQ(front_end.calls, (std::vector<std::string>{"script:253"}));
  EXPECT_EQ(ReadLog(log.GetLogFile()), "2\nfrom the front end\n");
  log.LockLogging();
  for (const char* line : {"3", "4", "5"}) log.LogLine(line, TRACE_CRITICAL);
  CaptureStdout();
  log.UnlockLogging();  // two moves
  EXPECT_EQ(front_end.calls.size(), 3U);
  log.SetLinesLimitToSplit(1);
  log.LogLine("6", TRACE_CRITICAL);  // so that the front end's own line moves the log again
  EXPECT_EQ(front_end.calls.size(), 4U);
  EXPECT_EQ(ReadLog(log.GetLogFile()), "from the front end\n");
  GetCapturedStdout();

  CaptureStdout();
  EXPECT_FALSE(ContextUtils().CreateAutoRun("script", 'x'));
  EXPECT_EQ(GetCapturedStdout(), "scriptx");
}

TEST(LogAutoRun, MayThrow) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  auto log = std::make_unique<VexorLogging>();
  FrontEnd front_end(*log);
  front_end.throws = true;
  log->SetLinesLimitToSplit(1);
  log->SetAutoRunInfo(&front_end, {"", static_cast<unsigned char>(0)});
  ASSERT_TRUE(OpenPlain(*log, folder, "run"));
  log->LogLine("1", TRACE_CRITICAL);
  EXPECT_THROW(log->LogLine("2", TRACE_CRITICAL), int);
  log->LockLogging();
  for (int i = 0; i < 100; ++i) log->LogLine("3", TRACE_CRITICAL);
  CaptureStdout();
  log.reset();
  EXPECT_NE(GetCapturedStdout(), "");
  EXPECT_EQ(GetFilesInFolder(folder.path()).size(), 102U);
}

TEST(LogFile, GetsAUniqueNameFromTheTime) {
  const TemporaryFolder folder;
  std::vector<std::unique_ptr<VexorLogging>> logs;
  for (int i = 0; i < 60; ++i) {
    logs.push_back(std::make_unique<VexorLogging>());
    if (i % 2 == 0) logs.back()->SetLinesLimitToSplit(5);
    ASSERT_TRUE(OpenPlain(*logs.back(), folder, ""));
    logs.back()->LogLine(std::to_string(i), TRACE_CRITICAL);
  }
  EXPECT_EQ(GetFilesInFolder(folder.path()).size(), 60U);
  EXPECT_EQ(ReadLog(logs.front()->GetLogFile()), "0\n");
}

TEST(LogFile, CountsItsLinesAgainAfterOthersHaveCutIt) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  VexorLogging log("H");
  log.SetLinesLimitToSplit(4);
  ASSERT_TRUE(Open(log, folder, "run"));
  for (const char* line : {"1", "2", "3"}) log.LogLine(line, TRACE_CRITICAL);
  WriteBytes(folder / "run_0.csv", "y");
  for (const char* line : {"4", "5", "6"}) log.LogLine(line, TRACE_CRITICAL);
  EXPECT_EQ(Series(folder), "run_0.csv: y H 4 5 run_1.csv: H 6 ");
}

}  // namespace
