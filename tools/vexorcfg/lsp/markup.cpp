#include "markup.h"

#include <algorithm>

namespace tools::vexorcfg::lsp {

void Markup::Add(std::string_view name, const std::string& text) {
  if (text.empty()) return;
  if (!text_.empty()) text_ += "\n\n";
  if (!name.empty()) text_ += Bold(std::string(name) + ":") + " ";
  text_ += text;
}

std::string Markup::Plain(std::string_view text) const {
  if (!is_markdown_) return std::string(text);
  constexpr std::string_view kSpecial = "\\`*<[&";
  std::string escaped;
  for (const char c : text) {
    if (kSpecial.find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// A span of code ends with as many backticks as it begins with: more than any run in it.
std::string Markup::Code(std::string_view text) const {
  if (!is_markdown_ || text.empty()) return std::string(text);
  std::size_t longest = 0;
  std::size_t run = 0;
  for (const char c : text) longest = std::max(longest, run = c == '`' ? run + 1 : 0);
  const std::string fence(longest + 1, '`');
  const std::string_view gap = text.front() == '`' || text.back() == '`' ? " " : "";
  return fence + std::string(gap).append(text).append(gap) + fence;
}

std::string Markup::Bold(std::string_view text) const {
  return is_markdown_ ? "**" + Plain(text) + "**" : std::string(text);
}

Json Markup::MakeContent() const {
  return {{"kind", is_markdown_ ? "markdown" : "plaintext"}, {"value", text_}};
}

}  // namespace tools::vexorcfg::lsp
