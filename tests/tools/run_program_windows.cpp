#include <windows.h>

#include "run_program.h"

namespace {

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

int RunProgram(const std::vector<std::string>& words, const Streams& streams) {
  std::string command;  // words that hold neither quotes nor a backslash at their end
  for (const std::string& word : words) command += (command.empty() ? "\"" : " \"") + word + "\"";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = OpenStream(streams.input.empty() ? "NUL" : streams.input, GENERIC_READ);
  startup.hStdOutput = OpenStream(streams.output, FILE_APPEND_DATA);
  startup.hStdError = OpenStream(streams.errors, FILE_APPEND_DATA);
  PROCESS_INFORMATION process = {};
  DWORD status = static_cast<DWORD>(-1);
  if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &process) != 0) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  for (const HANDLE stream : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) {
    if (stream != nullptr) CloseHandle(stream);
  }
  return static_cast<int>(status);
}
