#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <map>

#include "columns.h"
#include "commands.h"
#include "common/program.h"
#include "common/table.h"
#include "common/text_output.h"
#include "json.h"
#include "vexor/util/random.h"

namespace tools::vexorlog {
namespace {

// Up to this many numbers, percentiles are exact; above, they are those of a random sample.
constexpr std::size_t kSample = 65536;

class Numbers {
 public:
  void Add(double number) {
    least_ = count_ == 0 ? number : std::min(least_, number);
    most_ = count_ == 0 ? number : std::max(most_, number);
    ++count_;
    mean_ += (number - mean_) / static_cast<double>(count_);
    if (sample_.size() < kSample) {
      sample_.push_back(number);
    } else if (const std::uint64_t place = Draw(count_); place < kSample) {
      sample_[place] = number;  // Vitter's algorithm R
    }
  }

  [[nodiscard]] std::uint64_t Total() const { return count_; }
  [[nodiscard]] double Least() const { return least_; }
  [[nodiscard]] double Most() const { return most_; }
  [[nodiscard]] double Mean() const { return mean_; }

  // Returns the percentile by the nearest-rank method.
  [[nodiscard]] double Percentile(std::size_t percent) const {
    std::vector<double> sorted = sample_;
    const std::size_t rank = (percent * sorted.size() + 99) / 100;
    const auto place =
        sorted.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(rank, 1) - 1);
    std::ranges::nth_element(sorted, place);
    return *place;
  }

 private:
  std::uint64_t Draw(std::uint64_t below) {
    const std::uint64_t bits = std::uint64_t{random_.NextUint()} << 32U | random_.NextUint();
    return bits % below;
  }

  std::uint64_t count_ = 0;
  double least_ = 0;
  double most_ = 0;
  double mean_ = 0;
  std::vector<double> sample_;
  UserRand random_{1};
};

struct Group {
  std::string name;
  std::vector<Numbers> columns;
};

std::string FormatNumber(double number) {
  std::array<char, 32> text = {};
  const auto result =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, 6);
  return {text.data(), result.ptr};
}

class Statistics {
 public:
  Statistics(std::vector<std::string> columns, const std::string& by)
      : columns_(std::move(columns)), by_({by}), finder_(columns_) {}

  void Add(const vexor::LogRow& row) {
    if (row.Kind() != vexor::LogRowKind::kRow) return;
    by_.Select(row);
    finder_.Select(row);
    Group& group = GroupOf(by_.Cell(row, 0));
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (finder_.Cell(row, i).empty()) continue;
      if (const auto number = finder_.Number(row, i)) group.columns[i].Add(*number);
    }
  }

  [[nodiscard]] bool IsEmpty() const {
    bool is_empty = true;
    ForEach([&](const auto&...) { is_empty = false; });
    return is_empty;
  }

  template <class Visit>
  void ForEach(Visit visit) const {
    for (const Group& group : groups_) {
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (group.columns[i].Total() > 0) visit(group.name, columns_[i], group.columns[i]);
      }
    }
  }

 private:
  Group& GroupOf(std::string_view name) {
    const auto found = numbers_.find(name);
    if (found != numbers_.end()) return groups_[found->second];
    numbers_.emplace(name, groups_.size());
    groups_.push_back(
        {.name = std::string(name), .columns = std::vector<Numbers>(columns_.size())});
    return groups_.back();
  }

  std::vector<std::string> columns_;
  ColumnFinder by_;
  ColumnFinder finder_;
  std::vector<Group> groups_;
  std::map<std::string, std::size_t, std::less<>> numbers_;  // of the groups, by name
};

void PrintTable(const Statistics& statistics, const std::string& by) {
  TextTable table({{by},
                   {"column"},
                   {"count", Align::kRight},
                   {"min", Align::kRight},
                   {"mean", Align::kRight},
                   {"median", Align::kRight},
                   {"p90", Align::kRight},
                   {"p99", Align::kRight},
                   {"max", Align::kRight}});
  statistics.ForEach([&](const std::string& group, const std::string& column, const Numbers& all) {
    table.AddRow({OneLine(group), column, std::to_string(all.Total()), FormatNumber(all.Least()),
                  FormatNumber(all.Mean()), FormatNumber(all.Percentile(50)),
                  FormatNumber(all.Percentile(90)), FormatNumber(all.Percentile(99)),
                  FormatNumber(all.Most())});
  });
  std::cout << table.Format();
}

void PrintJsonTable(const Statistics& statistics, const std::string& by) {
  Json json = {
      {"format", "vexorlog stats"}, {"version", 1}, {"by", by}, {"statistics", Json::array()}};
  statistics.ForEach([&](const std::string& group, const std::string& column, const Numbers& all) {
    json["statistics"].push_back({{"group", group},
                                  {"column", column},
                                  {"count", all.Total()},
                                  {"min", all.Least()},
                                  {"mean", all.Mean()},
                                  {"median", all.Percentile(50)},
                                  {"p90", all.Percentile(90)},
                                  {"p99", all.Percentile(99)},
                                  {"max", all.Most()}});
  });
  std::cout << PrintJson(json, 1) << '\n';
}

}  // namespace

Status PrintStatistics(const StatsArguments& arguments) {
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  const auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.series.empty()) return kNotRun;
  Progress progress(2 * CountBytes(logs));
  const std::vector<ColumnUse> used = CollectColumns(logs, *filter, progress);
  std::vector<std::string> columns;
  for (const ColumnUse& column : used) {
    if (column.cells > 0 && IsMeasurement(column.name)) columns.push_back(column.name);
  }
  if (!AreColumns("--columns", arguments.columns, used)) return kNotRun;
  if (!used.empty() && !AreColumns("--by", {arguments.by}, used)) return kNotRun;

  Statistics statistics(arguments.columns.empty() ? columns : arguments.columns, arguments.by);
  std::vector<vexor::LogFault> faults;
  for (const vexor::FoundSeries& series : logs.series) {
    for (const vexor::FoundLog& file : series.files) {
      ReadRows(file.path, faults, progress, [&](const vexor::LogRow& row, vexor::LogTime time) {
        if (filter->Passes(row, time)) statistics.Add(row);
      });
    }
  }
  progress.Finish();
  if (arguments.json) {
    PrintJsonTable(statistics, arguments.by);
  } else if (!statistics.IsEmpty()) {
    PrintTable(statistics, arguments.by);
  } else {
    std::cerr << kProgram.name << ": these rows hold no numbers\n";
  }
  return ReportFaults(faults, logs.status != kClean  ? logs.status
                              : statistics.IsEmpty() ? kWarnings
                                                     : kClean);
}

}  // namespace tools::vexorlog
