#include "logging/log_source.h"

#include <algorithm>

namespace vexor {

namespace {

// The header and the first row, with its time, of most logs.
constexpr std::size_t kBeginning = 1024;

// A handle that is closed at the end of a look at a file.
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

// At the end of the data: notes what has become of the file.
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

// A file that was emptied, and is longer again when one looks, begins with another time.
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
