// A file that a command writes piece by piece.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "common/status.h"

namespace tools {

// A file that is written piece by piece, or standard output. What stood at the path stays until
// `Close`. What keeps it from being written is said on standard error.
class OutputFile {
 public:
  // An empty path or "-" is standard output. A file with content is replaced with `force` only.
  OutputFile(std::string path, bool force);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();  // without `Close` nothing is left of what was written

  [[nodiscard]] bool IsOpen() const { return is_open_; }
  [[nodiscard]] bool IsStandardOutput() const { return part_.empty(); }
  void Write(std::string_view text);

  // Puts the file in its place; kNotRun when that, or a write before it, failed.
  Status Close();

 private:
  std::string path_;
  std::string part_;  // what is written; empty for standard output
  std::FILE* file_ = nullptr;
  bool is_open_ = false;
};

}  // namespace tools
