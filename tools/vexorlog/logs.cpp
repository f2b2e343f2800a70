#include "logs.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <fstream>
#include <iostream>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "common/files.h"
#include "common/find_files.h"
#include "common/program.h"
#include "common/text_output.h"
#include "vexor/util/clock.h"

namespace tools::vexorlog {
namespace {

using vexor::kNoLogTime;
using vexor::LogTime;

std::string ReasonOf(const vexor::NoLog& other) {
  if (other.reason == vexor::NoLog::Reason::kBinary)
    return "is not a log: it begins with binary data";
  if (other.error == std::errc::no_such_file_or_directory) return "no such file or folder";
  return "cannot be read: " + other.error.default_error_condition().message();
}

std::string ReasonOf(const vexor::LogFault& fault) {
  if (fault.change == vexor::LogFileChange::kShrunk)
    return "became shorter while it was being read";
  if (fault.change == vexor::LogFileChange::kReplaced)
    return "was replaced while it was being read";
  if (fault.error == std::errc::value_too_large)
    return "the line is too long; only its beginning was read";
  if (fault.error == std::errc::broken_pipe)
    return "no program writes to this pipe (a command that reads logs twice needs a file)";
  return "cannot be read: " + fault.error.default_error_condition().message();
}

// Returns the time stamp of the last line at the end of the file that begins with one.
LogTime FindLastTime(const std::string& path) {
  constexpr std::streamoff kStretch = 65536;
  constexpr std::size_t kStampSize = 23;
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  const std::streamoff size = file.tellg();
  if (size <= 0) return kNoLogTime;
  file.seekg(std::max<std::streamoff>(0, size - kStretch));
  std::string text(static_cast<std::size_t>(std::min(size, kStretch)), '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  for (std::size_t at = text.size(); at != std::string::npos && at > 0;) {
    at = text.rfind('\n', at - 1);
    const std::size_t line = at == std::string::npos ? 0 : at + 1;
    const LogTime time = vexor::ParseLogTime(std::string_view(text).substr(line, kStampSize));
    if (time != kNoLogTime) return time;
  }
  return kNoLogTime;
}

LogTime FindEnd(const Logs& logs) {
  LogTime end = logs.start;
  for (const vexor::FoundSeries& series : logs.series) {
    if (!series.files.empty()) end = std::max(end, FindLastTime(series.files.back().path));
  }
  return end;
}

}  // namespace

std::vector<std::string> ExpandPaths(const std::vector<std::string>& paths) {
  std::vector<std::string> expanded;
  for (const std::string& path : paths)
    std::ranges::move(ExpandWildcard(path), std::back_inserter(expanded));
  return expanded;
}

std::uint64_t CountBytes(const Logs& logs) {
  std::uint64_t bytes = 0;
  for (const vexor::FoundSeries& series : logs.series) {
    for (const vexor::FoundLog& file : series.files) bytes += file.size;
  }
  return bytes;
}

Status KeepLogs(const Logs& logs, const std::string& output) {
  if (KindOf(output) == FileKind::kNone) return kClean;
  for (const vexor::FoundSeries& series : logs.series) {
    for (const auto& files : {series.files, series.leftovers}) {
      for (const vexor::FoundLog& file : files) {
        if (AreOneFile(file.path, output)) return Refuse(output, "is one of the logs to be read");
      }
    }
  }
  return kClean;
}

Logs FindGivenLogs(const std::vector<std::string>& paths, NoLogs none) {
  vexor::FoundLogs found = vexor::FindLogs(ExpandPaths(paths));
  Logs logs;
  for (const vexor::NoLog& other : found.others) {
    if (other.reason == vexor::NoLog::Reason::kOtherName) continue;
    logs.status = Refuse(other.path, ReasonOf(other));
  }
  logs.series = std::move(found.series);
  for (const vexor::FoundSeries& series : logs.series) {
    for (const vexor::FoundLog& file : series.files) {
      if (file.first == kNoLogTime) continue;
      logs.start = logs.start == kNoLogTime ? file.first : std::min(logs.start, file.first);
    }
  }
  if (logs.series.empty() && logs.status == kClean && none == NoLogs::kAreAnError) {
    logs.status = Refuse(paths.front(), "the folder holds no log (no *.csv file)");
  }
  return logs;
}

std::optional<RowFilter> MakeFilter(const Selection& selection, const Logs& logs) {
  const bool needs_end = selection.since.starts_with('-') || selection.until.starts_with('-');
  try {
    if (logs.start == kNoLogTime) {  // logs that are yet to be written
      const LogTime now = vexor::ParseLogTime(GetCurTimeStamp());
      return RowFilter(selection, now, now);
    }
    return RowFilter(selection, logs.start, needs_end ? FindEnd(logs) : logs.start);
  } catch (const std::invalid_argument& error) {
    std::cerr << kProgram.name << ": " << error.what() << '\n';
    return std::nullopt;
  }
}

bool ReadDuration(std::string_view option, std::string_view text,
                  std::optional<LogTime>& duration) {
  if (text.empty()) return true;
  duration = ParseDuration(text);
  if (duration) return true;
  std::cerr << kProgram.name << ": " << option << ' ' << Quote(text)
            << ": expected a duration such as 90s or 5min\n";
  return false;
}

Status ReportFaults(const std::vector<vexor::LogFault>& faults, Status status) {
  for (const vexor::LogFault& fault : faults) {
    const std::string line = fault.line > 0 ? ":" + std::to_string(fault.line) : "";
    status = Refuse(fault.path + line, ReasonOf(fault));
  }
  return status;
}

void RunInParallel(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr failure;
  const auto run = [&] {
    for (std::size_t i = next++; i < count; i = next++) {
      try {
        work(i);
      } catch (...) {
        const std::lock_guard lock(mutex);
        failure = std::current_exception();
        next = count;
      }
    }
  };
  std::vector<std::jthread> threads;
  const std::size_t most = std::max(1U, std::thread::hardware_concurrency());
  for (std::size_t i = 1; i < std::min(most, count); ++i) threads.emplace_back(run);
  run();
  threads.clear();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace tools::vexorlog
