#include "logging/log_header.h"

#include <algorithm>
#include <utility>

#include "util/text.h"

namespace vexor {

namespace {

// Far above any real header. They bound the work on a garbage line that has "Time" in it.
constexpr std::size_t kMostBytes = 65536;
constexpr std::size_t kMostColumns = 4096;
constexpr std::string_view kTime = "Time";
constexpr std::string_view kLevel = "Level";

// Splits the line as the writer splits its header (CsvHeader): commas in quotes do not separate,
// and the quotes are dropped. The names refer to `storage` and keep the blanks around them.
std::vector<std::string_view> SplitNames(std::string_view line, std::string& storage) {
  storage.clear();
  storage.reserve(line.size());
  std::vector<std::size_t> ends;
  bool quoted = false;
  for (const char c : line) {
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ',' && !quoted) {
      ends.push_back(storage.size());
    } else {
      storage += c;
    }
  }
  ends.push_back(storage.size());
  std::vector<std::string_view> names;
  names.reserve(ends.size());
  std::size_t begin = 0;
  for (const std::size_t end : ends) {
    names.push_back(std::string_view(storage).substr(begin, end - begin));
    begin = end;
  }
  return names;
}

bool IsNumber(std::string_view text) {
  return text.find_first_not_of("0123456789+-.") == std::string_view::npos;
}

bool AreDifferent(std::vector<std::string_view> names) {
  std::sort(names.begin(), names.end());
  return std::adjacent_find(names.begin(), names.end()) == names.end();
}

bool IsPlainName(std::string_view name) {
  const std::string_view trimmed = TrimSpace(name);
  return !IsNumber(trimmed) && (trimmed == name || trimmed == kLevel);
}

}  // namespace

bool LogHeader::IsHeader(std::string_view line, bool is_first) {
  if (line.size() > kMostBytes || (!is_first && line.find(kTime) == std::string_view::npos)) {
    return false;
  }
  const auto commas = static_cast<std::size_t>(std::count(line.begin(), line.end(), ','));
  if (commas == 0 || commas >= kMostColumns) return false;
  if (line.find_first_of({"\0\n", 2}) != std::string_view::npos) return false;
  std::string storage;
  const std::vector<std::string_view> names = SplitNames(line, storage);
  std::vector<std::string_view> trimmed(names.size());
  std::transform(names.begin(), names.end(), trimmed.begin(), TrimSpace);
  const auto find = [&](std::string_view name) {
    return std::find(trimmed.begin(), trimmed.end(), name) != trimmed.end();
  };
  if (names.size() < 2 || find("") || !AreDifferent(trimmed)) return false;
  return find(kTime) || (is_first && std::all_of(names.begin(), names.end(), IsPlainName));
}

void LogHeader::Set(std::string_view line) {
  line_ = line;
  columns_.clear();
  if (!line.empty()) columns_ = SplitNames(line, names_);
  std::transform(columns_.begin(), columns_.end(), columns_.begin(), TrimSpace);
  for (const auto& [column, name] : {std::pair(&time, kTime),
                                     {&test, "TestType"},
                                     {&level, kLevel},
                                     {&result, "Result"},
                                     {&status, "Status"},
                                     {&notes, "Notes"}}) {
    *column = Find(name);
  }
}

std::size_t LogHeader::Find(std::string_view name) const {
  const auto found = std::find(columns_.begin(), columns_.end(), name);
  return found == columns_.end() ? kNoColumn : static_cast<std::size_t>(found - columns_.begin());
}

}  // namespace vexor
