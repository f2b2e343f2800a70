#include "config/texts/text_pattern.h"

#include <algorithm>
#include <span>

#include "config/texts/syntax_table.h"
#include "syntax/time_units.h"
#include "util/text.h"

namespace vexor {
namespace {

constexpr std::string_view kNumber = "([0-9]+|0[xX][0-9A-Fa-f]+)";
constexpr std::string_view kRatio = R"((P0(\+\+|Pn)?|P1|Pe|Pn(--| - -)?|XX|All|ALL|%n(-%n)?))";

char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// XML Schema has no flag to ignore case: "(AC|DC)" becomes "([Aa][Cc]|[Dd][Cc])".
std::string InAnyCase(std::string_view words) {
  std::string pattern;
  for (const char c : words) {
    if (ToUpper(c) == ToLower(c)) {
      pattern += c;
    } else {
      pattern.append("[").append(1, ToUpper(c)).append(1, ToLower(c)).append("]");
    }
  }
  return pattern;
}

// Returns "(AC|DC)".
std::string AnyOf(std::span<const std::string_view> words) {
  std::string pattern;
  for (const std::string_view word : words) {
    pattern.append(pattern.empty() ? "(" : "|").append(word);
  }
  return pattern + ")";
}

// Asks the check itself, with the case of all letters swapped, so that a row need not say it.
bool IgnoresCase(const OptionRow& option, std::string_view word) {
  std::string other(word);
  for (char& c : other) c = c == ToLower(c) ? ToUpper(c) : ToLower(c);
  return option.words.empty() && !CheckOption(option, other).has_value();
}

std::string WordPattern(const OptionRow& option) {
  const Words words = GetWords(option);
  const std::string pattern = AnyOf(words);
  return IgnoresCase(option, words.front()) ? InAnyCase(pattern) : pattern;
}

// Expands the placeholders of a row's pattern, which syntax_table.h lists.
std::string Expand(std::string_view pattern, const OptionRow& option) {
  std::string expanded;
  while (!pattern.empty()) {
    const std::size_t sign = std::min(pattern.find('%'), pattern.size());
    expanded += pattern.substr(0, sign);
    pattern.remove_prefix(sign);
    if (pattern.starts_with("%w")) expanded += WordPattern(option);
    if (pattern.starts_with("%n")) expanded += kNumber;
    if (pattern.starts_with("%r")) expanded += Expand(kRatio, option);
    if (pattern.starts_with("%u")) expanded += InAnyCase(AnyOf(kUnitWords));
    const bool is_group = pattern.starts_with("%(");
    const std::size_t end =
        is_group ? pattern.find(')') + 1 : std::min<std::size_t>(2, pattern.size());
    if (is_group) expanded += InAnyCase(pattern.substr(1, end - 1));
    pattern.remove_prefix(end);
  }
  return expanded;
}

}  // namespace

bool HasPlainWords(const OptionRow& option) {
  const SyntaxRow& syntax = GetSyntax(option.syntax);
  return syntax.pattern == "%w" && syntax.separators.empty() &&
         !IgnoresCase(option, GetWords(option).front());
}

std::string MakePattern(const OptionRow& option) {
  const SyntaxRow& syntax = GetSyntax(option.syntax);
  if (syntax.pattern.empty()) return {};
  const std::string item = "(" + Expand(syntax.pattern, option) + ")";
  if (syntax.separators.empty()) return item + "?";
  const std::string between = "[ " + std::string(syntax.separators) + "]";
  return between + "*(" + item + "(" + between + "+" + item + ")*" + between + "*)?";
}

}  // namespace vexor
