#include <windows.h>

#include <utility>

#include "platform/child_process.h"

namespace {

HANDLE Native(std::intptr_t process) {
  return reinterpret_cast<HANDLE>(process);  // NOLINT(performance-no-int-to-ptr)
}

// A file that the program inherits, null for none.
HANDLE OpenStream(const std::string& file, DWORD access) {
  if (file.empty()) return nullptr;
  SECURITY_ATTRIBUTES inherited = {};
  inherited.nLength = sizeof inherited;
  inherited.bInheritHandle = TRUE;
  const HANDLE opened = CreateFileA(
      file.c_str(), access | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
      access == GENERIC_READ ? OPEN_EXISTING : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  return opened == INVALID_HANDLE_VALUE ? nullptr : opened;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& words, const Streams& streams) {
  std::string command;  // words that hold neither quotes nor a backslash at their end
  for (const std::string& word : words) command += (command.empty() ? "\"" : " \"") + word + "\"";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = OpenStream(streams.input.empty() ? "NUL" : streams.input, GENERIC_READ);
  startup.hStdOutput = OpenStream(streams.output, FILE_APPEND_DATA);
  startup.hStdError = OpenStream(streams.errors, FILE_APPEND_DATA);
  PROCESS_INFORMATION process = {};
  if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &process) != 0) {
    CloseHandle(process.hThread);
    process_ = reinterpret_cast<std::intptr_t>(process.hProcess);
  }
  for (const HANDLE stream : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) {
    if (stream != nullptr) CloseHandle(stream);
  }
}

int ChildProcess::Wait() {
  DWORD status = static_cast<DWORD>(-1);
  if (started()) {
    WaitForSingleObject(Native(process_), INFINITE);
    GetExitCodeProcess(Native(process_), &status);
    CloseHandle(Native(std::exchange(process_, 0)));
  }
  return static_cast<int>(status);
}

ChildProcess::~ChildProcess() {
  if (!started()) return;
  TerminateProcess(Native(process_), 1);
  Wait();
}
