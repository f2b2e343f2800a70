// What a night of logs amounts to, test by test.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "logs.h"
#include "selection.h"

namespace tools::vexorlog {

// Failures of one kind: of one test, with the same error words or, without any, the same text but
// for its numbers.
struct FailureKind {
  std::string kind;  // tells kinds of a test apart
  std::string test;
  std::string what;  // the first failure's note or, without one, its status
  std::string path;  // and where it stands
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

// How a log ends. The later ones count for more where a test has several logs.
enum class LogEnd : std::uint8_t { kClosed, kJustWritten, kCutOff };

struct TestSurvey {
  std::string test;
  vexor::LogTime first = vexor::kNoLogTime;
  vexor::LogTime last = vexor::kNoLogTime;
  std::uint64_t rows = 0;
  std::uint64_t iterations = 0;  // the highest number in "Iter"
  std::uint64_t passes = 0;
  std::uint64_t failures = 0;
  std::uint64_t restarts = 0;  // of the logs in which it has more rows than any other test
  Silence longest = {};
  LogEnd end = LogEnd::kClosed;  // of the log that holds its last row
};

struct Survey {
  std::vector<TestSurvey> tests;      // by first row
  std::vector<FailureKind> failures;  // by first failure
  std::uint64_t files = 0;
  std::uint64_t rows = 0;
  std::uint64_t damaged = 0;  // rows and blocks that are damaged
  vexor::LogTime first = vexor::kNoLogTime;
  vexor::LogTime last = vexor::kNoLogTime;
  std::vector<vexor::LogFault> faults;  // what could not be read
};

// Reads all files once, several at a time. Memory grows with tests and kinds of failures, not with
// rows.
Survey MakeSurvey(const Logs& logs, const RowFilter& filter, Progress& progress);

}  // namespace tools::vexorlog
