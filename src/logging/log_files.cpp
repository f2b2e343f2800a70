#include "vexor/logging/log_files.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <string_view>

#include "logging/log_names.h"
#include "logging/log_scan.h"
#include "platform/platform.h"
#include "util/text.h"
#include "vexor/util/files.h"

namespace vexor {

namespace {

constexpr std::string_view kExtension = ".csv";
constexpr std::uint64_t kLookedAt = 65536;  // bytes searched for the first time stamp

// Whether a name ends with a time as `GetTimeStamp` writes it, such as 20240307_090502017. The "_"
// in it does not begin the number of a series.
bool EndsWithTimeStamp(std::string_view stem) {
  constexpr std::string_view kForm = "00000000_000000000";
  if (stem.size() < kForm.size()) return false;
  stem.remove_prefix(stem.size() - kForm.size());
  return std::equal(stem.begin(), stem.end(), kForm.begin(),
                    [](char c, char form) { return form == '0' ? IsDecDigit(c) : c == form; });
}

// The series that a path belongs to, and its number in the series.
struct PlaceInSeries {
  std::string name;
  std::optional<std::uint32_t> number;
};

PlaceInSeries FindPlace(const std::string& path) {
  if (!EndsWithIgnoreCase(path, kExtension)) return {.name = path, .number = std::nullopt};
  const std::string_view stem = std::string_view(path).substr(0, path.size() - kExtension.size());
  if (const auto number = FindSeriesIndex(path); number && !EndsWithTimeStamp(stem)) {
    const std::string end = "_" + std::to_string(*number);
    if (stem.ends_with(end)) {
      return {.name = std::string(stem.substr(0, stem.size() - end.size())), .number = number};
    }
  }
  return {.name = std::string(stem), .number = std::nullopt};
}

// Judges by the share of control characters. NUL bytes do not count: a power cut leaves them in
// logs.
bool LooksBinary(std::string_view bytes) {
  std::size_t strange = 0;
  std::size_t count = 0;
  for (const char c : bytes) {
    if (c == '\0') continue;
    ++count;
    const bool is_control = static_cast<unsigned char>(c) < 0x20U;
    if (is_control && c != '\t' && c != '\r' && c != '\n') ++strange;
  }
  constexpr std::size_t kLongestCharacter = 4;
  const bool has_room = bytes.size() > kLongestCharacter;  // for a cut-off character at the end
  const bool is_text = !has_room || IsUtf8(bytes.substr(0, bytes.size() - kLongestCharacter));
  return strange > count / (is_text ? 8 : 32);
}

LogTime FindFirstTime(const std::string& path) {
  LogReader reader({.buffer_size = 4096});
  reader.Open(path);
  while (reader.Offset() < kLookedAt && reader.Next()) {
    if (const LogTime time = reader.Row().Time(); time != kNoLogTime) return time;
  }
  return kNoLogTime;
}

struct Look {
  std::error_code error;
  FileIdentity identity;
  bool is_binary = false;
};

Look LookInto(const std::string& path) {
  Look look;
  FileHandle handle = kNoFile;
  look.error = OpenReadFile(path, handle);
  if (look.error) return look;
  std::array<char, 512> bytes = {};
  std::size_t count = 0;
  look.error = IdentifyFile(handle, look.identity);
  if (!look.error) look.error = ReadFileBytes(handle, bytes.data(), bytes.size(), count);
  CloseReadFile(handle);
  look.is_binary = LooksBinary({bytes.data(), count});
  return look;
}

// Orders the files of a series by number; a file without a number comes first.
bool ComesBefore(const FoundLog& a, const FoundLog& b) {
  return a.number != b.number ? a.number < b.number : a.path < b.path;
}

// Whether a file without a number would be the first of this series: run.csv belongs before
// run_1.csv, but not before run_0.csv.
bool IsFirstOf(const FoundSeries& series) {
  return std::none_of(series.files.begin(), series.files.end(),
                      [](const FoundLog& file) { return file.number == 0U; });
}

// Parts the files of an earlier run from those of the last one. The last run emptied the file with
// the lowest number and wrote it first, so a file that begins before it is older.
void PartLeftovers(FoundSeries& series) {
  const auto begin = std::find_if(series.files.begin(), series.files.end(),
                                  [](const FoundLog& file) { return file.first != kNoLogTime; });
  if (begin == series.files.end()) return;
  const LogTime start = begin->first;
  const auto leftovers = std::stable_partition(
      series.files.begin(), series.files.end(),
      [&](const FoundLog& file) { return file.first == kNoLogTime || file.first >= start; });
  series.leftovers.assign(std::make_move_iterator(leftovers),
                          std::make_move_iterator(series.files.end()));
  series.files.erase(leftovers, series.files.end());
}

void FindMissing(FoundSeries& series) {
  if (series.files.size() < 2) return;
  std::uint32_t next = 0;
  for (const FoundLog& file : series.files) {
    const std::uint32_t number = file.number.value_or(0);
    if (number > next) series.missing.emplace_back(next, number - 1);
    next = number + 1;
  }
}

class Finder {
 public:
  void Add(const std::string& path);
  FoundLogs Release();

 private:
  using SeriesKey = std::pair<std::size_t, std::string>;  // folder and name

  void AddFolder(const std::string& folder);
  void AddFile(const std::string& path, PathKind kind);
  void AddLog(FoundLog log);

  std::map<std::string, std::size_t> folders_;  // with their rank: folders keep the caller's order
  std::map<SeriesKey, FoundSeries> numbered_;
  std::map<SeriesKey, FoundLog> single_;
  std::set<std::pair<std::uint64_t, std::uint64_t>> known_;  // FileIdentity: device and file
  FoundLogs found_;
};

void Finder::Add(const std::string& path) {
  const PathKind kind = LookUpPath(path);
  if (kind == PathKind::kFolder) {
    AddFolder(path);
  } else {
    AddFile(path, kind);
  }
}

void Finder::AddFolder(const std::string& folder) {
  const bool has_separator = folder.ends_with('/') || folder.ends_with('\\');
  for (const std::string& name : ListFiles(folder)) {
    std::string path = folder + (has_separator ? "" : "/") + name;
    if (EndsWithIgnoreCase(name, kExtension)) {
      AddFile(path, PathKind::kRegularFile);
    } else {
      found_.others.push_back(
          {.path = std::move(path), .reason = NoLog::Reason::kOtherName, .error = {}});
    }
  }
}

void Finder::AddFile(const std::string& path, PathKind kind) {
  FoundLog log = {.path = path};
  // Not looked into if it is a pipe or a device: that may give its bytes only once.
  if (kind != PathKind::kOther) {
    const Look look = LookInto(path);
    if (look.error || look.is_binary) {
      const auto reason = look.error ? NoLog::Reason::kUnreadable : NoLog::Reason::kBinary;
      found_.others.push_back({.path = path, .reason = reason, .error = look.error});
      return;
    }
    if (!known_.emplace(look.identity.device, look.identity.file).second) return;
    log.size = look.identity.size;
    log.first = FindFirstTime(path);
  }
  AddLog(std::move(log));
}

void Finder::AddLog(FoundLog log) {
  const auto folder = folders_.try_emplace(GetFilePath(log.path), folders_.size()).first->second;
  PlaceInSeries place = FindPlace(log.path);
  log.number = place.number;
  const SeriesKey key(folder, place.name);
  if (log.number) {
    FoundSeries& series = numbered_[key];
    series.name = std::move(place.name);
    series.files.push_back(std::move(log));
  } else {
    single_.emplace(key, std::move(log));
  }
}

FoundLogs Finder::Release() {
  std::map<SeriesKey, FoundSeries> alone;
  for (auto& [key, log] : single_) {
    const auto series = numbered_.find(key);
    const bool is_first = series != numbered_.end() && IsFirstOf(series->second);
    FoundSeries& its_series = is_first ? series->second : alone[key];
    its_series.name = key.second;
    its_series.files.push_back(std::move(log));
  }
  std::multimap<SeriesKey, FoundSeries> all(std::make_move_iterator(alone.begin()),
                                            std::make_move_iterator(alone.end()));
  all.insert(std::make_move_iterator(numbered_.begin()), std::make_move_iterator(numbered_.end()));
  for (auto& [key, series] : all) {
    std::sort(series.files.begin(), series.files.end(), ComesBefore);
    PartLeftovers(series);
    FindMissing(series);
    found_.series.push_back(std::move(series));
  }
  return std::move(found_);
}

}  // namespace

FoundLogs FindLogs(const std::vector<std::string>& paths) {
  Finder finder;
  for (const std::string& path : paths) finder.Add(path);
  return finder.Release();
}

}  // namespace vexor
