// What the engine must know to go on where it was after a reset: a file in the log folder.
//
// The file is replaced in one piece whenever something in it changes, so that a process may be
// killed at any time. It is not made durable as logs are: a power cut that is only simulated takes
// nothing from it.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "simulated_machine.h"

// What one thread of a test has done so far.
struct WorkerProgress {
  std::uint64_t iterations = 0;
  std::uint64_t failures = 0;
  std::uint32_t code = 0;  // the error words of all failures
};

// Used by one thread at a time, as threads of a `SimulatedMachine` do.
class Progress {
 public:
  // Goes on with the run that was not finished in this folder if its description is `run`, a text
  // of one line, and begins a new run otherwise.
  Progress(const std::string& folder, const std::string& run);

  // Returns how often the run went on after a reset.
  [[nodiscard]] unsigned Restarts() const { return restarts_; }

  // Returns the machine's clock when it was last kept; `otherwise` before that.
  [[nodiscard]] Time GetClock(Time otherwise) const;
  void KeepClock();

  // Notes the file in which a test logs, for those who watch the run.
  void KeepLog(const std::string& test, const std::string& path);

  [[nodiscard]] WorkerProgress GetWorker(const std::string& worker) const;
  void KeepWorker(const std::string& worker, const WorkerProgress& progress);

  // The run is complete: the next one begins anew.
  void Finish();

 private:
  [[nodiscard]] std::string Get(const std::string& key) const;
  void Save() const;

  std::string file_;
  std::map<std::string, std::string> entries_;
  unsigned restarts_ = 0;
};
