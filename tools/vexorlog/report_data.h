// The data of the report: lanes, plots and failures, thinned so that its size is bounded however
// long the logs are.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"
#include "logs.h"

namespace tools::vexorlog {

// The rows of a test in one interval of time.
struct LaneBucket {
  std::uint32_t stretch = 0;
  vexor::LogTime begin = vexor::kNoLogTime;
  vexor::LogTime end = vexor::kNoLogTime;
  std::uint64_t passes = 0;
  std::uint64_t failures = 0;
  std::uint64_t others = 0;
};

// The minimum and maximum of a column in one interval of time.
struct PeakBucket {
  std::uint32_t stretch = 0;
  vexor::LogTime least_time = vexor::kNoLogTime;
  vexor::LogTime most_time = vexor::kNoLogTime;
  double least = 0;
  double most = 0;
};

// Collects the rows of a merge. They are added in its order.
class ReportData {
 public:
  // The first and last time. Rows outside count in the first or last interval.
  ReportData(vexor::LogTime first, vexor::LogTime last) : first_(first), last_(last) {}

  // Rows that are not selected serve only as context of failures.
  void Add(const vexor::LogMerge& merge, bool is_selected);

  // Returns the members "lanes", "series", "columns" and "failures". Thins lanes and series to at
  // most `most` bytes. To be called once.
  Json Finish(std::size_t most);

 private:
  static constexpr std::size_t kContext = 3;

  // The columns of a header that the report needs.
  struct Header {
    const vexor::FoundLog* file = nullptr;
    std::uint32_t number = 0;
    std::vector<std::uint32_t> columns;  // of all columns: the index in `columns_`
    std::vector<std::size_t> measurements;
    std::size_t test = vexor::kNoColumn;
    std::size_t affinity = vexor::kNoColumn;
  };

  struct Series {
    std::string test;
    std::string affinity;
    std::uint32_t column = 0;
    std::uint64_t count = 0;
    std::vector<PeakBucket> buckets;
  };

  // The series of a test and an affinity, by column.
  using Measurements = std::vector<std::size_t>;

  struct Lane {
    std::string test;
    std::vector<LaneBucket> buckets;
    std::map<std::string, Measurements, std::less<>> affinities;
  };

  struct KeptRow {
    std::string file;
    std::uint64_t line = 0;
    std::size_t width = 0;  // number of cells in use; the others only keep their memory
    std::vector<std::pair<std::uint32_t, std::string>> cells;
  };

  struct Kind {
    std::string test;
    std::string what;
    std::uint64_t count = 0;
    Json failures = Json::array();
  };

  struct Pending {
    std::size_t kind = 0;
    std::size_t failure = 0;
    std::size_t missing = kContext;  // how many rows after it are still to come
  };

  const Header& HeaderOf(const vexor::LogMerge& merge, const vexor::LogRow& row);
  std::uint32_t ColumnOf(std::string_view name);
  Lane* LaneOf(std::string_view test);
  void AddToLane(const vexor::LogRow& row, const Header& header);
  void AddNumbers(const vexor::LogRow& row, const Header& header, Lane& lane);
  void AddFailure(const vexor::LogRow& row, const Header& header);
  void Keep(const vexor::LogMerge& merge, const vexor::LogRow& row, const Header& header);
  [[nodiscard]] Json MakeRow(const KeptRow& row);
  [[nodiscard]] std::uint32_t StretchOf(vexor::LogTime time) const;
  void Coarsen();
  [[nodiscard]] Json MakeLanes() const;
  [[nodiscard]] Json MakeSeries() const;
  [[nodiscard]] Json MakeFailures();

  vexor::LogTime first_;
  vexor::LogTime last_;
  std::uint32_t stretches_ = 1024;
  std::vector<Header> headers_;  // by series of logs
  std::vector<std::string> columns_;
  std::map<std::string, std::uint32_t, std::less<>> column_numbers_;
  std::vector<Lane> lanes_;
  std::map<std::string, std::size_t, std::less<>> lane_numbers_;
  std::vector<Series> series_;
  std::size_t peaks_ = 0;  // buckets in all series
  std::vector<Kind> kinds_;
  std::map<std::string, std::size_t> kind_numbers_;
  std::array<KeptRow, kContext + 1> kept_;  // the last rows, in a ring
  std::size_t rows_ = 0;
  std::vector<Pending> pending_;
  std::size_t failure_bytes_ = 0;
};

}  // namespace tools::vexorlog
