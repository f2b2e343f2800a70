#include "platform/test_disk.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

namespace {

using vexor::FileHandle;
using vexor::FileStatus;
using vexor::kSystemFileCalls;
using vexor::OpenMode;

struct Fault {
  int times = 0;
  std::errc error = {};
  int spared = 0;
  int calls = 0;
};

struct State {
  std::array<Fault, TestDisk::kAny + 1> faults;
  int faulty_calls = 0;
  std::uint64_t space = TestDisk::kUnlimited;
  std::uint64_t most = TestDisk::kUnlimited;
  std::optional<std::chrono::microseconds> pretended;
  std::string held;
  std::map<FileHandle, std::string> open;
  std::map<std::string, std::uint64_t> flushed;
  std::set<std::string> named;
};

std::mutex mutex;
std::condition_variable flushes_released;
State state;

std::error_code Check(TestDisk::Step step) {
  const std::lock_guard lock(mutex);
  std::error_code error;
  for (const TestDisk::Step broken : {step, TestDisk::kAny}) {
    Fault& fault = state.faults[broken];
    ++fault.calls;
    if (fault.times == 0 || fault.spared-- > 0) continue;
    fault.spared = 0;
    --fault.times;
    error = std::make_error_code(fault.error);
  }
  if (error) ++state.faulty_calls;
  return error;
}

std::error_code Open(const std::string& path, OpenMode mode, FileHandle& handle) {
  if (const auto error = Check(TestDisk::kOpen)) return error;
  const auto error = kSystemFileCalls.open(path, mode, handle);
  const std::lock_guard lock(mutex);
  if (!error) state.open[handle] = path;
  return error;
}

std::error_code Write(FileHandle handle, std::string_view bytes, std::size_t& written) {
  if (const auto error = Check(TestDisk::kWrite)) return error;
  std::uint64_t most = 0;
  {
    const std::lock_guard lock(mutex);
    most = std::min(state.space, state.most);
    if (state.space != TestDisk::kUnlimited)
      state.space -= std::min<std::uint64_t>(most, bytes.size());
    if (most < bytes.size()) ++state.faulty_calls;
  }
  if (most == 0) return std::make_error_code(std::errc::no_space_on_device);
  return kSystemFileCalls.write(handle, bytes.substr(0, most), written);
}

std::error_code Flush(FileHandle handle) {
  if (const auto error = Check(TestDisk::kFlush)) return error;
  FileStatus before;
  if (const auto error = kSystemFileCalls.read_status(handle, before)) return error;
  std::unique_lock lock(mutex);
  const std::string path = state.open[handle];
  flushes_released.wait(
      lock, [&] { return state.held.empty() || path.find(state.held) == std::string::npos; });
  const auto pretended = state.pretended;
  lock.unlock();
  if (pretended) std::this_thread::sleep_for(*pretended);
  const auto error = pretended ? std::error_code() : kSystemFileCalls.flush(handle);
  lock.lock();
  std::uint64_t& size = state.flushed[path];
  if (!error) size = std::max(size, before.size);
  return error;
}

std::error_code SyncName(const std::string& path) {
  if (const auto error = Check(TestDisk::kSyncName)) return error;
  std::unique_lock lock(mutex);
  const bool pretended = state.pretended.has_value();
  lock.unlock();
  const auto error = pretended ? std::error_code() : kSystemFileCalls.sync_name(path);
  lock.lock();
  if (!error) state.named.insert(path);
  return error;
}

std::error_code ReadStatus(FileHandle handle, FileStatus& status) {
  if (const auto error = Check(TestDisk::kStatus)) return error;
  return kSystemFileCalls.read_status(handle, status);
}

std::error_code Rename(const std::string& from, const std::string& to) {
  if (const auto error = Check(TestDisk::kRename)) return error;
  return kSystemFileCalls.rename(from, to);
}

std::error_code Cut(FileHandle handle, std::uint64_t size) {
  if (const auto error = Check(TestDisk::kCut)) return error;
  return kSystemFileCalls.cut(handle, size);
}

void Close(FileHandle handle) {
  {
    const std::lock_guard lock(mutex);
    state.open.erase(handle);
  }
  kSystemFileCalls.close(handle);
}

}  // namespace

TestDisk::TestDisk() {
  static const vexor::FileCalls calls = {
      .open = Open,
      .write = Write,
      .flush = Flush,
      .read_status = ReadStatus,
      .cut = Cut,
      .close = Close,
      .sync_name = SyncName,
      .rename = Rename,
      .remove = kSystemFileCalls.remove,
  };
  state = State();
  vexor::file_calls = &calls;
}

TestDisk::~TestDisk() { vexor::file_calls = &kSystemFileCalls; }

void TestDisk::Break(Step step, std::errc error, int spared, int times) {
  const std::lock_guard lock(mutex);
  Fault& fault = state.faults[step];
  fault = {.times = times, .error = error, .spared = spared, .calls = fault.calls};
}

void TestDisk::Repair(Step step) {
  const std::lock_guard lock(mutex);
  state.faults[step].times = 0;
}

void TestDisk::LimitSpace(std::uint64_t bytes) {
  const std::lock_guard lock(mutex);
  state.space = bytes;
}

void TestDisk::LimitWrite(std::uint64_t bytes) {
  const std::lock_guard lock(mutex);
  state.most = bytes;
}

void TestDisk::PretendFlushes(std::chrono::microseconds duration) {
  const std::lock_guard lock(mutex);
  state.pretended = duration;
}

void TestDisk::HoldFlushes(const std::string& part_of_path) {
  const std::lock_guard lock(mutex);
  state.held = part_of_path;
}

void TestDisk::ReleaseFlushes() {
  HoldFlushes("");
  flushes_released.notify_all();
}

int TestDisk::OpenFiles() {
  const std::lock_guard lock(mutex);
  return static_cast<int>(state.open.size());
}

int TestDisk::Calls(Step step) {
  const std::lock_guard lock(mutex);
  return state.faults[step].calls;
}

int TestDisk::Faults() {
  const std::lock_guard lock(mutex);
  return state.faulty_calls;
}

std::map<std::string, std::uint64_t> TestDisk::DurableSizes() {
  const std::lock_guard lock(mutex);
  std::map<std::string, std::uint64_t> sizes;
  for (const std::string& path : state.named) sizes[path] = state.flushed[path];
  return sizes;
}
