// Counts what happened in a night of logs, by test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "logs.h"
#include "selection.h"

namespace tools::vexorlog {

// The failures of one kind: of the same test and with the same error words or, if there are none,
// with texts that differ only in numbers.
struct FailureKind {
  std::string kind;  // see KindOfFailure
  std::string test;
  std::string what;  // the first failure's note or, if it has none, its status
  std::string path;  // the file of that failure
  std::uint64_t line = 0;
  vexor::LogTime first = vexor::kNoLogTime;
  std::string affinity;
  std::string iteration;
  std::uint64_t count = 0;
};

struct Silence {
  vexor::LogTime begin = vexor::kNoLogTime;
  vexor::LogTime end = vexor::kNoLogTime;

  [[nodiscard]] vexor::LogTime Length() const { return end - begin; }
};

// How a log ends. If a test has several logs, the last of these enumerators wins.
enum class LogEnd : std::uint8_t { kClosed, kJustWritten, kCutOff };

struct TestSurvey {
  std::string test;
  vexor::LogTime first = vexor::kNoLogTime;
  vexor::LogTime last = vexor::kNoLogTime;
  std::uint64_t rows = 0;
  std::uint64_t iterations = 0;  // the highest number in "Iter"
  std::uint64_t passes = 0;
  std::uint64_t failures = 0;
  std::uint64_t restarts = 0;  // of logs in which it has more rows than any other test
  Silence longest = {};
  LogEnd end = LogEnd::kClosed;  // of the log with its last row
};

struct Survey {
  std::vector<TestSurvey> tests;      // by first row
  std::vector<FailureKind> failures;  // by first failure
  std::uint64_t files = 0;
  std::uint64_t rows = 0;
  std::uint64_t damaged = 0;  // number of damaged rows and blocks
  vexor::LogTime first = vexor::kNoLogTime;
  vexor::LogTime last = vexor::kNoLogTime;
  std::vector<vexor::LogFault> faults;  // what could not be read
};

// Reads all files once, several in parallel. Memory grows with the number of tests and kinds of
// failures, not with the number of rows.
Survey MakeSurvey(const Logs& logs, const RowFilter& filter, Progress& progress);

}  // namespace tools::vexorlog
