#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "platform/child_process.h"

ChildProcess::ChildProcess(const std::string& program, const std::string& argument) {
  std::string name = program;
  std::string text = argument;
  char* arguments[] = {name.data(), text.data(), nullptr};
  pid_t id = 0;
  if (posix_spawn(&id, program.c_str(), nullptr, nullptr, arguments, environ) == 0) process_ = id;
}

ChildProcess::~ChildProcess() {
  if (!started()) return;
  const auto id = static_cast<pid_t>(process_);
  kill(id, SIGKILL);
  waitpid(id, nullptr, 0);
}
