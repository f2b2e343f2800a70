#include "logging/durable_file.h"

#include <thread>
#include <utility>

namespace vexor {

namespace {

// Several times as long as threads take to wake and append, and short beside a flush.
constexpr std::uint64_t kGatherNanoseconds = 60'000;

}  // namespace

std::shared_ptr<DurableFile> DurableFile::Open(const std::string& path, const std::string& name,
                                               OpenMode mode, std::error_code& error) {
  auto opened = std::make_shared<DurableFile>();
  error = opened->file_.Open(path, mode);
  if (error) return nullptr;
  opened->path_ = path;
  opened->name_ = name;
  return opened;
}

std::error_code DurableFile::Reopen() {
  File reopened;
  if (const std::error_code error = reopened.Open(path_, OpenMode::kAppend)) return error;
  std::unique_lock lock(mutex_);
  flush_ended_.wait(lock, [this] { return !flushing_; });
  file_ = std::move(reopened);
  name_on_disk_ = false;
  return {};
}

std::error_code DurableFile::Append(std::string_view bytes) {
  const std::error_code error = file_.Append(bytes);
  if (!error) appended_.fetch_add(1, std::memory_order_release);
  return error;
}

bool DurableFile::Flush(std::uint64_t count) {
  std::unique_lock lock(mutex_);
  while (flushed_ < count) {
    if (flushing_) {
      flush_ended_.wait(lock);
      continue;
    }
    flushing_ = true;
    lock.unlock();
    const std::uint64_t covered = GatherGroup();
    const std::error_code error = FlushNow();  // throws nothing: others wait for its end
    lock.lock();
    flushing_ = false;
    flushed_ = covered;
    if (error && !failed_) {
      failed_ = true;
      fault_ = error;
    }
    flush_ended_.notify_all();
  }
  return !failed_;
}

// Waits until as many blocks are there as the last flush served, but not for long; returns the
// number of blocks that a flush serves now.
std::uint64_t DurableFile::GatherGroup() {
  const std::uint64_t begin = ReadPerformanceCounter();
  while (Appended() - covered_ < group_ && ReadPerformanceCounter() - begin < kGatherNanoseconds) {
    std::this_thread::yield();
  }
  const std::uint64_t appended = Appended();
  group_ = appended - covered_;
  covered_ = appended;
  return appended;
}

std::error_code DurableFile::FlushNow() noexcept {
  if (const std::error_code error = file_.Flush()) return error;
  if (name_on_disk_) return {};
  const std::error_code error = File::SyncName(path_);
  name_on_disk_ = !error;
  return error;
}

std::optional<std::error_code> DurableFile::TakeFault() {
  const std::lock_guard lock(mutex_);
  return std::exchange(fault_, std::nullopt);
}

}  // namespace vexor
