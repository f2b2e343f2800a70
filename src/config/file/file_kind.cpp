#include "config/file/file_kind.h"

#include <algorithm>

#include "util/text.h"

namespace vexor {
namespace {

using namespace std::literals;

struct OpeningRow {
  std::string_view bytes;
  std::string_view name;
};

// The first match counts: longer openings come before their prefixes.
constexpr OpeningRow kOpenings[] = {
    {"\xFF\xFE\0\0"sv, "the file is UTF-32 text"},
    {"\0\0\xFE\xFF"sv, "the file is UTF-32 text"},
    {"\xFF\xFE"sv, "the file is UTF-16 text (little-endian)"},
    {"\xFE\xFF"sv, "the file is UTF-16 text (big-endian)"},
    {"<\0"sv, "the file is UTF-16 text (little-endian, without a byte-order mark)"},
    {"\0<"sv, "the file is UTF-16 text (big-endian, without a byte-order mark)"},
    {"\x1F\x8B"sv, "the file is a gzip archive"},
    {"PK\x03\x04"sv, "the file is a ZIP archive"},
    {"\x7F"
     "ELF"sv,
     "the file is a program"},
};

std::string NameZeroBytes(std::string_view content) {
  const std::size_t zeros = std::min(content.find_first_not_of('\0'), content.size());
  if (zeros == content.size()) return "the file holds only zero bytes, as after a power cut";
  return "the file begins with " + std::to_string(zeros) + " zero byte" + (zeros == 1 ? "" : "s");
}

bool IsBinary(std::string_view content) {
  constexpr std::size_t kSampleSize = 4096;
  return std::ranges::any_of(content.substr(0, kSampleSize), [](char c) {
    const bool is_control = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    return is_control && (c < '\t' || c > '\r') && c != '\x1B';
  });
}

bool IsNamePart(char c) {
  return (ToUpper(c) >= 'A' && ToUpper(c) <= 'Z') || IsDecDigit(c) || c == '_' || c == '-' ||
         c == '.' || c == ' ';
}

// Returns whether a line is "[Section]" or "key = value".
bool IsSettingLine(std::string_view line) {
  if (line.starts_with('[')) {
    return line.ends_with(']') && line.size() > 2 &&
           std::ranges::all_of(line.substr(1, line.size() - 2), IsNamePart) && !IsDecDigit(line[1]);
  }
  const std::size_t equals = line.find('=');
  return equals != std::string_view::npos && equals > 0 &&
         std::ranges::all_of(line.substr(0, equals), IsNamePart);
}

// Decides by the first line that is not a comment.
bool IsIni(std::string_view content) {
  for (std::string_view line; TakeItem(content, '\n', line);) {
    line = TrimSpace(line);
    if (!line.empty() && !line.starts_with(';') && !line.starts_with('#')) {
      return IsSettingLine(line);
    }
  }
  return false;
}

}  // namespace

std::string NameForeignContent(std::string_view content) {
  if (content.empty()) return "the file is empty";
  for (const OpeningRow& row : kOpenings) {
    if (content.starts_with(row.bytes)) return std::string(row.name);
  }
  if (content.starts_with('\0')) return NameZeroBytes(content);
  if (content.starts_with("\xEF\xBB\xBF")) content.remove_prefix(3);
  const std::string_view text = TrimSpace(content);
  if (text.empty()) return "the file contains only white space";
  if (text.starts_with('<')) return {};
  if (IsBinary(content)) return "the file is binary";
  if (IsIni(text)) return "the file is an INI file";
  if (text.starts_with('{') || text.starts_with('[')) return "the file is JSON";
  return "the file is text, but not XML";
}

}  // namespace vexor
