#include "report_data.h"

#include <algorithm>

#include "columns.h"
#include "common/text_output.h"
#include "error_words.h"

namespace tools::vexorlog {
namespace {

using vexor::kNoLogTime;
using vexor::LogRow;
using vexor::LogTime;

// The limits of a report, so that it opens quickly whatever the logs contain.
constexpr std::size_t kMostLanes = 200;
constexpr std::size_t kMostSeries = 4000;
constexpr std::size_t kMostColumns = 1000;
constexpr std::size_t kMostPeaks = 300'000;
constexpr std::size_t kMostKinds = 300;
constexpr std::size_t kMostOfKind = 20;
constexpr std::size_t kMostFailureBytes = 1'200'000;
constexpr std::size_t kMostCells = 48;
constexpr std::size_t kMostText = 300;

constexpr std::uint32_t kNoPlace = static_cast<std::uint32_t>(-1);
constexpr std::size_t kNoSeries = static_cast<std::size_t>(-1);

// Returns the bucket of an interval and creates it if it is missing. Looks at the last one first,
// as times are mostly ascending.
template <class Bucket>
Bucket& BucketOf(std::vector<Bucket>& buckets, std::uint32_t stretch) {
  if (!buckets.empty() && buckets.back().stretch == stretch) return buckets.back();
  auto place = buckets.end();
  if (!buckets.empty() && buckets.back().stretch > stretch) {
    place = std::ranges::lower_bound(buckets, stretch, {}, &Bucket::stretch);
    if (place->stretch == stretch) return *place;
  }
  Bucket bucket;
  bucket.stretch = stretch;
  return *buckets.insert(place, bucket);
}

void Join(PeakBucket& bucket, const PeakBucket& other) {
  if (bucket.least_time == kNoLogTime || other.least < bucket.least) {
    bucket.least = other.least;
    bucket.least_time = other.least_time;
  }
  if (bucket.most_time == kNoLogTime || other.most > bucket.most) {
    bucket.most = other.most;
    bucket.most_time = other.most_time;
  }
}

void Join(LaneBucket& bucket, const LaneBucket& other) {
  bucket.begin = bucket.begin == kNoLogTime ? other.begin : std::min(bucket.begin, other.begin);
  bucket.end = std::max(bucket.end, other.end);
  bucket.passes += other.passes;
  bucket.failures += other.failures;
  bucket.others += other.others;
}

// Halves the number of buckets: merges those of each pair of intervals.
template <class Bucket>
void CoarsenBuckets(std::vector<Bucket>& buckets) {
  std::vector<Bucket> coarse;
  for (const Bucket& bucket : buckets) Join(BucketOf(coarse, bucket.stretch / 2), bucket);
  buckets = std::move(coarse);
}

// Names of tests and affinities are compared only up to this length.
std::string_view ShortName(std::string_view name) { return name.substr(0, 80); }

}  // namespace

std::uint32_t ReportData::ColumnOf(std::string_view name) {
  const auto found = column_numbers_.find(name);
  if (found != column_numbers_.end()) return found->second;
  if (columns_.size() >= kMostColumns) return kNoPlace;
  const auto number = static_cast<std::uint32_t>(columns_.size());
  column_numbers_.emplace(name, number);
  columns_.push_back(OneLine(name));
  return number;
}

// Header numbers are only unique within a file.
const ReportData::Header& ReportData::HeaderOf(const vexor::LogMerge& merge, const LogRow& row) {
  if (merge.SeriesIndex() >= headers_.size()) headers_.resize(merge.SeriesIndex() + 1);
  Header& header = headers_[merge.SeriesIndex()];
  if (header.file == &merge.File() && header.number == row.HeaderNumber()) return header;
  header = {.file = &merge.File(),
            .number = row.HeaderNumber(),
            .columns = {},
            .measurements = {},
            .test = row.Column("TestType"),
            .affinity = row.Column("Affinity")};
  for (std::size_t i = 0; i < row.Columns().size(); ++i) {
    const std::string_view name = row.Columns()[i];
    header.columns.push_back(ColumnOf(name));
    if (header.columns.back() != kNoPlace && IsMeasurement(name)) header.measurements.push_back(i);
  }
  return header;
}

ReportData::Lane* ReportData::LaneOf(std::string_view test) {
  const auto found = lane_numbers_.find(ShortName(test));
  if (found != lane_numbers_.end()) return &lanes_[found->second];
  if (lanes_.size() >= kMostLanes) return nullptr;
  lane_numbers_.emplace(ShortName(test), lanes_.size());
  return &lanes_.emplace_back(
      Lane{.test = OneLine(ShortName(test)), .buckets = {}, .affinities = {}});
}

std::uint32_t ReportData::StretchOf(LogTime time) const {
  const LogTime span = std::max<LogTime>(1, last_ - first_ + 1);
  const LogTime place = (std::clamp(time, first_, last_) - first_) * stretches_ / span;
  return static_cast<std::uint32_t>(place);
}

void ReportData::Add(const vexor::LogMerge& merge, bool is_selected) {
  const LogRow row = merge.Row();
  if (row.Kind() != vexor::LogRowKind::kRow && row.Kind() != vexor::LogRowKind::kText) return;
  const Header& header = HeaderOf(merge, row);
  Keep(merge, row, header);
  if (!is_selected || row.Kind() != vexor::LogRowKind::kRow) return;
  if (row.Result() == vexor::LogResult::kFail) AddFailure(row, header);
  if (row.Time() != kNoLogTime && !row.IsVersionNote()) AddToLane(row, header);
}

void ReportData::AddToLane(const LogRow& row, const Header& header) {
  Lane* const lane = LaneOf(row.At(header.test));
  if (lane == nullptr) return;
  const vexor::LogResult result = row.Result();
  LaneBucket one = {.begin = row.Time(), .end = row.Time()};
  one.passes = result == vexor::LogResult::kPass ? 1 : 0;
  one.failures = result == vexor::LogResult::kFail ? 1 : 0;
  one.others = result == vexor::LogResult::kNone ? 1 : 0;
  Join(BucketOf(lane->buckets, StretchOf(row.Time())), one);
  AddNumbers(row, header, *lane);
}

void ReportData::AddNumbers(const LogRow& row, const Header& header, Lane& lane) {
  Measurements* series_of = nullptr;
  const LogTime time = row.Time();
  for (const std::size_t i : header.measurements) {
    if (row.At(i).empty()) continue;
    const auto number = row.Number(i);
    if (!number) continue;
    const std::uint32_t column = header.columns[i];
    if (series_of == nullptr) {
      const std::string_view affinity = ShortName(row.At(header.affinity));
      auto found = lane.affinities.find(affinity);
      if (found == lane.affinities.end()) {
        if (series_.size() >= kMostSeries) return;
        found = lane.affinities.emplace(affinity, Measurements()).first;
      }
      series_of = &found->second;
    }
    if (column >= series_of->size()) series_of->resize(column + 1, kNoSeries);
    std::size_t& place = (*series_of)[column];
    if (place == kNoSeries) {
      if (series_.size() >= kMostSeries) continue;
      place = series_.size();
      series_.push_back({.test = lane.test,
                         .affinity = OneLine(ShortName(row.At(header.affinity))),
                         .column = column,
                         .buckets = {}});
    }
    Series& series = series_[place];
    ++series.count;
    peaks_ -= series.buckets.size();
    Join(BucketOf(series.buckets, StretchOf(time)),
         {.least_time = time, .most_time = time, .least = *number, .most = *number});
    peaks_ += series.buckets.size();
  }
  if (peaks_ > kMostPeaks && stretches_ > 1) Coarsen();
}

void ReportData::Coarsen() {
  stretches_ /= 2;
  peaks_ = 0;
  for (Lane& lane : lanes_) CoarsenBuckets(lane.buckets);
  for (Series& series : series_) {
    CoarsenBuckets(series.buckets);
    peaks_ += series.buckets.size();
  }
}

// Reuses the memory of earlier rows.
void ReportData::Keep(const vexor::LogMerge& merge, const LogRow& row, const Header& header) {
  KeptRow& kept = kept_[rows_++ % kept_.size()];
  kept.file = merge.File().path;
  kept.line = row.Line();
  kept.width = 0;
  const auto add = [&](std::uint32_t column, std::string_view text) {
    if (kept.width == kept.cells.size()) kept.cells.emplace_back();
    auto& cell = kept.cells[kept.width++];
    cell.first = column;
    cell.second.assign(text.substr(0, kMostText));
  };
  if (row.Kind() == vexor::LogRowKind::kText) {
    add(ColumnOf("Notes"), row.Text());
  } else {
    for (std::size_t i = 0; i < header.columns.size() && kept.width < kMostCells; ++i) {
      const std::string_view cell = row.At(i);
      if (!cell.empty() && header.columns[i] != kNoPlace) add(header.columns[i], cell);
    }
  }
  if (pending_.empty()) return;
  const Json json = MakeRow(kept);
  for (Pending& pending : pending_) {
    kinds_[pending.kind].failures[pending.failure]["rows"].push_back(json);
    --pending.missing;
  }
  std::erase_if(pending_, [](const Pending& pending) { return pending.missing == 0; });
}

Json ReportData::MakeRow(const KeptRow& row) {
  Json json = {{"file", row.file}, {"line", row.line}, {"cells", Json::array()}};
  for (std::size_t i = 0; i < row.width; ++i) {
    const auto& [column, text] = row.cells[i];
    const std::string cell = OneLine(text, kMostText);
    failure_bytes_ += cell.size() + 8;
    json["cells"].push_back(column);
    json["cells"].push_back(cell);
  }
  failure_bytes_ += row.file.size() + 32;
  return json;
}

void ReportData::AddFailure(const LogRow& row, const Header& header) {
  const std::string_view note = row.At("Notes");
  const std::string_view what = note.empty() ? row.At("Status") : note;
  const std::string_view test = row.At(header.test);
  const std::string key = std::string(test) + '\n' + KindOfFailure(what);
  auto found = kind_numbers_.find(key);
  if (found == kind_numbers_.end()) {
    if (kinds_.size() >= kMostKinds) return;
    found = kind_numbers_.emplace(key, kinds_.size()).first;
    kinds_.push_back({.test = OneLine(ShortName(test)), .what = OneLine(what, kMostText)});
  }
  Kind& kind = kinds_[found->second];
  ++kind.count;
  if (kind.failures.size() >= kMostOfKind || failure_bytes_ >= kMostFailureBytes) return;

  Json failure = {{"time", MakeJson(row.Time())},
                  {"iteration", OneLine(row.At("Iter"), kMostText)},
                  {"affinity", OneLine(row.At(header.affinity), kMostText)},
                  {"what", OneLine(what, kMostText)},
                  {"at", std::min(rows_, kept_.size()) - 1},
                  {"rows", Json::array()}};
  for (std::size_t i = rows_ - std::min(rows_, kept_.size()); i < rows_; ++i) {
    failure["rows"].push_back(MakeRow(kept_[i % kept_.size()]));
  }
  pending_.push_back({.kind = found->second, .failure = kind.failures.size()});
  kind.failures.push_back(std::move(failure));
}

// Times are relative to the first one. A bucket is [begin, end, passes, failures, others].
Json ReportData::MakeLanes() const {
  Json lanes = Json::array();
  for (const Lane& lane : lanes_) {
    Json buckets = Json::array();
    for (const LaneBucket& bucket : lane.buckets) {
      buckets.push_back({bucket.begin - first_, bucket.end - first_, bucket.passes, bucket.failures,
                         bucket.others});
    }
    lanes.push_back({{"test", lane.test}, {"buckets", std::move(buckets)}});
  }
  return lanes;
}

// Points are [time, number, time, number, ...].
Json ReportData::MakeSeries() const {
  Json all = Json::array();
  for (const Series& series : series_) {
    Json points = Json::array();
    const auto add = [&](LogTime time, double number) {
      points.push_back(time - first_);
      points.push_back(MakeJson(number));
    };
    for (const PeakBucket& bucket : series.buckets) {
      const bool least_first = bucket.least_time <= bucket.most_time;
      if (least_first) add(bucket.least_time, bucket.least);
      if (bucket.least_time != bucket.most_time) add(bucket.most_time, bucket.most);
      if (!least_first) add(bucket.least_time, bucket.least);
    }
    all.push_back({{"test", series.test},
                   {"affinity", series.affinity},
                   {"column", columns_[series.column]},
                   {"count", series.count},
                   {"points", std::move(points)}});
  }
  return all;
}

Json ReportData::MakeFailures() {
  Json kinds = Json::array();
  for (Kind& kind : kinds_) {
    kinds.push_back({{"test", kind.test},
                     {"what", kind.what},
                     {"count", kind.count},
                     {"explained", ExplainErrors(GetPMTestID(kind.test, false), kind.what)},
                     {"failures", std::move(kind.failures)}});
  }
  return kinds;
}

Json ReportData::Finish(std::size_t most) {
  Json json;
  while (true) {
    json = {{"lanes", MakeLanes()}, {"series", MakeSeries()}};
    if (stretches_ == 1 || PrintJson(json).size() <= most) break;
    Coarsen();
  }
  json["columns"] = columns_;
  json["failures"] = MakeFailures();
  return json;
}

}  // namespace tools::vexorlog
