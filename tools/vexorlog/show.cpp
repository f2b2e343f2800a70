#include <algorithm>
#include <deque>
#include <iostream>

#include "columns.h"
#include "commands.h"
#include "common/program.h"
#include "json.h"
#include "row_format.h"

namespace tools::vexorlog {
namespace {

using vexor::LogRow;

// "Notes" has the longest texts: it is put last, where texts are not cut.
std::vector<std::string> ListUsed(const std::vector<ColumnUse>& columns) {
  std::vector<std::string> names;
  for (const ColumnUse& column : columns) {
    if (column.cells > 0) names.push_back(column.name);
  }
  if (names.empty()) names.emplace_back("Notes");
  const auto notes = std::ranges::find(names, "Notes");
  if (notes != names.end()) std::rotate(notes, notes + 1, names.end());
  return names;
}

std::string FormatJson(const vexor::FoundLog& file, const LogRow& row, ColumnFinder& finder) {
  Json json = {{"File", file.path}, {"Line", row.Line()}};
  finder.Select(row);
  for (std::size_t i = 0; i < finder.Names().size(); ++i) {
    if (!finder.Cell(row, i).empty()) json[finder.Names()[i]] = finder.MakeCell(row, i);
  }
  return PrintJson(json);
}

// Prints the selected lines under their titles, with context before and after each, and "--" where
// lines are left out.
class ContextPrinter {
 public:
  ContextPrinter(std::size_t context, bool marks_gaps, std::string titles)
      : context_(context), marks_gaps_(marks_gaps), titles_(std::move(titles)) {}

  [[nodiscard]] bool Wants(bool is_asked_for) const { return is_asked_for || context_ > 0; }

  void Add(std::string line, bool is_asked_for) {
    if (is_asked_for) {
      if (has_gap_ && printed_ > 0 && marks_gaps_) std::cout << "--\n";
      for (const std::string& kept : kept_) Print(kept);
      kept_.clear();
      has_gap_ = false;
      Print(line);
      after_ = context_;
    } else if (after_ > 0) {
      --after_;
      Print(line);
    } else {
      kept_.push_back(std::move(line));
      if (kept_.size() <= context_) return;
      kept_.pop_front();
      has_gap_ = true;
    }
  }

  [[nodiscard]] std::uint64_t Printed() const { return printed_; }

 private:
  void Print(const std::string& line) {
    if (printed_++ == 0) std::cout << titles_;
    std::cout << line << '\n';
  }

  std::size_t context_;
  bool marks_gaps_;
  std::string titles_;
  std::deque<std::string> kept_;
  std::size_t after_ = 0;
  bool has_gap_ = false;
  std::uint64_t printed_ = 0;
};

bool IsLine(const LogRow& row) {
  return row.Kind() == vexor::LogRowKind::kRow || row.Kind() == vexor::LogRowKind::kText;
}

}  // namespace

Status Show(const ShowArguments& arguments) {
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  const auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.series.empty()) return kNotRun;
  const RowFilter everything({}, logs.start, logs.start);
  Progress none(0);  // no bar: rows are printed at once
  const std::vector<ColumnUse> columns =
      CollectColumns(logs, arguments.context > 0 ? everything : *filter, none);
  if (!AreColumns("--columns", arguments.columns, columns)) return kNotRun;
  const std::vector<std::string> names =
      arguments.columns.empty() ? ListUsed(columns) : arguments.columns;

  ColumnFinder finder(names);
  RowFormat format(names, columns);
  ContextPrinter printer(arguments.context, arguments.context > 0 && !arguments.json,
                         arguments.json ? "" : format.FormatTitles() + "\n");
  vexor::LogMerge merge(logs.series);
  while (merge.Next()) {
    const LogRow row = merge.Row();
    const bool passes = filter->Passes(row, merge.Time());
    if (!IsLine(row) || !printer.Wants(passes)) continue;
    printer.Add(arguments.json ? FormatJson(merge.File(), row, finder) : format.Format(row),
                passes);
  }
  if (printer.Printed() == 0) std::cerr << kProgram.name << ": no row to show\n";
  return ReportFaults(merge.Faults(), logs.status != kClean    ? logs.status
                                      : printer.Printed() == 0 ? kWarnings
                                                               : kClean);
}

}  // namespace tools::vexorlog
