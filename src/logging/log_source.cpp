#include "logging/log_source.h"

#include <algorithm>
#include <cassert>

namespace vexor {

namespace {

// Holds the header and the first row of most logs. The time in that row differs whenever the file
// is written anew.
constexpr std::size_t kBeginning = 1024;

// Closes a handle at the end of a scope.
struct Glance {
  Glance() = default;
  Glance(const Glance&) = delete;
  Glance& operator=(const Glance&) = delete;
  ~Glance() {
    if (handle != kNoFile) CloseReadFile(handle);
  }
  FileHandle handle = kNoFile;
};

}  // namespace

std::error_code LogSource::Open(const std::string& path, bool keep_open, bool follow) {
  Close();
  path_ = path;
  keep_open_ = keep_open;
  follow_ = follow;
  position_ = 0;
  was_at_end_ = false;
  beginning_.clear();
  change_ = LogFileChange::kNone;
  error_ = OpenReadFile(path, handle_);
  if (!error_) error_ = IdentifyFile(handle_, identity_);
  return error_;
}

void LogSource::Close() {
  if (handle_ != kNoFile) CloseReadFile(handle_);
  handle_ = kNoFile;
}

std::error_code LogSource::Reopen() {
  assert(handle_ == kNoFile);
  if (const std::error_code error = OpenReadFile(path_, handle_)) return error;
  FileIdentity now;
  if (const std::error_code error = IdentifyFile(handle_, now)) return error;
  if (!now.IsSameFile(identity_)) {
    change_ = LogFileChange::kReplaced;
    return {};
  }
  return SeekReadFile(handle_, position_);
}

std::size_t LogSource::Read(char* bytes, std::size_t size) {
  assert(size > 0);  // else a count of 0 would look like the end of the data
  const auto is_over = [this] {
    return error_ || change_ == LogFileChange::kShrunk || change_ == LogFileChange::kReplaced;
  };
  if (!is_over() && handle_ == kNoFile) error_ = Reopen();
  if (is_over()) return 0;
  std::size_t count = 0;
  error_ = ReadFileBytes(handle_, bytes, size, count);
  if (count == 0) {
    if (!error_ && identity_.regular) LookAtEnd();
  } else if (was_at_end_ && identity_.regular && !BeginsAsBefore()) {
    change_ = LogFileChange::kReplaced;
    count = 0;
  }
  was_at_end_ = count == 0;
  if (follow_ && beginning_.size() < kBeginning && position_ == beginning_.size()) {
    beginning_.insert(beginning_.end(), bytes,
                      bytes + std::min(count, kBeginning - beginning_.size()));
  }
  position_ += count;
  if (!keep_open_ && identity_.regular) Close();
  return count;
}

// Called at the end of the data: notes whether the file was cut, replaced or removed.
void LogSource::LookAtEnd() {
  FileIdentity now;
  if (!IdentifyFile(handle_, now) && now.size < position_) {
    change_ = LogFileChange::kShrunk;
  } else if (follow_) {
    Glance glance;
    const std::error_code missing = OpenReadFile(path_, glance.handle);
    if (missing) {
      change_ = missing == std::errc::no_such_file_or_directory ? LogFileChange::kRemoved
                                                                : LogFileChange::kNone;
    } else if (!IdentifyFile(glance.handle, now)) {
      change_ = now.IsSameFile(identity_) ? LogFileChange::kNone : LogFileChange::kReplaced;
    }
  }
}

// A file that was emptied and has since grown beyond the old position looks like one that has only
// grown. Its first bytes tell the difference. If they cannot be read, the file counts as unchanged.
bool LogSource::BeginsAsBefore() const {
  Glance glance;
  if (OpenReadFile(path_, glance.handle)) return true;
  FileIdentity now;
  if (IdentifyFile(glance.handle, now) || !now.IsSameFile(identity_)) return true;
  std::vector<char> bytes(beginning_.size());
  std::size_t done = 0;
  std::size_t count = 0;
  do {
    if (ReadFileBytes(glance.handle, bytes.data() + done, bytes.size() - done, count)) return true;
    done += count;
  } while (count > 0 && done < bytes.size());
  return bytes == beginning_;
}

}  // namespace vexor
