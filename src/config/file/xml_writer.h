// Prints an XML document into a string. Any text gives a well-formed document: markup characters
// are escaped, and characters that XML forbids are dropped.
//
//   XmlWriter out;
//   out.Element("VEXOR", [&out] { out.TextElement("Version", "3.21.522.0"); });
//   std::string document = std::move(out).Release();
#pragma once

#include <tinyxml2.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace vexor {

class XmlWriter {
 public:
  struct Attribute {
    const char* name;
    std::string_view value;
  };
  using Attributes = std::initializer_list<Attribute>;

  // Writes an element whose content `write_content` writes.
  template <class WriteContent>
  void Element(std::string_view name, Attributes attributes, const WriteContent& write_content) {
    const std::string kept(name);  // the printer keeps the pointer until the element is closed
    const bool was_in_line = in_line_;
    printer_.OpenElement(kept.c_str(), was_in_line);
    PushAttributes(attributes);
    write_content();
    printer_.CloseElement(in_line_);
    in_line_ = was_in_line;
  }
  template <class WriteContent>
  void Element(std::string_view name, const WriteContent& write_content) {
    Element(name, {}, write_content);
  }

  // Writes the rest of the current element on its own line.
  void KeepOnLine() { in_line_ = true; }

  // Writes an element with a text, which may be empty.
  void TextElement(std::string_view name, std::string_view text);

  // Writes an element with attributes and no content.
  void AttributeElement(std::string_view name, Attributes attributes) {
    Element(name, attributes, [] {});
  }

  // Writes a comment. Consecutive hyphens, which XML forbids there, are separated by blanks.
  void Comment(std::string_view text);

  std::string Release() && { return std::move(printer_.document); }

 private:
  // Collects the output in a string: the XML library's own buffer is limited to 2 GiB.
  class Printer : public tinyxml2::XMLPrinter {
   public:
    std::string document;

   protected:
    void Write(const char* data, std::size_t size) override { document.append(data, size); }
    void Putc(char character) override { document += character; }
  };

  void PushAttributes(Attributes attributes);

  // Returns the text with normalised line ends and without forbidden characters. The result is
  // valid until the next call.
  const char* Clean(std::string_view text);

  Printer printer_;
  std::string clean_;
  bool in_line_ = false;
};

}  // namespace vexor
