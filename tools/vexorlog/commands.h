// The commands of the tool. Each prints its results to standard output and its errors to standard
// error, and returns the exit status: kClean, kWarnings if the logs have failures or damage,
// kNotRun if a file could not be read.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "common/status.h"

namespace tools::vexorlog {

// Which rows of which logs a command uses.
struct Selection {
  std::vector<std::string> paths;  // logs, and folders of logs
  std::vector<std::string> tests;  // names of tests; empty for all
  std::string level;               // the least important level that counts; empty for all
  std::string since;               // a time, or a duration from the start or the end
  std::string until;
  std::string grep;     // a regular expression that a row's text must match
  bool failed = false;  // only failures
};

struct SummaryArguments {
  Selection rows;
  std::size_t failures = 10;  // how many to list
  bool json = false;
};
Status Summarise(const SummaryArguments& arguments);

struct ShowArguments {
  Selection rows;
  std::vector<std::string> columns;  // in this order; empty for all that are not empty
  std::size_t context = 0;           // rows shown before and after each that was selected
  bool json = false;
};
Status Show(const ShowArguments& arguments);

struct FollowArguments {
  Selection rows;
  std::vector<std::string> columns;
  std::string duration;  // stop after this time; empty for never
};
Status Follow(const FollowArguments& arguments);

struct CheckArguments {
  std::vector<std::string> paths;
  bool json = false;
};
Status Check(const CheckArguments& arguments);

struct GapsArguments {
  Selection rows;
  std::string longer_than;  // empty for the default, see "gaps --help"
  bool json = false;
};
Status ListGaps(const GapsArguments& arguments);

struct StatsArguments {
  Selection rows;
  std::string by = "TestType";  // the column to group rows by
  std::vector<std::string> columns;
  bool json = false;
};
Status PrintStatistics(const StatsArguments& arguments);

struct ExportArguments {
  Selection rows;
  std::string format = "csv";  // or "jsonl"
  std::string file;            // standard output without one
  bool force = false;
};
Status Export(const ExportArguments& arguments);

struct ReportArguments {
  Selection rows;
  std::string file;
  bool force = false;
};
Status WriteReport(const ReportArguments& arguments);

}  // namespace tools::vexorlog
