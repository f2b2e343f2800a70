#include "error_words.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "vexor/syntax/error_codes.h"

namespace tools::vexorlog {
namespace {

constexpr std::string_view kPrefix = "EC_";

struct Category {
  std::uint32_t bits;
  std::string_view name;
};

constexpr std::array<Category, 15> kCategories = {{{0x1, "configuration"},
                                                   {0x2, "P-state or turbo"},
                                                   {0x4, "C-state"},
                                                   {0x8, "sleep"},
                                                   {0x20, "system"},
                                                   {0x40, "uncore clock domain"},
                                                   {0x80, "tracing"},
                                                   {0x180, "reset"},
                                                   {0x280, "image-processing unit"},
                                                   {0x480, "T-state"},
                                                   {0x880, "SDC"},
                                                   {0x1080, "graphics"},
                                                   {0x2080, "PCIe"},
                                                   {0x20080, "PECI"},
                                                   {0x40080, "VPU"}}};
constexpr std::uint32_t kFirstDetail = 0x00100000;
constexpr std::uint32_t kLastDetail = 0x80000000;

bool IsWordPart(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string FormatCode(std::uint32_t code) {
  std::array<char, 16> text = {};
  std::snprintf(text.data(), text.size(), "0x%08X", code);
  return text.data();
}

bool Prints(VEXOR_PM_TEST_ID test, std::uint32_t code, std::string_view word) {
  const std::string text = GetErrorCode(test, code);
  const auto words = FindErrorWords(text);
  return std::ranges::find(words, word) != words.end();
}

std::string DescribeCategory(std::uint32_t code) {
  const auto found = std::ranges::find(kCategories, code & (kFirstDetail - 1), &Category::bits);
  return found == kCategories.end() ? "error" : std::string(found->name) + " error";
}

// Returns the codes of eight digits in a text, such as "0x00200004".
std::vector<std::uint32_t> FindCodes(std::string_view text) {
  constexpr std::string_view kMark = "0x";
  constexpr std::size_t kDigits = 8;
  std::vector<std::uint32_t> codes;
  for (std::size_t at = text.find(kMark); at != std::string_view::npos;
       at = text.find(kMark, at + 1)) {
    const std::string_view digits = text.substr(at + kMark.size(), kDigits);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    if (error == std::errc() && end == digits.data() + kDigits) codes.push_back(code);
  }
  return codes;
}

}  // namespace

std::vector<std::string_view> FindErrorWords(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t at = text.find(kPrefix); at != std::string_view::npos;
       at = text.find(kPrefix, at + 1)) {
    if (at > 0 && IsWordPart(text[at - 1])) continue;
    std::size_t end = at;
    while (end < text.size() && IsWordPart(text[end])) ++end;
    const std::string_view word = text.substr(at, end - at);
    if (std::ranges::find(words, word) == words.end()) words.push_back(word);
  }
  return words;
}

std::string KindOfFailure(std::string_view what) {
  std::string kind;
  for (const std::string_view word : FindErrorWords(what)) {
    kind.append(kind.empty() ? "" : " ").append(word);
  }
  if (!kind.empty()) return kind;
  for (const char c : what) {
    if (!IsDigit(c)) {
      kind += c;
    } else if (!kind.ends_with('#')) {
      kind += '#';
    }
  }
  return kind;
}

std::optional<std::uint32_t> FindErrorCode(VEXOR_PM_TEST_ID test, std::string_view word) {
  for (const Category& category : kCategories) {
    if (Prints(test, category.bits, word)) return category.bits;
  }
  // A few words stand for two detail bits.
  for (std::uint32_t second = 0;; second = second == 0 ? kFirstDetail : second << 1U) {
    for (const Category& category : kCategories) {
      for (std::uint32_t first = kFirstDetail; first != 0; first <<= 1U) {
        const std::uint32_t code = category.bits | first | second;
        if (Prints(test, code, word)) return code;
      }
    }
    if (second == kLastDetail) break;
  }
  return std::nullopt;
}

std::vector<std::string> ExplainErrors(VEXOR_PM_TEST_ID test, std::string_view text) {
  std::vector<std::string> lines;
  std::vector<std::string> told;
  for (const std::uint32_t code : FindCodes(text)) {
    if (code == 0) continue;
    std::string details;
    std::string category;
    const std::string tags = GetErrorCode(test, code);
    for (const std::string_view word : FindErrorWords(tags)) {
      told.emplace_back(word);
      const bool is_category = Prints(test, code & (kFirstDetail - 1), word);
      std::string& list = is_category ? category : details;
      list.append(list.empty() ? "" : ", ").append(word);
    }
    std::string line = FormatCode(code) + ": " + DescribeCategory(code);
    if (!category.empty()) line += " (" + category + ")";
    if (!details.empty()) line += ": " + details;
    lines.push_back(std::move(line));
  }
  for (const std::string_view word : FindErrorWords(text)) {
    const std::optional<std::uint32_t> code = FindErrorCode(test, word);
    if (!code || std::ranges::find(told, word) != told.end()) continue;
    lines.push_back(std::string(word) + ": " + DescribeCategory(*code) + ", code " +
                    FormatCode(*code));
  }
  return lines;
}

}  // namespace tools::vexorlog
