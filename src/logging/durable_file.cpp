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
    lock.lock();
    // Behind the count: a file that is opened anew after it holds all of those blocks or none.
    const std::shared_ptr<Opened> opened = opened_;
    lock.unlock();
    const std::error_code error = FlushNow(*opened);  // throws nothing: others wait for its end
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

// Waits until as many blocks are there as the last flush served, but not for long, and not when no
// more can come; returns the number of blocks that a flush serves now.
std::uint64_t DurableFile::GatherGroup() {
  const std::uint64_t begin = ReadPerformanceCounter();
  while (AwaitsMore() && ReadPerformanceCounter() - begin < kGatherNanoseconds) {
    std::this_thread::yield();
  }
  const std::uint64_t appended = Appended();
  group_ = appended - covered_;
  covered_ = appended;
  return appended;
}

std::error_code DurableFile::FlushNow(Opened& opened) const noexcept {
  if (const std::error_code error = opened.file.Flush()) return error;
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
