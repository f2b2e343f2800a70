// Programs that tests run, without a shell, so that a command means the same on every system.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Streams {
  std::string input = {};   // the file that is standard input; empty for none
  std::string output = {};  // the file that standard output is appended to; empty for a closed one
  std::string errors = {};  // the same for standard error
};

class ChildProcess {
 public:
  // Starts the program, the first of the words, which is searched for in PATH.
  ChildProcess(const std::vector<std::string>& words, const Streams& streams);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Kills it if it still runs.
  ~ChildProcess();

  [[nodiscard]] bool started() const { return process_ != 0; }

  // Returns the exit status once it has ended; -1 when it was not started or did not end by itself.
  int Wait();

 private:
  std::intptr_t process_ = 0;
};
