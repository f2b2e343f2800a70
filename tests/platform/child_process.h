// A program that a test starts and may end without warning.
#pragma once

#include <cstdint>
#include <string>

class ChildProcess {
 public:
  // Starts the program with one argument.
  ChildProcess(const std::string& program, const std::string& argument);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Kills it if it still runs.
  ~ChildProcess();

  [[nodiscard]] bool started() const { return process_ != 0; }

 private:
  std::intptr_t process_ = 0;
};
