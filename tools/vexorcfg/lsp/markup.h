// Texts that an editor shows to people, as Markdown or as plain text.
#pragma once

#include <string>
#include <string_view>

#include "common/json.h"

namespace tools::vexorcfg::lsp {

// Paragraphs, of which each may have a name: "Default: All".
class Markup {
 public:
  explicit Markup(bool is_markdown) : is_markdown_(is_markdown) {}

  // Adds a paragraph of a text made by the functions below; none if it is empty.
  void Add(std::string_view name, const std::string& text);

  // Returns a text of ours or of a document so that no character of it acts as markup.
  [[nodiscard]] std::string Plain(std::string_view text) const;

  // The same, in a fixed-width font.
  [[nodiscard]] std::string Code(std::string_view text) const;
  [[nodiscard]] std::string Bold(std::string_view text) const;

  [[nodiscard]] bool IsEmpty() const { return text_.empty(); }

  // Returns the paragraphs as "MarkupContent".
  [[nodiscard]] Json MakeContent() const;

 private:
  bool is_markdown_;
  std::string text_;
};

}  // namespace tools::vexorcfg::lsp
