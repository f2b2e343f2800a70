#include "config/file/element_walk.h"

#include <string>

#include "util/text.h"

namespace vexor {

const tinyxml2::XMLElement* FindElement(const tinyxml2::XMLElement* parent, std::string_view name) {
  return parent == nullptr ? nullptr : parent->FirstChildElement(std::string(name).c_str());
}

const tinyxml2::XMLElement* FindRoot(const tinyxml2::XMLDocument& document) {
  return document.FirstChildElement(std::string(NameOf(Section::kRoot)).c_str());
}

const tinyxml2::XMLElement* FindSection(const tinyxml2::XMLElement* root, Section section) {
  if (section == Section::kRoot) return root;
  const SectionRow& row = RowOf(section);
  const tinyxml2::XMLElement* const parent = FindSection(root, row.parent);
  const tinyxml2::XMLElement* const element = FindElement(parent, row.name);
  return element != nullptr || row.older.empty() ? element : FindElement(parent, row.older);
}

std::optional<std::string_view> TrimmedText(const tinyxml2::XMLElement& element) {
  const tinyxml2::XMLNode* const child = element.FirstChild();
  if (child == nullptr || child->ToText() == nullptr) return std::nullopt;
  return TrimSpace(child->Value());
}

std::string_view TextOf(const tinyxml2::XMLElement& element) {
  return TrimmedText(element).value_or("");
}

bool IsTrue(const tinyxml2::XMLElement& element) {
  const tinyxml2::XMLNode* const child = element.FirstChild();
  return child != nullptr && std::string_view(child->Value()) == "true";
}

}  // namespace vexor
