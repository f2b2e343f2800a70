// Writes a file piece by piece.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "common/status.h"

namespace tools {

// A file that is written piece by piece, or standard output. A file that was at the path stays
// until `Close` replaces it. Errors are printed on standard error.
class OutputFile {
 public:
  // An empty path or "-" is standard output. A file with content is replaced only with `force`.
  OutputFile(std::string path, bool force);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();  // without `Close`, removes what was written

  [[nodiscard]] bool IsOpen() const { return is_open_; }
  [[nodiscard]] bool IsStandardOutput() const { return part_.empty(); }
  void Write(std::string_view text);

  // Moves the file to its path; kNotRun if that or an earlier write failed.
  Status Close();

 private:
  std::string path_;
  std::string part_;  // path of the temporary file; empty for standard output
  std::FILE* file_ = nullptr;
  bool is_open_ = false;
};

}  // namespace tools
