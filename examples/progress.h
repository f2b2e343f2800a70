// The state that the engine needs to continue after a reset, in a file in the log folder.
//
// The file is replaced atomically whenever something in it changes, so the process may be killed at
// any time. Unlike logs, it is not flushed: a simulated power cut does not lose it.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "simulated_machine.h"

// The progress of one thread of a test.
struct WorkerProgress {
  std::uint64_t iterations = 0;
  std::uint64_t failures = 0;
  std::uint32_t code = 0;  // the error words of all failures
};

// Used by one thread at a time, as threads of a `SimulatedMachine` do.
class Progress {
 public:
  // Continues the unfinished run in this folder if its description is `run`, a text of one line;
  // otherwise begins a new run.
  Progress(const std::string& folder, const std::string& run);

  // Returns how often the run was continued after a reset.
  [[nodiscard]] unsigned Restarts() const { return restarts_; }

  // Returns the machine's clock when it was last kept; `otherwise` before that.
  [[nodiscard]] Time GetClock(Time otherwise) const;
  void KeepClock();

  // Stores the name of a test's log file, for people who watch the run.
  void KeepLog(const std::string& test, const std::string& path);

  [[nodiscard]] WorkerProgress GetWorker(const std::string& worker) const;
  void KeepWorker(const std::string& worker, const WorkerProgress& progress);

  // Marks the run as complete: the next one starts from the beginning.
  void Finish();

 private:
  [[nodiscard]] std::string Get(const std::string& key) const;
  void Save() const;

  std::string file_;
  std::map<std::string, std::string> entries_;
  unsigned restarts_ = 0;
};
