#include "source_line.h"

#include <algorithm>

#include "common/text_output.h"

namespace tools::vexorcfg {
namespace {

constexpr std::size_t kMostBefore = 60;  // bytes
constexpr std::size_t kMostBehind = 100;
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kCut = "...";

bool IsInner(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

std::size_t WidthOf(std::string_view text) {
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, IsInner));
}

std::string Plain(std::string_view text) {
  std::string plain(text);
  std::ranges::replace(plain, '\t', ' ');
  return OneLine(plain, std::string::npos);
}

// Returns the text in front of the place in its line, or the end of it.
std::string_view Before(std::string_view content, std::size_t at, bool& is_cut) {
  const std::size_t first = at - std::min(at, kMostBefore);
  std::string_view text = content.substr(first, at - first);
  const std::size_t end = text.find_last_of(kLineEnds);
  is_cut = end == std::string_view::npos && first > 0 && content[first - 1] != '\n';
  if (end != std::string_view::npos) text.remove_prefix(end + 1);
  while (is_cut && !text.empty() && IsInner(text.front())) text.remove_prefix(1);
  if (!is_cut) text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return text;
}

std::string_view ToLineEnd(std::string_view text) {
  return text.substr(0, text.find_first_of(kLineEnds));
}

// Cuts the text at a character's end.
std::string_view AtMost(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && IsInner(text[most])) --most;
  return text.substr(0, most);
}

}  // namespace

SourceLine CutSourceLine(std::string_view content, std::size_t at, std::size_t size) {
  at = std::min(at, content.size());
  bool is_cut = false;
  const std::string before = Plain(Before(content, at, is_cut));
  const std::string_view rest = ToLineEnd(content.substr(at, kMostBefore + 2 * kMostBehind));
  const std::string_view place = AtMost(rest.substr(0, size), kMostBehind);
  const std::string_view behind = AtMost(rest.substr(place.size()), kMostBehind - place.size());
  SourceLine line;
  line.text = is_cut ? std::string(kCut) : std::string();
  line.text += before;
  line.mark = WidthOf(line.text);
  line.width = std::max<std::size_t>(1, WidthOf(Plain(place)));
  line.text += Plain(place) + Plain(behind);
  if (place.size() + behind.size() < rest.size()) line.text += kCut;
  return line;
}

}  // namespace tools::vexorcfg
