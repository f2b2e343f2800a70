// Reads the bytes of a log file that other programs may write, shorten or replace meanwhile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

#include "platform/platform.h"
#include "vexor/logging/log_reader.h"

namespace vexor {

class LogSource {
 public:
  LogSource() = default;
  LogSource(const LogSource&) = delete;
  LogSource& operator=(const LogSource&) = delete;
  ~LogSource() { Close(); }

  // With `keep_open` false, the file is closed after every read, unless it is a pipe or a device.
  // With `follow`, a read at the end of the data also checks whether the path still leads to this
  // file.
  std::error_code Open(const std::string& path, bool keep_open, bool follow);
  void Close();

  // Reads the next bytes; `size` is above 0. A count of 0 is the end of the data for now, or an
  // error.
  std::size_t Read(char* bytes, std::size_t size);

  [[nodiscard]] std::error_code Error() const { return error_; }
  [[nodiscard]] LogFileChange Change() const { return change_; }

 private:
  std::error_code Reopen();
  void LookAtEnd();
  [[nodiscard]] bool BeginsAsBefore() const;

  std::string path_;
  bool keep_open_ = true;
  bool follow_ = false;
  FileHandle handle_ = kNoFile;
  FileIdentity identity_;
  std::uint64_t position_ = 0;
  bool was_at_end_ = false;
  std::vector<char> beginning_;  // first bytes of the file, to notice that it was written anew
  std::error_code error_;
  LogFileChange change_ = LogFileChange::kNone;
};

}  // namespace vexor
