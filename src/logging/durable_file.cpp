#include "logging/durable_file.h"

#include <cassert>
#include <thread>
#include <utility>

namespace vexor {

namespace {

// Several times what threads need to wake and append, and short compared with a flush.
constexpr std::uint64_t kGatherNanoseconds = 60'000;

}  // namespace

std::shared_ptr<DurableFile> DurableFile::Open(const std::string& path, const std::string& name,
                                               OpenMode mode, std::error_code& error) {
  auto file = std::make_shared<DurableFile>();
  file->opened_ = std::make_shared<Opened>();
  file->path_ = path;
  file->name_ = name;
  error = file->opened_->file.Open(path, mode);
  if (error) return nullptr;
  return file;
}

std::error_code DurableFile::Reopen() {
  auto reopened = std::make_shared<Opened>();
  if (const std::error_code error = reopened->file.Open(path_, OpenMode::kAppend)) return error;
  const std::lock_guard lock(mutex_);
  opened_.swap(reopened);
  return {};
}

std::error_code DurableFile::Append(std::string_view bytes) {
  const std::error_code error = opened_->file.Append(bytes);
  // Counted after the write: whoever reads the count and then flushes covers these bytes.
  if (!error) appended_.fetch_add(1, std::memory_order_release);
  return error;
}

bool DurableFile::Flush(std::uint64_t count) {
  assert(count <= Appended());  // else the loop would never end
  std::unique_lock lock(mutex_);
  while (flushed_ < count) {
    if (flushing_) {
      flush_ended_.wait(lock);
      continue;
    }
    flushing_ = true;
    lock.unlock();
    const std::uint64_t covered = GatherGroup();
    lock.lock();
    // Read after the count. In the other order, a Reopen in between would let blocks of the new
    // file be counted although only the old file is flushed.
    const std::shared_ptr<Opened> opened = opened_;
    lock.unlock();
    // Must not throw: `flushing_` would stay set, and the waiting threads would wait for ever.
    const std::error_code error = FlushNow(*opened);
    lock.lock();
    flushing_ = false;
    // After a failure, too: the waiting threads learn of it from `failed_` and do not each try a
    // broken disk in turn.
    assert(flushed_ <= covered);
    flushed_ = covered;
    if (error && !failed_) {
      failed_ = true;
      fault_ = error;
    }
    flush_ended_.notify_all();
  }
  return !failed_;
}

// Waits until as many new blocks have been appended as the last flush covered, but only briefly,
// and not after EndAppending. Returns the number of blocks that a flush would cover now.
std::uint64_t DurableFile::GatherGroup() {
  const std::uint64_t begin = ReadPerformanceCounter();
  while (AwaitsMore() && ReadPerformanceCounter() - begin < kGatherNanoseconds) {
    std::this_thread::yield();
  }
  const std::uint64_t appended = Appended();
  assert(covered_ <= appended);
  group_ = appended - covered_;
  covered_ = appended;
  return appended;
}

std::error_code DurableFile::FlushNow(Opened& opened) const noexcept {
  if (const std::error_code error = opened.file.Flush()) return error;
  // A new file's entry in its folder is not durable with the file's content; once is enough.
  if (opened.name_on_disk) return {};
  const std::error_code error = File::SyncName(path_);
  opened.name_on_disk = !error;
  return error;
}

std::optional<std::error_code> DurableFile::TakeFault() {
  const std::lock_guard lock(mutex_);
  return std::exchange(fault_, std::nullopt);
}

}  // namespace vexor
