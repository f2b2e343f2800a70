// The registry of threads: which test a thread works for, at which level and into which log.

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/immortal.h"
#include "vexor/logging/log_file.h"

using vexor::Immortal;

constinit Immortal<std::mutex> VexorLogging::m_mThreadIdMutex;
constinit Immortal<std::vector<std::thread::id>> VexorLogging::m_vThreadsId;
constinit Immortal<std::vector<VEXOR_PM_TEST_ID>> VexorLogging::m_vLogTestId;
constinit Immortal<std::vector<TRACE_LEVEL>> VexorLogging::m_vFlowLogLevel;
constinit Immortal<std::vector<VexorLogging*>> VexorLogging::m_vLogFileReference;
constinit Immortal<std::map<std::thread::id, std::string>> VexorLogging::m_mThreadAffinityLog;

namespace {

// Returns the value that belongs to the first `key` of the parallel arrays, or `otherwise`.
template <class Key, class Value>
Value FindFirst(const std::vector<Key>& keys, Key key, const std::vector<Value>& values,
                Value otherwise) {
  const auto found = std::find(keys.begin(), keys.end(), key);
  if (found == keys.end()) return otherwise;
  return values[static_cast<std::size_t>(found - keys.begin())];
}

template <class Value>
void MakeRoomForOne(std::vector<Value>& values) {
  if (values.size() == values.capacity()) values.reserve(2 * values.size() + 1);
}

}  // namespace

// A thread may be registered twice. All look-ups find the first entry, so that on purpose a thread
// stays with its first test; the later entry counts only for GetTestLogLevel, which looks up tests.
void VexorLogging::SetThreadTestLog(std::thread::id thread, VEXOR_PM_TEST_ID test,
                                    TRACE_LEVEL level, VexorLogging* log) {
  const std::lock_guard lock(*m_mThreadIdMutex);
  AppendRoute(thread, test, level, log);
}

// All memory is reserved before the first entry is appended: if it runs out, the four parallel
// arrays still have the same length.
void VexorLogging::AppendRoute(std::thread::id thread, VEXOR_PM_TEST_ID test, TRACE_LEVEL level,
                               VexorLogging* log) {
  MakeRoomForOne(*m_vThreadsId);
  MakeRoomForOne(*m_vLogTestId);
  MakeRoomForOne(*m_vFlowLogLevel);
  MakeRoomForOne(*m_vLogFileReference);
  m_vThreadsId->push_back(thread);
  m_vLogTestId->push_back(test);
  m_vFlowLogLevel->push_back(level);
  m_vLogFileReference->push_back(log);
}

// With `again`, registers a thread that is registered already a second time.
void VexorLogging::RegisterThisThread(TRACE_LEVEL level, bool again) {
  const std::thread::id thread = std::this_thread::get_id();
  const std::lock_guard lock(*m_mThreadIdMutex);
  if (!again &&
      std::find(m_vThreadsId->begin(), m_vThreadsId->end(), thread) != m_vThreadsId->end()) {
    return;
  }
  AppendRoute(thread, PM_TEST_VEXOR, level, this);
}

void VexorLogging::ForgetThreads() {
  const std::lock_guard lock(*m_mThreadIdMutex);
  m_vThreadsId->clear();
  m_vLogTestId->clear();
  m_vFlowLogLevel->clear();
  m_vLogFileReference->clear();
}

// Entries keep their tests and levels but lose their log, which is about to be destroyed.
void VexorLogging::ForgetLog() {
  const std::lock_guard lock(*m_mThreadIdMutex);
  std::replace(m_vLogFileReference->begin(), m_vLogFileReference->end(), this,
               static_cast<VexorLogging*>(nullptr));
}

VEXOR_PM_TEST_ID VexorLogging::GetThreadTestId(std::thread::id thread) {
  const std::lock_guard lock(*m_mThreadIdMutex);
  return FindFirst(*m_vThreadsId, thread, *m_vLogTestId, PM_TEST_VEXOR);
}

TRACE_LEVEL VexorLogging::GetThreadLogLevel(std::thread::id thread) const {
  const std::lock_guard lock(*m_mThreadIdMutex);
  return FindFirst(*m_vThreadsId, thread, *m_vFlowLogLevel, GetGlobalLogLevel());
}

VexorLogging* VexorLogging::GetThreadLogFileReference(std::thread::id thread) {
  const std::lock_guard lock(*m_mThreadIdMutex);
  return FindFirst<std::thread::id, VexorLogging*>(*m_vThreadsId, thread, *m_vLogFileReference,
                                                   nullptr);
}

TRACE_LEVEL VexorLogging::GetTestLogLevel(VEXOR_PM_TEST_ID test) const {
  const std::lock_guard lock(*m_mThreadIdMutex);
  return FindFirst(*m_vLogTestId, test, *m_vFlowLogLevel, GetGlobalLogLevel());
}

void VexorLogging::LogSpecificLevel(std::string_view text, TRACE_LEVEL level) {
  VexorLogging* log = nullptr;
  TRACE_LEVEL thread_level = TRACE_NO_LOG;
  {
    const std::lock_guard lock(*m_mThreadIdMutex);
    const std::thread::id thread = std::this_thread::get_id();
    log = FindFirst(*m_vThreadsId, thread, *m_vLogFileReference, log);
    thread_level = FindFirst(*m_vThreadsId, thread, *m_vFlowLogLevel, thread_level);
  }
  if (log == nullptr) {
    ConsoleOut(text, level, false);
  } else if (level <= thread_level) {
    log->LogLine(text, level, true);
  }
}

void VexorLogging::SetThreadAffinityLog(std::thread::id thread, unsigned short a, unsigned short b,
                                        unsigned short c, unsigned short d) {
  std::array<char, 32> label = {};
  std::snprintf(label.data(), label.size(), "%02u:%02u:%03u:%u", a, b, c, d);
  const std::lock_guard lock(*m_mThreadIdMutex);
  (*m_mThreadAffinityLog)[thread] = label.data();
}

std::string VexorLogging::GetThreadAffinityLog(std::thread::id thread) {
  const std::lock_guard lock(*m_mThreadIdMutex);
  const auto label = m_mThreadAffinityLog->find(thread);
  return label == m_mThreadAffinityLog->end() ? std::string() : label->second;
}

std::string VexorLogging::GetPkgCoreInfo(unsigned short package, unsigned short core) {
  // 32752 and above mean "none" and print as blanks. The label is empty only if both numbers are
  // strictly above 32752; that the two bounds differ by one is on purpose.
  constexpr unsigned short kNone = 32752;
  if (package > kNone && core > kNone) return {};
  std::array<char, 16> label = {};
  int length = package < kNone ? std::snprintf(label.data(), label.size(), "%02d:", package)
                               : std::snprintf(label.data(), label.size(), "  :");
  std::string text(label.data(), static_cast<std::size_t>(length));
  length = core < kNone ? std::snprintf(label.data(), label.size(), "%03d", core)
                        : std::snprintf(label.data(), label.size(), "   ");
  return text.append(label.data(), static_cast<std::size_t>(length));
}
