#include "gaps.h"

#include <iostream>

#include "commands.h"
#include "common/table.h"
#include "common/text_output.h"

namespace tools::vexorlog {
namespace {

using vexor::LogTime;

Neighbour MakeNeighbour(const vexor::LogMerge& merge) {
  const vexor::LogRow row = merge.Row();
  const std::string_view note = row.At("Notes");
  return {.time = row.Time(),
          .test = OneLine(row.At("TestType")),
          .note = OneLine(note.empty() ? row.At("Status") : note, 80),
          .path = merge.File().path,
          .line = row.Line()};
}

constexpr LogTime kLeast = 60'000;
constexpr LogTime kTimesUsual = 10;

// A restart is reported even after a short silence, but not the logs of one start, which follow
// each other immediately.
constexpr LogTime kLeastRestart = 1000;

void PrintNeighbour(const Neighbour& row) {
  std::cout << row.test << (row.note.empty() ? "" : ": ") << row.note << "\n          "
            << NameFile(row.path) << ':' << row.line << '\n';
}

void PrintGaps(const Gaps& found) {
  if (found.gaps.empty()) {
    std::cout << "no gap: no silence longer than " << FormatDuration(found.limit)
              << ", no restart\n";
    return;
  }
  LogTime total = 0;
  for (const Gap& gap : found.gaps) {
    total += gap.Length();
    std::cout << vexor::FormatLogTime(gap.before.time) << " to "
              << vexor::FormatLogTime(gap.after.time) << ": " << FormatDuration(gap.Length())
              << (gap.is_restart ? ", then a restart" : " of silence") << "\n  before  ";
    PrintNeighbour(gap.before);
    std::cout << "  after   ";
    PrintNeighbour(gap.after);
  }
  std::cout << Count(found.gaps.size(), "gap") << ", " << FormatDuration(total)
            << " in total (silences longer than " << FormatDuration(found.limit)
            << ", and restarts)\n";
}

Json MakeNeighbourJson(const Neighbour& row) {
  return {{"time", MakeJson(row.time)},
          {"test", row.test},
          {"note", row.note},
          {"file", row.path},
          {"line", row.line}};
}

}  // namespace

GapFinder::GapFinder(std::optional<LogTime> limit) : given_limit_(limit) {}

void GapFinder::Add(const vexor::LogMerge& merge) {
  const vexor::LogRow row = merge.Row();
  const LogTime time = row.Time();
  if (time == vexor::kNoLogTime) return;
  if (rows_++ == 0) first_ = time;
  const bool is_restart = row.IsVersionNote() && !starts_.insert(merge.SeriesIndex()).second;
  const LogTime least = is_restart ? kLeastRestart : given_limit_.value_or(kLeast);
  if (last_ != vexor::kNoLogTime && time - last_ > least) {
    found_.gaps.push_back(
        {.before = before_, .after = MakeNeighbour(merge), .is_restart = is_restart});
  }
  if (time < last_) return;
  last_ = time;
  before_ = MakeNeighbour(merge);
}

Gaps GapFinder::Finish() {
  found_.limit = given_limit_.value_or(
      rows_ < 2
          ? kLeast
          : std::max(kLeast, kTimesUsual * (last_ - first_) / static_cast<LogTime>(rows_ - 1)));
  std::erase_if(found_.gaps,
                [&](const Gap& gap) { return !gap.is_restart && gap.Length() <= found_.limit; });
  return std::move(found_);
}

Json MakeGapsJson(const Gaps& found) {
  Json json = {{"format", "vexorlog gaps"},
               {"version", 1},
               {"limit_seconds", MakeSeconds(found.limit)},
               {"gaps", Json::array()}};
  for (const Gap& gap : found.gaps) {
    json["gaps"].push_back({{"begin", MakeJson(gap.before.time)},
                            {"end", MakeJson(gap.after.time)},
                            {"seconds", MakeSeconds(gap.Length())},
                            {"restart", gap.is_restart},
                            {"before", MakeNeighbourJson(gap.before)},
                            {"after", MakeNeighbourJson(gap.after)}});
  }
  return json;
}

Status ListGaps(const GapsArguments& arguments) {
  std::optional<LogTime> limit;
  if (!ReadDuration("--longer-than", arguments.longer_than, limit)) return kNotRun;
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  const auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.series.empty()) return kNotRun;
  Progress progress(CountBytes(logs));
  RowProgress done(progress);
  GapFinder finder(limit);
  vexor::LogMerge merge(logs.series);
  while (merge.Next()) {
    done.Add(merge.Row());
    if (filter->Passes(merge.Row(), merge.Time())) finder.Add(merge);
  }
  progress.Finish();
  const Gaps found = finder.Finish();
  if (arguments.json) {
    std::cout << PrintJson(MakeGapsJson(found), 1) << '\n';
  } else {
    PrintGaps(found);
  }
  return ReportFaults(merge.Faults(), logs.status != kClean ? logs.status
                                      : found.gaps.empty()  ? kClean
                                                            : kWarnings);
}

}  // namespace tools::vexorlog
