// The exit status of the tools.
#pragma once

namespace tools {

// `kWarnings` is also the status of a command that compares and found differences, or that could
// not carry everything over.
enum Status : int {
  kClean = 0,
  kWarnings = 1,
  kErrors = 2,
  kNotRun = 3,
};

}  // namespace tools
