#include "vexor/config/element_access.h"

#include "config/file/element_walk.h"

namespace vexor {
namespace {

const tinyxml2::XMLElement* FindChild(const tinyxml2::XMLElement* parent, const char* name) {
  if (parent == nullptr || name == nullptr) return nullptr;
  return parent->FirstChildElement(name);
}

// Returns the text without trimming. Only the first child node counts.
const char* FirstText(const tinyxml2::XMLElement& element) {
  const tinyxml2::XMLNode* const child = element.FirstChild();
  if (child == nullptr || child->ToText() == nullptr) return nullptr;
  return child->Value();
}

}  // namespace
}  // namespace vexor

using namespace vexor;

std::string GetXMLText(const tinyxml2::XMLElement* parent, const char* name,
                       std::string_view fallback) {
  const tinyxml2::XMLElement* const element = FindChild(parent, name);
  if (element == nullptr) return std::string(fallback);
  return std::string(TrimmedText(*element).value_or(fallback));
}

bool GetXMLBOOL(const tinyxml2::XMLElement* parent, const char* name, bool fallback) {
  const tinyxml2::XMLElement* const element = FindChild(parent, name);
  return element == nullptr || element->FirstChild() == nullptr ? fallback : IsTrue(*element);
}

std::string getElementText(const tinyxml2::XMLElement* element) {
  const char* const text = element == nullptr ? nullptr : FirstText(*element);
  return text == nullptr ? "" : text;
}

std::string getElementAttribute(const tinyxml2::XMLElement* element, const char* name,
                                std::string_view fallback) {
  const char* const value =
      element == nullptr || name == nullptr ? nullptr : element->Attribute(name);
  return std::string(value == nullptr ? fallback : value);
}
