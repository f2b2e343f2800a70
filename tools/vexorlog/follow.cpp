#include <algorithm>
#include <chrono>
#include <iostream>
#include <map>
#include <thread>

#include "commands.h"
#include "common/text_output.h"
#include "logs.h"
#include "row_format.h"

namespace tools::vexorlog {
namespace {

using std::chrono::steady_clock;
using vexor::LogRow;
using vexor::LogTime;

constexpr auto kPause = std::chrono::milliseconds(200);

// At the start, this many of the last rows are shown. They are selected from batches of the other
// size, so that memory does not grow with the logs.
constexpr std::ptrdiff_t kFirstRows = 10;
constexpr std::size_t kMostKept = 4096;

// The usual widths of the suite's columns: rows are shown before all of them are known.
std::vector<ColumnUse> UsualWidths() {
  return {{.name = "Time", .widest = 23},  {.name = "TestType", .widest = 9},
          {.name = "Iter", .widest = 5},   {.name = "Affinity", .widest = 11},
          {.name = "Result", .widest = 6}, {.name = "Status", .widest = 8}};
}

struct TimedLine {
  LogTime time = vexor::kNoLogTime;
  std::string line;
};

// A file that is read as it grows.
class Source {
 public:
  explicit Source(const std::string& path) : path_(path) { Open(); }

  template <class Visit>
  void ReadNew(Visit visit) {
    Drain(visit);
    if (reader_.Change() == vexor::LogFileChange::kNone) return;
    reader_.Finish();
    Drain(visit);
    Open();  // another file has the path now: read it from its beginning
    Drain(visit);
  }

 private:
  void Open() {
    // Not kept open: a folder may hold thousands of logs.
    reader_ = vexor::LogReader({.follow = true, .buffer_size = 65536, .keep_open = false});
    reader_.Open(path_);
  }

  template <class Visit>
  void Drain(Visit visit) {
    while (reader_.Next()) {
      const LogRow row = reader_.Row();
      if (row.Time() != vexor::kNoLogTime) time_ = row.Time();
      visit(row, time_);
    }
  }

  std::string path_;
  vexor::LogReader reader_;
  LogTime time_ = vexor::kNoLogTime;
};

class Follower {
 public:
  Follower(RowFilter filter, const std::vector<std::string>& columns)
      : filter_(std::move(filter)), format_(columns, UsualWidths()) {
    std::cout << format_.FormatTitles() << '\n' << std::flush;
  }

  // Prints the rows that were added since the last call, in order of time.
  void Poll(const std::vector<std::string>& paths) {
    for (const vexor::FoundSeries& series : vexor::FindLogs(ExpandPaths(paths)).series) {
      for (const vexor::FoundLog& file : series.files) sources_.try_emplace(file.path, file.path);
    }
    std::vector<TimedLine> lines;
    for (auto& [path, source] : sources_) {
      source.ReadNew([&](const LogRow& row, LogTime time) {
        if (!filter_.Passes(row, time)) return;
        lines.push_back({.time = time, .line = format_.Format(row)});
        if (is_first_ && lines.size() >= kMostKept) KeepLast(lines);
      });
    }
    if (is_first_) {
      KeepLast(lines);
    } else {
      std::ranges::stable_sort(lines, {}, &TimedLine::time);
    }
    for (const TimedLine& line : lines) std::cout << line.line << '\n';
    std::cout.flush();
    is_first_ = false;
  }

 private:
  static void KeepLast(std::vector<TimedLine>& lines) {
    std::ranges::stable_sort(lines, {}, &TimedLine::time);
    if (std::ssize(lines) > kFirstRows) lines.erase(lines.begin(), lines.end() - kFirstRows);
  }

  RowFilter filter_;
  RowFormat format_;
  std::map<std::string, Source> sources_;
  bool is_first_ = true;
};

}  // namespace

Status Follow(const FollowArguments& arguments) {
  std::optional<LogTime> duration;
  if (!ReadDuration("--for", arguments.duration, duration)) return kNotRun;
  const Logs logs = FindGivenLogs(arguments.rows.paths, NoLogs::kAreAwaited);
  auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || (logs.series.empty() && logs.status != kClean)) return kNotRun;
  const std::vector<std::string> usual = {"Time",   "TestType", "Iter", "Affinity",
                                          "Result", "Status",   "Notes"};
  Follower follower(std::move(*filter), arguments.columns.empty() ? usual : arguments.columns);
  const auto start = steady_clock::now();
  while (true) {
    follower.Poll(arguments.rows.paths);
    if (!std::cout) return kNotRun;
    if (duration && steady_clock::now() - start >= std::chrono::milliseconds(*duration)) break;
    std::this_thread::sleep_for(kPause);
  }
  return logs.status;
}

}  // namespace tools::vexorlog
