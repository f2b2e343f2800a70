#include "common/terminal.h"

#include <cstdlib>

namespace tools {

bool UsesColours() {
  const char* const unwanted = std::getenv("NO_COLOR");
  return (unwanted == nullptr || *unwanted == '\0') && OutputShowsColours();
}

}  // namespace tools
