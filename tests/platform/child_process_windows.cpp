#include <windows.h>

#include "platform/child_process.h"

ChildProcess::ChildProcess(const std::string& program, const std::string& argument) {
  std::string command = "\"" + program + "\" \"" + argument + "\"";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                     &startup, &process) == 0) {
    return;
  }
  CloseHandle(process.hThread);
  process_ = reinterpret_cast<std::intptr_t>(process.hProcess);
}

ChildProcess::~ChildProcess() {
  if (!started()) return;
  const auto process = reinterpret_cast<HANDLE>(process_);  // NOLINT(performance-no-int-to-ptr)
  TerminateProcess(process, 1);
  WaitForSingleObject(process, INFINITE);
  CloseHandle(process);
}
