#include "logging/log_row.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "logging/log_time.h"
#include "util/text.h"

namespace vexor {

namespace {

struct ResultWord {
  std::string_view word;
  LogResult result;
  bool in_status;  // "ok" under "Status" is the state of anything, not the result of a test
};
constexpr ResultWord kResultWords[] = {
    {"pass", LogResult::kPass, true},    {"passed", LogResult::kPass, true},
    {"fail", LogResult::kFail, true},    {"failed", LogResult::kFail, true},
    {"error", LogResult::kFail, true},   {"ok", LogResult::kPass, false},
    {"not ok", LogResult::kFail, false},
};

LogResult FindResult(std::string_view text, bool is_status) {
  for (const ResultWord& row : kResultWords) {
    if (EqualsIgnoreCase(row.word, text)) {
      return is_status && !row.in_status ? LogResult::kNone : row.result;
    }
  }
  return LogResult::kNone;
}

std::optional<TRACE_LEVEL> FindLevel(std::string_view name) {
  static const auto names = [] {
    std::array<std::string_view, TRACE_DEBUG + 1> all;
    for (std::size_t i = 0; i < all.size(); ++i) {
      all[i] = GetTraceLevelName(static_cast<TRACE_LEVEL>(i), false);
    }
    return all;
  }();
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) return std::nullopt;
  return static_cast<TRACE_LEVEL>(found - names.begin());
}

VEXOR_PM_TEST_ID FindTest(std::string_view name) {
  static const auto names = [] {
    std::array<std::string, PM_TEST_END + 1> all;
    for (std::size_t i = 0; i < all.size(); ++i) {
      all[i] = GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(i));
    }
    all[PM_TEST_ALL].clear();  // its name, "NA", also stands for values that are no test
    all[PM_TEST_MAX].clear();
    return all;
  }();
  const auto found = std::find(names.begin(), names.end(), name);
  if (name.empty() || found == names.end()) return PM_TEST_MAX;
  return static_cast<VEXOR_PM_TEST_ID>(found - names.begin());
}

}  // namespace

std::string_view LogRowParts::At(std::size_t column) {
  const std::size_t columns = header.Columns().size();
  if (kind != LogRowKind::kRow || column >= columns) return {};
  const std::size_t width = cells.Width();
  if (width > columns && column >= header.level) column += width - columns;
  return column + 1 == width ? cells.Last() : cells.At(column);
}

std::optional<TRACE_LEVEL> LogRowParts::Level() {
  if (!std::exchange(has_level, true)) level = FindLevel(TrimBlanks(At(header.level)));
  return level;
}

bool LogRowParts::EndsWithLevel() {
  if (cells.Width() >= header.Columns().size()) return Level().has_value();
  return FindLevel(TrimBlanks(cells.Last())).has_value();
}

LogRowKind LogRow::Kind() const { return parts_->kind; }
bool LogRow::Has(LogDamage damage) const {
  return (parts_->damages >> static_cast<unsigned>(damage) & 1U) != 0;
}
bool LogRow::IsDamaged() const { return parts_->damages != 0; }
std::uint64_t LogRow::Line() const { return parts_->line; }
std::uint64_t LogRow::Offset() const { return parts_->offset; }
std::uint64_t LogRow::Size() const { return parts_->size; }
std::string_view LogRow::Text() const { return parts_->text; }
const std::vector<std::string_view>& LogRow::Columns() const { return parts_->header.Columns(); }
std::uint32_t LogRow::HeaderNumber() const { return parts_->header_number; }
std::size_t LogRow::Column(std::string_view name) const { return parts_->header.Find(name); }
std::string_view LogRow::At(std::size_t column) const { return parts_->At(column); }

std::size_t LogRow::Width() const {
  return parts_->kind == LogRowKind::kNulBlock ? 0 : parts_->cells.Width();
}

std::string_view LogRow::Cell(std::size_t position) const {
  return parts_->kind == LogRowKind::kNulBlock ? std::string_view() : parts_->cells.At(position);
}

LogTime LogRow::Time() const {
  if (!parts_->has_time) {
    parts_->time = ParseLogTime(At(parts_->header.time));
    parts_->has_time = true;
  }
  return parts_->time;
}

VEXOR_PM_TEST_ID LogRow::Test() const {
  const std::string_view name = At(parts_->header.test);
  if (name != parts_->test_name) {
    parts_->test = FindTest(name);
    parts_->test_name = name;
  }
  return parts_->test;
}

std::optional<TRACE_LEVEL> LogRow::Level() const { return parts_->Level(); }

LogResult LogRow::Result() const {
  const std::string_view text = TrimBlanks(At(parts_->header.result));
  if (!text.empty()) return FindResult(text, false);
  return FindResult(TrimBlanks(At(parts_->header.status)), true);
}

std::optional<double> LogRow::Number(std::size_t column) const {
  std::string_view text = TrimBlanks(At(column));
  if (text.ends_with('%')) text = TrimBlanks(text.substr(0, text.size() - 1));
  if (HasHexPrefix(text)) {
    const std::optional<std::uint64_t> number = ParseUnsigned(text);
    if (!number) return std::nullopt;
    return static_cast<double>(*number);
  }
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  // from_chars also reads "inf" and "nan", which begin with a letter.
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  const bool is_finite = first < text.size() && (IsDecDigit(text[first]) || text[first] == '.');
  if (stop != end || error != std::errc() || !is_finite) return std::nullopt;
  return number;
}

bool LogRow::IsVersionNote() const {
  const std::string_view note = At(parts_->header.notes);
  return note.starts_with("Version,") &&
         note.find(" -- Driver Version: ") != std::string_view::npos;
}

}  // namespace vexor
