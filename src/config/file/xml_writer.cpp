#include "config/file/xml_writer.h"

#include <algorithm>

#include "util/text.h"

namespace vexor {
namespace {

// XML 1.0 allows no control characters except tab and line ends, not even as references.
bool IsForbiddenInXml(char c) {
  return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n';
}

}  // namespace

// CR LF and CR become LF, which is what an XML parser reports for them. A bare CR must not reach
// the file: the XML library would read LF CR as one line end.
const char* XmlWriter::Clean(std::string_view text) {
  clean_.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      if (!text.substr(i + 1).starts_with('\n')) clean_ += '\n';
    } else if (!IsForbiddenInXml(text[i])) {
      clean_ += text[i];
    }
  }
  return clean_.c_str();
}

void XmlWriter::TextElement(std::string_view name, std::string_view text) {
  Element(name, [this, text] { printer_.PushText(Clean(text)); });
}

void XmlWriter::PushAttributes(Attributes attributes) {
  for (const Attribute& attribute : attributes) {
    printer_.PushAttribute(attribute.name, Clean(attribute.value));
  }
}

void XmlWriter::Comment(std::string_view text) {
  std::string comment;
  for (const char* c = Clean(text); *c != '\0'; ++c) {
    if (*c == '-' && comment.ends_with('-')) comment += ' ';
    comment += *c;
  }
  if (comment.ends_with('-')) comment += ' ';
  printer_.PushComment(comment.c_str());
}

}  // namespace vexor
