#include "common/uri.h"

#include "common/files.h"

namespace tools {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kDigits = "0123456789";

constexpr bool IsOneOf(std::string_view set, char c) {
  return set.find(c) != std::string_view::npos;
}

constexpr bool IsPlain(char c) {
  return IsOneOf(kLetters, c) || IsOneOf(kDigits, c) || IsOneOf("-._~/", c);
}

void AppendEscaped(std::string& uri, char c) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  uri.append("%").append(1, kHexDigits[byte / 16U]).append(1, kHexDigits[byte % 16U]);
}

bool HasScheme(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || colon < 2 || !IsOneOf(kLetters, text.front())) {
    return false;
  }
  for (const char c : text.substr(0, colon)) {
    if (!IsOneOf(kLetters, c) && !IsOneOf(kDigits, c) && !IsOneOf("+-.", c)) return false;
  }
  return true;
}

}  // namespace

std::string UriOfPath(std::string_view path) {
  std::string uri;
  for (const char c : path) {
    if (IsPlain(c)) {
      uri += c;
    } else if (IsOneOf(kSeparators, c)) {
      uri += '/';
    } else {
      AppendEscaped(uri, c);
    }
  }
  if (uri.starts_with('/')) return "file://" + uri;
  const bool has_drive = kIsWindows && uri.substr(0, 5).ends_with("%3A/");
  return has_drive ? "file:///" + uri.replace(1, 3, ":") : uri;
}

std::string UriOf(std::string_view text) {
  if (!HasScheme(text)) return UriOfPath(text);
  std::string uri;
  for (const char c : text) {
    if (IsPlain(c) || IsOneOf(":?#[]@!$&'()*+,;=%", c)) {
      uri += c;
    } else {
      AppendEscaped(uri, c);
    }
  }
  return uri;
}

}  // namespace tools
