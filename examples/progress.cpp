#include "progress.h"

#include <filesystem>
#include <fstream>
#include <vector>

#include "vexor/util/files.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace {

std::map<std::string, std::string> ReadEntries(const std::string& file) {
  std::map<std::string, std::string> entries;
  for (const std::string& line : Split(ReadFile(file, true), '\n', false)) {
    const std::size_t separator = line.find('=');
    if (separator != std::string::npos) {
      entries[line.substr(0, separator)] = line.substr(separator + 1);
    }
  }
  return entries;
}

}  // namespace

Progress::Progress(const std::string& folder, const std::string& run)
    : file_(folder + "/progress.txt"), entries_(ReadEntries(file_)) {
  if (Get("run") == run) {
    restarts_ = static_cast<unsigned>(String2Integer(Get("restarts"), 0)) + 1;
  } else {
    entries_ = {{"run", run}};
  }
  entries_["restarts"] = std::to_string(restarts_);
  Save();
}

std::string Progress::Get(const std::string& key) const {
  const auto entry = entries_.find(key);
  return entry == entries_.end() ? "" : entry->second;
}

void Progress::Save() const {
  const std::string unfinished = file_ + ".new";
  std::ofstream file(unfinished, std::ios::binary);
  for (const auto& [key, value] : entries_) file << key << '=' << value << '\n';
  file.close();
  std::filesystem::rename(unfinished, file_);
}

Time Progress::GetClock(Time otherwise) const {
  const auto count = static_cast<std::uint64_t>(otherwise.time_since_epoch().count());
  return Time(Duration(static_cast<Duration::rep>(String2Integer(Get("clock"), count))));
}

void Progress::KeepClock() {
  entries_["clock"] = std::to_string(SimulatedMachine::Now().time_since_epoch().count());
  Save();
}

void Progress::KeepLog(const std::string& test, const std::string& path) {
  entries_[test + ".log"] = std::filesystem::path(path).filename().string();
  Save();
}

WorkerProgress Progress::GetWorker(const std::string& worker) const {
  const std::vector<std::string> numbers = Split(Get(worker), ' ', true);
  if (numbers.size() != 3) return {};
  return {.iterations = String2Integer(numbers[0], 0),
          .failures = String2Integer(numbers[1], 0),
          .code = static_cast<std::uint32_t>(String2Integer(numbers[2], 0))};
}

void Progress::KeepWorker(const std::string& worker, const WorkerProgress& progress) {
  entries_[worker] = std::to_string(progress.iterations) + " " + std::to_string(progress.failures) +
                     " " + std::to_string(progress.code);
  KeepClock();
}

void Progress::Finish() { std::filesystem::remove(file_); }
