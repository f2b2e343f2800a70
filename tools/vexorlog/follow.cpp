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

// Of what is there at the start, so many of the last rows are shown.
constexpr std::size_t kFirstRows = 10;

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
    Open();  // a file of the same name, from its beginning
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
      : filter_(std::move(filter)), format_(columns, {}) {
    std::cout << format_.FormatTitles() << std::endl;
  }

  // Prints, in the order of their times, the rows that were added since the last call.
  void Poll(const std::vector<std::string>& paths) {
    for (const vexor::FoundSeries& series : vexor::FindLogs(paths).series) {
      for (const vexor::FoundLog& file : series.files) sources_.try_emplace(file.path, file.path);
    }
    std::vector<TimedLine> lines;
    for (auto& [path, source] : sources_) {
      source.ReadNew([&](const LogRow& row, LogTime time) {
        if (filter_.Passes(row, time)) lines.push_back({.time = time, .line = format_.Format(row)});
      });
    }
    std::ranges::stable_sort(lines, {}, &TimedLine::time);
    const std::size_t skipped =
        is_first_ && lines.size() > kFirstRows ? lines.size() - kFirstRows : 0;
    for (std::size_t i = skipped; i < lines.size(); ++i) std::cout << lines[i].line << '\n';
    std::cout.flush();
    is_first_ = false;
  }

 private:
  RowFilter filter_;
  RowFormat format_;
  std::map<std::string, Source> sources_;
  bool is_first_ = true;
};

}  // namespace

Status Follow(const FollowArguments& arguments) {
  const auto duration = ParseDuration(arguments.duration);
  if (!duration && !arguments.duration.empty()) {
    return Refuse("--for", Quote(arguments.duration) + ": expected a duration such as 90s or 5min");
  }
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.status != kClean) return kNotRun;
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
  return kClean;
}

}  // namespace tools::vexorlog
