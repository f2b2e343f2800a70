#include "vexor/logging/log_merge.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <utility>

namespace vexor {

namespace {

// Memory for the buffers of all series together, and the least that each series gets.
constexpr std::size_t kMostBytes = std::size_t{16} << 20;
constexpr std::size_t kLeastBytes = 2048;
constexpr std::size_t kMostOpenFiles = 64;

}  // namespace

struct LogMergeImpl {
  // A series that is being read.
  struct Stream {
    FoundSeries series;
    std::size_t file = 0;
    std::optional<LogReader> reader;
    LogTime time = kNoLogTime;  // of the current row; before the first row, of the first file
    bool has_long_row = false;  // the file has a row that was too long, which `faults` lists
  };

  bool Next();
  bool GoOn(Stream& stream);
  void Leave(Stream& stream);
  [[nodiscard]] bool ComesBefore(std::size_t a, std::size_t b) const {
    return std::pair(streams[a].time, a) < std::pair(streams[b].time, b);
  }

  LogReaderOptions options;
  std::vector<Stream> streams;
  std::vector<std::size_t> waiting;  // a heap of all streams but the current one, earliest first
  std::optional<std::size_t> current;
  std::vector<LogFault> faults;
};

// Moves to the next row of the stream, in the next file if need be; false if there is none. A row
// without a time keeps the time of the row before it and so stays behind it.
bool LogMergeImpl::GoOn(Stream& stream) {
  while (stream.file < stream.series.files.size()) {
    if (!stream.reader) {
      stream.reader.emplace(options);
      stream.reader->Open(stream.series.files[stream.file].path);
    }
    if (stream.reader->Next()) {
      const LogRow row = stream.reader->Row();
      if (const LogTime time = row.Time(); time != kNoLogTime) stream.time = time;
      if (row.Has(LogDamage::kTooLong) && !std::exchange(stream.has_long_row, true)) {
        faults.push_back({.path = stream.reader->Path(),
                          .error = std::make_error_code(std::errc::value_too_large),
                          .line = row.Line()});
      }
      return true;
    }
    Leave(stream);
  }
  return false;
}

void LogMergeImpl::Leave(Stream& stream) {
  const LogReader& reader = *stream.reader;
  if (reader.Error() || reader.Change() != LogFileChange::kNone) {
    faults.push_back({.path = reader.Path(),
                      .error = reader.Error(),
                      .change = reader.Change(),
                      .line = reader.Offset() > 0 ? reader.Line() : 0});
  }
  stream.reader.reset();
  stream.has_long_row = false;
  ++stream.file;
}

bool LogMergeImpl::Next() {
  const auto comes_after = [this](std::size_t a, std::size_t b) { return ComesBefore(b, a); };
  // A stream whose first row was not read yet waits with the time that FindLogs found for it. So
  // its file is not opened before the merge reaches that time.
  while (true) {
    if (current && !GoOn(streams[*current])) current.reset();
    if (current && (waiting.empty() || ComesBefore(*current, waiting.front()))) return true;
    if (waiting.empty()) return false;
    std::pop_heap(waiting.begin(), waiting.end(), comes_after);
    const std::size_t next = waiting.back();
    if (current) {
      waiting.back() = *current;
      std::push_heap(waiting.begin(), waiting.end(), comes_after);
    } else {
      waiting.pop_back();
    }
    current = next;
    if (streams[next].reader) return true;
  }
}

LogMerge::LogMerge(std::vector<FoundSeries> series, LogReaderOptions options)
    : impl_(std::make_unique<LogMergeImpl>()) {
  impl_->options = std::move(options);
  impl_->options.follow = false;
  impl_->options.keep_open = series.size() <= kMostOpenFiles;
  const std::size_t share = kMostBytes / std::max<std::size_t>(series.size(), 1);
  impl_->options.buffer_size = std::min(impl_->options.buffer_size, std::max(share, kLeastBytes));
  for (FoundSeries& its_series : series) {
    LogTime first = kNoLogTime;
    if (!its_series.files.empty()) first = its_series.files.front().first;
    impl_->waiting.push_back(impl_->streams.size());
    impl_->streams.push_back({.series = std::move(its_series), .reader = {}, .time = first});
  }
  std::make_heap(impl_->waiting.begin(), impl_->waiting.end(),
                 [this](std::size_t a, std::size_t b) { return impl_->ComesBefore(b, a); });
}

LogMerge::LogMerge(LogMerge&& other) noexcept = default;
LogMerge& LogMerge::operator=(LogMerge&& other) noexcept = default;
LogMerge::~LogMerge() = default;

bool LogMerge::Next() { return impl_->Next(); }
LogRow LogMerge::Row() const {
  assert(impl_->current);
  return impl_->streams[*impl_->current].reader->Row();
}

const FoundLog& LogMerge::File() const {
  const LogMergeImpl::Stream& stream = impl_->streams[*impl_->current];
  return stream.series.files[stream.file];
}

std::size_t LogMerge::SeriesIndex() const { return *impl_->current; }
LogTime LogMerge::Time() const { return impl_->streams[*impl_->current].time; }
const std::vector<LogFault>& LogMerge::Faults() const { return impl_->faults; }

}  // namespace vexor
