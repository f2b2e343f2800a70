// An open log file, and the group commit that makes its blocks durable.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/platform.h"

namespace vexor {

// Group commit, as in databases: a flush covers every block that was appended before it began, so
// threads that ask for a flush while one is running share the next one. Before it begins, a flush
// also waits briefly for the threads that the previous flush woke: they are about to append again.
//
// Thread-safety: one thread at a time may append, reopen or read the status; the caller's lock
// ensures that. Any thread may flush, without that lock: a slow disk must not hold up the threads
// that log to other files.
class DurableFile {
 public:
  // Opens the file at `path` and creates it if it is missing. Returns null and sets `error` on
  // failure. Messages use `name`, the path as the user wrote it.
  static std::shared_ptr<DurableFile> Open(const std::string& path, const std::string& name,
                                           OpenMode mode, std::error_code& error);

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] std::optional<FileStatus> ReadStatus() const { return opened_->file.ReadStatus(); }

  // Opens the same path again and creates the file if it is missing; on failure the file that was
  // open stays in use. Does not wait for a running flush, which keeps the old file open until it
  // ends.
  std::error_code Reopen();

  std::error_code Append(std::string_view bytes);

  // Nothing is appended from now on.
  void EndAppending() { appending_.store(false, std::memory_order_relaxed); }

  // The number of blocks appended so far.
  [[nodiscard]] std::uint64_t Appended() const { return appended_.load(std::memory_order_acquire); }

  // Waits until a flush that began after the first `count` blocks were appended has ended. `count`
  // is at most Appended(). Returns false once any flush has failed, then and ever after: the system
  // may have dropped the unwritten data, so that a later flush which succeeds proves nothing.
  bool Flush(std::uint64_t count);

  // Whether a flush that began now would wait for more blocks. Only for the flushing thread.
  [[nodiscard]] bool AwaitsMore() const {
    return appending_.load(std::memory_order_relaxed) && Appended() - covered_ < group_;
  }

  // Returns the error of the first flush that failed, to the first caller only.
  std::optional<std::error_code> TakeFault();

 private:
  struct Opened {
    File file;
    bool name_on_disk = false;  // its folder was synchronised; only the flushing thread uses this
  };

  std::uint64_t GatherGroup();
  std::error_code FlushNow(Opened& opened) const noexcept;

  std::string path_;
  std::string name_;
  // Only the appending thread replaces it, and under the mutex: that thread reads it without the
  // mutex, flushing threads read it with the mutex.
  std::shared_ptr<Opened> opened_;
  std::atomic<std::uint64_t> appended_ = 0;
  std::atomic<bool> appending_ = true;

  std::mutex mutex_;  // guards what follows; never held while the disk works
  std::condition_variable flush_ended_;
  bool flushing_ = false;
  std::uint64_t flushed_ = 0;  // blocks that flushes have covered, also those that failed
  bool failed_ = false;
  std::optional<std::error_code> fault_;

  // Only the flushing thread uses these.
  std::uint64_t covered_ = 0;  // blocks that the last flush and all before it covered
  std::uint64_t group_ = 0;    // blocks that the last flush alone covered
};

}  // namespace vexor
