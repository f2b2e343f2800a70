#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "common/terminal.h"

namespace tools {

bool OutputShowsColours() {
  void* const output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(output, &mode) != 0 &&
         SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool ErrorsAreOnTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

void ShowUtf8() {
  static const UINT former = GetConsoleOutputCP();  // 0 without a console
  if (former == 0 || former == CP_UTF8) return;
  SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { SetConsoleOutputCP(former); });
}

void UseBinaryInput() { static_cast<void>(_setmode(_fileno(stdin), _O_BINARY)); }

void UseBinaryOutput() { static_cast<void>(_setmode(_fileno(stdout), _O_BINARY)); }

}  // namespace tools
