#include "survey.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <map>

#include "common/text_output.h"
#include "error_words.h"

namespace tools::vexorlog {
namespace {

using vexor::kNoLogTime;
using vexor::LogRow;
using vexor::LogTime;

// Bounds the memory for a program whose failures all have different words.
constexpr std::size_t kMostKinds = 10'000;

// A file that was written to this recently may still be open.
constexpr auto kLately = std::chrono::seconds(10);

struct KeyColumns {
  std::size_t test = vexor::kNoColumn;
  std::size_t iteration = vexor::kNoColumn;
};

// The counts of one file, and then of one series.
struct Part {
  std::vector<TestSurvey> tests;
  std::map<std::string, std::size_t, std::less<>> numbers;  // of the tests, by name
  std::map<std::string, FailureKind> kinds;
  std::uint64_t rows = 0;
  std::uint64_t damaged = 0;
  std::uint64_t starts = 0;  // notes of the library's version
  bool has_cut_end = false;
  std::vector<vexor::LogFault> faults;
};

TestSurvey& TestOf(Part& part, std::string_view name) {
  const auto found = part.numbers.find(name);
  if (found != part.numbers.end()) return part.tests[found->second];
  part.numbers.emplace(name, part.tests.size());
  part.tests.push_back({.test = std::string(name)});
  return part.tests.back();
}

void NoteSilence(Silence& longest, LogTime begin, LogTime end) {
  if (begin == kNoLogTime || end == kNoLogTime) return;
  if (end - begin > longest.Length()) longest = {.begin = begin, .end = end};
}

void NoteTime(LogTime& first, LogTime& last, LogTime time) {
  if (time == kNoLogTime) return;
  if (first == kNoLogTime || time < first) first = time;
  last = std::max(last, time);
}

class FileReading {
 public:
  FileReading(const std::string& path, const RowFilter& filter, Part& part)
      : path_(path), filter_(filter), part_(part) {}

  void Read(Progress& progress) {
    ReadRows(path_, part_.faults, progress,
             [this](const LogRow& row, LogTime time) { Add(row, time); });
  }

 private:
  void Add(const LogRow& row, LogTime time) {
    if (row.IsDamaged() || row.Kind() == vexor::LogRowKind::kNulBlock) ++part_.damaged;
    part_.has_cut_end =
        row.Kind() == vexor::LogRowKind::kNulBlock || row.Has(vexor::LogDamage::kCutOff);
    if (!filter_.Passes(row, time)) return;
    ++part_.rows;
    if (row.Kind() != vexor::LogRowKind::kRow) return;
    if (row.HeaderNumber() != header_) FindColumns(row);
    const bool is_cut_there =
        row.Has(vexor::LogDamage::kCutOff) && row.Width() <= columns_.test + 1;
    if (is_cut_there && columns_.test != vexor::kNoColumn) return;
    const std::string_view name = row.At(columns_.test);
    if (test_ >= part_.tests.size() || part_.tests[test_].test != name) {
      test_ = static_cast<std::size_t>(&TestOf(part_, name) - part_.tests.data());
    }
    AddTo(part_.tests[test_], row, row.Time());
  }

  void FindColumns(const LogRow& row) {
    header_ = row.HeaderNumber();
    columns_ = {.test = row.Column("TestType"), .iteration = row.Column("Iter")};
  }

  void AddTo(TestSurvey& test, const LogRow& row, LogTime time) {
    ++test.rows;
    const std::string_view number = row.At(columns_.iteration);
    const vexor::LogResult result = row.Result();
    // The version note at the start of every log has the engine as its test. Counted, it would look
    // as if the engine itself had logged something.
    if (number.empty() && result == vexor::LogResult::kNone && row.IsVersionNote()) {
      ++part_.starts;
      return;
    }
    NoteSilence(test.longest, test.last, time);
    NoteTime(test.first, test.last, time);
    std::uint64_t iteration = 0;
    std::from_chars(number.data(), number.data() + number.size(), iteration);
    test.iterations = std::max(test.iterations, iteration);
    if (result == vexor::LogResult::kPass) ++test.passes;
    if (result != vexor::LogResult::kFail) return;
    ++test.failures;
    AddFailure(row);
  }

  void AddFailure(const LogRow& row) {
    const std::string_view note = row.At("Notes");
    const std::string_view what = note.empty() ? row.At("Status") : note;
    const std::string kind = std::string(row.At(columns_.test)) + '\n' + KindOfFailure(what);
    const auto found = part_.kinds.find(kind);
    if (found != part_.kinds.end()) {
      ++found->second.count;
    } else if (part_.kinds.size() < kMostKinds) {
      part_.kinds.emplace(kind, FailureKind{.kind = kind,
                                            .test = std::string(row.At(columns_.test)),
                                            .what = OneLine(what),
                                            .path = path_,
                                            .line = row.Line(),
                                            .first = row.Time(),
                                            .affinity = std::string(row.At("Affinity")),
                                            .iteration = std::string(row.At(columns_.iteration)),
                                            .count = 1});
    }
  }

  const std::string& path_;
  const RowFilter& filter_;
  Part& part_;
  std::uint32_t header_ = 0;
  KeyColumns columns_;
  std::size_t test_ = 0;
};

// Adds the counts of a later part of a test to those of an earlier part.
void JoinTest(TestSurvey& test, const TestSurvey& later, bool is_sequel) {
  if (is_sequel) NoteSilence(test.longest, test.last, later.first);
  if (later.longest.Length() > test.longest.Length()) test.longest = later.longest;
  if (later.last > test.last || (later.last == test.last && later.end > test.end)) {
    test.end = later.end;
  }
  NoteTime(test.first, test.last, later.first);
  NoteTime(test.first, test.last, later.last);
  test.rows += later.rows;
  test.iterations = std::max(test.iterations, later.iterations);
  test.passes += later.passes;
  test.failures += later.failures;
  test.restarts += later.restarts;
}

// Adds the counts of the next file of a series, or of another series.
void Join(Part& part, Part&& next, bool is_sequel) {
  for (const TestSurvey& test : next.tests) JoinTest(TestOf(part, test.test), test, is_sequel);
  for (auto& [kind, failure] : next.kinds) {
    const auto [found, is_new] = part.kinds.try_emplace(kind, failure);
    if (is_new) continue;
    FailureKind& known = found->second;
    const std::uint64_t count = known.count + failure.count;
    if (failure.first < known.first) known = std::move(failure);
    known.count = count;
  }
  part.rows += next.rows;
  part.damaged += next.damaged;
  part.starts += next.starts;
  part.has_cut_end = next.has_cut_end;
  part.faults.insert(part.faults.end(), next.faults.begin(), next.faults.end());
}

LogEnd EndOf(const Part& part, const std::string& path) {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(path, error);
  const auto now = std::filesystem::file_time_type::clock::now();
  if (!error && now - written < kLately) return LogEnd::kJustWritten;
  return part.has_cut_end ? LogEnd::kCutOff : LogEnd::kClosed;
}

// Counts the restarts of a log for the test that has most of its rows.
void FinishSeries(Part& part, const std::string& last_path) {
  const LogEnd end = EndOf(part, last_path);
  for (TestSurvey& test : part.tests) test.end = end;
  const auto owner = std::ranges::max_element(part.tests, {}, &TestSurvey::rows);
  if (owner != part.tests.end() && part.starts > 1) owner->restarts = part.starts - 1;
}

struct FilePlace {
  std::size_t series = 0;
  std::size_t file = 0;
};

}  // namespace

Survey MakeSurvey(const Logs& logs, const RowFilter& filter, Progress& progress) {
  std::vector<FilePlace> places;
  std::vector<std::vector<Part>> parts(logs.series.size());
  for (std::size_t i = 0; i < logs.series.size(); ++i) {
    parts[i].resize(logs.series[i].files.size());
    for (std::size_t k = 0; k < parts[i].size(); ++k) places.push_back({.series = i, .file = k});
  }
  RunInParallel(places.size(), [&](std::size_t i) {
    const FilePlace& place = places[i];
    FileReading(logs.series[place.series].files[place.file].path, filter,
                parts[place.series][place.file])
        .Read(progress);
  });

  Part all;
  for (std::size_t i = 0; i < logs.series.size(); ++i) {
    if (parts[i].empty()) continue;
    Part series;
    for (Part& file : parts[i]) Join(series, std::move(file), true);
    FinishSeries(series, logs.series[i].files.back().path);
    Join(all, std::move(series), false);
  }

  Survey survey{.tests = std::move(all.tests),
                .failures = {},
                .files = places.size(),
                .rows = all.rows,
                .damaged = all.damaged,
                .faults = std::move(all.faults)};
  std::erase_if(survey.tests, [](const TestSurvey& test) { return test.first == kNoLogTime; });
  for (auto& [kind, failure] : all.kinds) survey.failures.push_back(std::move(failure));
  std::ranges::stable_sort(survey.tests, {}, &TestSurvey::first);
  std::ranges::stable_sort(survey.failures, {}, &FailureKind::first);
  for (const TestSurvey& test : survey.tests) {
    NoteTime(survey.first, survey.last, test.first);
    NoteTime(survey.first, survey.last, test.last);
  }
  return survey;
}

}  // namespace tools::vexorlog
