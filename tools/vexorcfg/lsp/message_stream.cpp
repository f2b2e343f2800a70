#include "message_stream.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <optional>
#include <ostream>

namespace tools::vexorcfg::lsp {
namespace {

constexpr std::string_view kLengthHeader = "content-length:";
constexpr std::size_t kMostKept = 4096;  // bytes of a line; headers are much shorter

char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

// Returns the text behind the header's name, wherever in the line that stands: what is left of a
// body whose length was wrong may stand in front of it.
std::optional<std::string_view> FindLength(std::string_view line) {
  const auto found =
      std::search(line.begin(), line.end(), kLengthHeader.begin(), kLengthHeader.end(),
                  [](char a, char b) { return ToLower(a) == b; });
  if (found == line.end()) return std::nullopt;
  return line.substr(static_cast<std::size_t>(found - line.begin()) + kLengthHeader.size());
}

// Returns nothing for a text that is no number; kMostBytes + 1 for any number beyond that.
std::optional<std::size_t> ParseLength(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  text = text.substr(0, text.find_last_not_of(" \t") + 1);
  std::size_t length = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, length);
  if (text.empty() || stop != end || error == std::errc::invalid_argument) return std::nullopt;
  constexpr std::size_t kTooMuch = MessageReader::kMostBytes + 1;
  return error == std::errc::result_out_of_range ? kTooMuch : std::min(length, kTooMuch);
}

// Whether a line may be one of the headers that are ignored.
bool IsOtherHeader(std::string_view line) {
  const std::size_t colon = line.find(':');
  return colon != std::string_view::npos && colon > 0 &&
         line.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-") == colon;
}

Frame Fault(std::string_view fault) {
  return {.kind = Frame::Kind::kFault, .body = {}, .fault = fault};
}

}  // namespace

bool MessageReader::ReadLine() {
  line_.clear();
  for (int c = in_.get(); c != std::istream::traits_type::eof(); c = in_.get()) {
    if (c == '\n') {
      if (line_.ends_with('\r')) line_.pop_back();
      return true;
    }
    if (line_.size() == 2 * kMostKept) line_.erase(0, kMostKept);
    line_.push_back(static_cast<char>(c));
  }
  return false;
}

Frame MessageReader::ReadBody(std::size_t size) {
  constexpr std::size_t kPiece = std::size_t{1} << 20U;  // so that a wrong length costs no memory
  Frame frame{.kind = Frame::Kind::kBody, .body = {}};
  while (frame.body.size() < size) {
    const std::size_t former = frame.body.size();
    frame.body.resize(former + std::min(kPiece, size - former));
    const auto wanted = static_cast<std::streamsize>(frame.body.size() - former);
    if (!in_.read(frame.body.data() + former, wanted)) return {};
  }
  return frame;
}

Frame MessageReader::Read() {
  std::optional<std::size_t> length;
  while (ReadLine()) {
    if (const auto text = FindLength(line_)) {
      length = ParseLength(*text);
      if (length && *length <= kMostBytes) continue;
      is_skipping_ = true;
      return Fault(length ? "Content-Length is more than 256 MiB" : "Content-Length is no number");
    }
    if (line_.empty() && length) {
      is_skipping_ = false;
      return ReadBody(*length);
    }
    if (!line_.empty() && !IsOtherHeader(line_) && !is_skipping_) {
      is_skipping_ = true;
      return Fault("bytes without a Content-Length");
    }
  }
  return {};
}

void WriteMessage(std::ostream& out, const Json& message) {
  const std::string body = PrintJson(message);
  out << "Content-Length: " << body.size() << "\r\n\r\n" << body << std::flush;
}

}  // namespace tools::vexorcfg::lsp
