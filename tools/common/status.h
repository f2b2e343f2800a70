// The exit status of the tools.
#pragma once

namespace tools {

// `kWarnings` is also the status of a comparison that found differences, and of a conversion that
// lost something.
enum Status : int {
  kClean = 0,
  kWarnings = 1,
  kErrors = 2,
  kNotRun = 3,
};

}  // namespace tools
