// An open log file whose lines are on the disk when they are asked for.
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

// Many threads wait for one disk: a flush serves every line that was written before it began, so
// threads that wait at the same time share the next one, and a flush holds back for a moment while
// the threads that the last one served are about to append again (the group commit of databases).
// One thread at a time appends, under the caller's lock; any thread may flush, and holds no lock of
// the caller's meanwhile.
class DurableFile {
 public:
  // Opens the file at `path`, created if need be; null and an error when that fails. `name` is what
  // the user knows it by.
  static std::shared_ptr<DurableFile> Open(const std::string& path, const std::string& name,
                                           OpenMode mode, std::error_code& error);

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] std::optional<FileStatus> ReadStatus() const { return opened_->file.ReadStatus(); }

  // Opens the same path once more, created if need be; what was open is used on if that fails. Does
  // not wait for a flush that runs.
  std::error_code Reopen();

  std::error_code Append(std::string_view bytes);

  // Nothing is appended from now on.
  void EndAppending() { appending_.store(false, std::memory_order_relaxed); }

  // The number of blocks appended so far.
  [[nodiscard]] std::uint64_t Appended() const { return appended_.load(std::memory_order_acquire); }

  // Returns when a flush that began after the first `count` blocks were appended has ended. The
  // result is false from the first flush that failed on: no later one brings its lines back.
  bool Flush(std::uint64_t count);

  // Whether a flush that begins now waits a moment for more blocks. Called by one thread at a time.
  [[nodiscard]] bool AwaitsMore() const {
    return appending_.load(std::memory_order_relaxed) && Appended() - covered_ < group_;
  }

  // The error of the first flush that failed, handed out once.
  std::optional<std::error_code> TakeFault();

 private:
  struct Opened {
    File file;
    bool name_on_disk = false;  // only the flushing thread uses it
  };

  std::uint64_t GatherGroup();
  std::error_code FlushNow(Opened& opened) const noexcept;

  std::string path_;
  std::string name_;
  std::shared_ptr<Opened> opened_;  // replaced under the mutex, by the thread that may append
  std::atomic<std::uint64_t> appended_ = 0;
  std::atomic<bool> appending_ = true;

  std::mutex mutex_;  // guards what follows
  std::condition_variable flush_ended_;
  bool flushing_ = false;
  std::uint64_t flushed_ = 0;  // so many blocks are done with
  bool failed_ = false;
  std::optional<std::error_code> fault_;

  // Only the flushing thread uses these.
  std::uint64_t covered_ = 0;  // blocks that the last flush and those before it served
  std::uint64_t group_ = 0;    // blocks that the last flush served
};

}  // namespace vexor
