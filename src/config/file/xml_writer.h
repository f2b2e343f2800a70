// Printing an XML document into a text. The document is well-formed whatever the texts in it hold:
// markup characters are escaped and characters that XML has no place for are left out.
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

  // Writes an element with what `write_content` writes meanwhile.
  template <class WriteContent>
  void Element(std::string_view name, Attributes attributes, const WriteContent& write_content) {
    const std::string kept(name);  // the printer remembers where it stands
    const bool stands_in_line = in_line_;
    printer_.OpenElement(kept.c_str(), stands_in_line);
    PushAttributes(attributes);
    write_content();
    printer_.CloseElement(in_line_);
    in_line_ = stands_in_line;
  }
  template <class WriteContent>
  void Element(std::string_view name, const WriteContent& write_content) {
    Element(name, {}, write_content);
  }

  // Writes what follows in the present element on the element's own line.
  void KeepOnLine() { in_line_ = true; }

  // Writes an element that holds a text, which may be empty.
  void TextElement(std::string_view name, std::string_view text);

  // Writes an element that has attributes and no content.
  void AttributeElement(std::string_view name, Attributes attributes) {
    Element(name, attributes, [] {});
  }

  // A blank parts hyphens that would end the comment.
  void Comment(std::string_view text);

  std::string Release() && { return std::move(printer_.document); }

 private:
  // The XML library's own buffer counts its bytes in an int.
  class Printer : public tinyxml2::XMLPrinter {
   public:
    std::string document;

   protected:
    void Write(const char* data, std::size_t size) override { document.append(data, size); }
    void Putc(char character) override { document += character; }
  };

  void PushAttributes(Attributes attributes);

  // Returns, until the next call, the text with the line ends of XML and without the characters
  // that XML cannot hold.
  const char* Clean(std::string_view text);

  Printer printer_;
  std::string clean_;
  bool in_line_ = false;
};

}  // namespace vexor
