#include "columns.h"

#include <algorithm>
#include <array>
#include <iostream>

#include "common/program.h"
#include "common/suggestion.h"
#include "common/table.h"
#include "common/text_output.h"

namespace tools::vexorlog {
namespace {

using vexor::LogRow;

std::string_view Trim(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

ColumnUse& UseOf(std::vector<ColumnUse>& columns, std::string_view name) {
  const auto found = std::ranges::find(columns, name, &ColumnUse::name);
  if (found != columns.end()) return *found;
  columns.push_back({.name = std::string(name)});
  return columns.back();
}

class FileColumns {
 public:
  explicit FileColumns(std::vector<ColumnUse>& columns) : columns_(columns) {}

  // Registers the row's header.
  void See(const LogRow& row) {
    if (row.HeaderNumber() != header_) Map(row);
  }

  // Counts the row's cells.
  void Add(const LogRow& row) {
    for (std::size_t i = 0; i < uses_.size(); ++i) {
      const std::string_view cell = Trim(row.At(i));
      if (cell.empty()) continue;
      ColumnUse& use = columns_[uses_[i]];
      ++use.cells;
      if (cell.size() > use.widest) use.widest = std::max(use.widest, CountCharacters(cell));
    }
  }

 private:
  void Map(const LogRow& row) {
    header_ = row.HeaderNumber();
    uses_.clear();
    for (const std::string_view name : row.Columns()) {
      uses_.push_back(static_cast<std::size_t>(&UseOf(columns_, name) - columns_.data()));
    }
  }

  std::vector<ColumnUse>& columns_;
  std::uint32_t header_ = 0;
  std::vector<std::size_t> uses_;  // of each column of the header
};

}  // namespace

bool IsMeasurement(std::string_view column) {
  constexpr std::array<std::string_view, 6> kOthers = {"Time",  "TestType", "Iter",
                                                       "Scope", "Affinity", "Level"};
  return std::ranges::find(kOthers, column) == kOthers.end();
}

std::vector<ColumnUse> CollectColumns(const Logs& logs, const RowFilter& filter,
                                      Progress& progress) {
  std::vector<const vexor::FoundLog*> files;
  for (const vexor::FoundSeries& series : logs.series) {
    for (const vexor::FoundLog& file : series.files) files.push_back(&file);
  }
  std::vector<std::vector<ColumnUse>> parts(files.size());
  std::vector<std::vector<vexor::LogFault>> ignored(files.size());  // reported when rows are read
  RunInParallel(files.size(), [&](std::size_t i) {
    FileColumns part(parts[i]);
    ReadRows(files[i]->path, ignored[i], progress, [&](const LogRow& row, vexor::LogTime time) {
      part.See(row);
      if (row.Kind() == vexor::LogRowKind::kRow && filter.Passes(row, time)) part.Add(row);
    });
  });

  std::vector<ColumnUse> columns;
  for (const auto& part : parts) {
    for (const ColumnUse& use : part) {
      ColumnUse& sum = UseOf(columns, use.name);
      sum.cells += use.cells;
      sum.widest = std::max(sum.widest, use.widest);
    }
  }
  return columns;
}

bool AreColumns(std::string_view option, const std::vector<std::string>& names,
                const std::vector<ColumnUse>& columns) {
  for (const std::string& name : names) {
    if (std::ranges::find(columns, name, &ColumnUse::name) != columns.end()) continue;
    std::vector<std::string> all;
    std::string used;
    for (const ColumnUse& column : columns) {
      all.push_back(column.name);
      if (column.cells > 0) used.append(used.empty() ? "" : ",").append(column.name);
    }
    const std::string suggestion = SuggestName(name, all);
    std::cerr << kProgram.name << ": " << option << ' ' << Quote(name) << ": no such column"
              << (suggestion.empty() ? "; columns with values: " + (used.empty() ? "none" : used)
                                     : suggestion)
              << '\n';
    return false;
  }
  return true;
}

void ColumnFinder::Select(const LogRow& row) {
  if (!places_.empty() && std::ranges::equal(row.Columns(), header_)) return;
  header_.assign(row.Columns().begin(), row.Columns().end());
  places_.clear();
  for (const std::string& wanted : names_) places_.push_back(row.Column(wanted));
}

std::string_view ColumnFinder::Cell(const LogRow& row, std::size_t name) const {
  if (row.Kind() != vexor::LogRowKind::kText) return Trim(row.At(places_[name]));
  const auto notes = std::ranges::find(names_, "Notes");
  const auto home =
      notes == names_.end() ? names_.size() - 1 : static_cast<std::size_t>(notes - names_.begin());
  return name == home ? row.Text() : std::string_view();
}

Json ColumnFinder::MakeCell(const LogRow& row, std::size_t name) const {
  const std::string_view cell = Cell(row, name);
  if (cell.empty()) return {};
  const bool may_be_number = IsMeasurement(names_[name]) || names_[name] == "Iter";
  const auto number = may_be_number ? Number(row, name) : std::nullopt;
  return number ? MakeJson(*number) : Json(cell);
}

}  // namespace tools::vexorlog
