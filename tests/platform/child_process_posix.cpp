#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <utility>

#include "platform/child_process.h"

namespace {

void AddStream(posix_spawn_file_actions_t& actions, int stream, const std::string& file,
               int flags) {
  if (file.empty()) {
    posix_spawn_file_actions_addclose(&actions, stream);
  } else {
    posix_spawn_file_actions_addopen(&actions, stream, file.c_str(), flags, 0666);
  }
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& words, const Streams& streams) {
  std::vector<std::string> texts = words;
  std::vector<char*> arguments;
  arguments.reserve(texts.size() + 1);
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  AddStream(actions, 0, streams.input.empty() ? "/dev/null" : streams.input, O_RDONLY);
  AddStream(actions, 1, streams.output, O_WRONLY | O_CREAT | O_APPEND);
  AddStream(actions, 2, streams.errors, O_WRONLY | O_CREAT | O_APPEND);
  pid_t id = 0;
  if (posix_spawnp(&id, arguments.front(), &actions, nullptr, arguments.data(), environ) == 0) {
    process_ = id;
  }
  posix_spawn_file_actions_destroy(&actions);
}

int ChildProcess::Wait() {
  const auto id = static_cast<pid_t>(std::exchange(process_, 0));
  int status = 0;
  if (id == 0 || waitpid(id, &status, 0) != id || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

ChildProcess::~ChildProcess() {
  if (!started()) return;
  kill(static_cast<pid_t>(process_), SIGKILL);
  Wait();
}
