// Messages of the Language Server Protocol on byte streams: "Content-Length: N", an empty line, and
// N bytes of JSON.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "common/json.h"

namespace tools::vexorcfg::lsp {

// What was read from a stream.
struct Frame {
  enum class Kind { kBody, kFault, kEnd };
  Kind kind = Kind::kEnd;
  std::string body;
  std::string_view fault = {};  // why there is no body
};

// Reads messages one after another. Bytes that belong to no message are skipped up to the next
// header, and reported once.
class MessageReader {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{256} << 20U;  // of a body

  explicit MessageReader(std::istream& in) : in_(in) {}

  // Waits for the next message or fault. A message that the stream's end cuts off is dropped.
  Frame Read();

 private:
  bool ReadLine();
  Frame ReadBody(std::size_t size);

  std::istream& in_;
  std::string line_;          // without its end; of a long line the last part
  bool is_skipping_ = false;  // bytes between messages, which were reported already
};

// Writes a message and flushes the stream.
void WriteMessage(std::ostream& out, const Json& message);

}  // namespace tools::vexorcfg::lsp
