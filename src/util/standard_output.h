// Standard output for the library's messages.
#pragma once

#include <ios>
#include <iostream>

namespace vexor {

// Returns the stream, constructed. In a static library a constructor of a global object of the
// program may run before the streams are there.
inline std::ostream& StandardOutput() {
  static const std::ios_base::Init streams;
  return std::cout;
}

}  // namespace vexor
