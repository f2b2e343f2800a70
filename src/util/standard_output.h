// The standard output stream for the library's messages.
#pragma once

#include <ios>
#include <iostream>

namespace vexor {

// Returns std::cout, constructed first if need be: with a static library, constructors of the
// program's global objects may print before the standard streams exist.
inline std::ostream& StandardOutput() {
  static const std::ios_base::Init streams;
  return std::cout;
}

}  // namespace vexor
