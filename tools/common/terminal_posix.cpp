#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "common/terminal.h"

namespace tools {

bool OutputShowsColours() {
  const char* const terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) != 0 && terminal != nullptr && terminal != std::string_view("dumb");
}

bool ErrorsAreOnTerminal() { return isatty(STDERR_FILENO) != 0; }

void ShowUtf8() {}  // a matter of the user's settings

void UseBinaryInput() {}

void UseBinaryOutput() {}

}  // namespace tools
