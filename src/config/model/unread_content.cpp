#include "config/model/unread_content.h"

#include <algorithm>
#include <initializer_list>

#include "config/file/element_walk.h"
#include "config/model/element_path.h"
#include "config/tables/system_setup.h"
#include "util/text.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

// Returns whether a declaration could be omitted: "xml version="1.0" encoding="UTF-8"".
bool IsPlainDeclaration(std::string_view declaration) {
  if (!declaration.starts_with("xml ")) return false;
  const std::size_t encoding = declaration.find("encoding");
  return encoding == std::string_view::npos ||
         ContainsIgnoreCase(declaration.substr(encoding), "UTF-8");
}

class Lister {
 public:
  explicit Lister(const ReadMarks& read) : read_(read) {}

  std::vector<Unread> List(const tinyxml2::XMLDocument& document, const ElementModel& model) && {
    const XMLElement* const root = FindRoot(document);
    for (const XMLNode* node = document.FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (node != root) {
        ListNode(*node, nullptr, "");
        continue;
      }
      ListAttributes(*root, root->Name());
      ListChildren(*root, &model, "");
    }
    return std::move(unread_);
  }

 private:
  void Add(UnreadKind kind, const XMLNode& at, const std::string& path, std::string_view text) {
    unread_.push_back(
        {.kind = kind, .line = at.GetLineNum(), .path = path, .text = std::string(text)});
  }

  void ListChildren(const XMLNode& parent, const ElementModel* model, const std::string& path) {
    for (const XMLNode* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
      ListNode(*node, model, path);
    }
  }

  // `model` and `path` are those of the parent; the model of an unknown parent is null.
  void ListNode(const XMLNode& node, const ElementModel* model, const std::string& path) {
    const std::string_view text = node.Value();
    if (const XMLElement* const element = node.ToElement()) {
      ListElement(*element, model, path);
    } else if (node.ToComment() != nullptr) {
      Add(UnreadKind::kComment, node, path, text);
    } else if (node.ToText() == nullptr) {
      if (!IsPlainDeclaration(text)) Add(UnreadKind::kMarkup, node, path, text);
    } else if (!read_.IsMarked(&node) && !TrimSpace(text).empty()) {
      Add(UnreadKind::kText, node, path, TrimSpace(text));
    }
  }

  void ListElement(const XMLElement& element, const ElementModel* parent,
                   const std::string& parent_path) {
    const Content content = parent == nullptr ? Content::kChildren : parent->content;
    const char* const argument =
        content == Content::kArguments ? element.Attribute("name") : nullptr;
    const std::string name = argument == nullptr ? element.Name() : argument;
    const std::string path = JoinPath(parent_path, ShortenName(name));
    const ElementModel* const model = parent == nullptr ? nullptr : FindChild(*parent, name);
    const std::size_t before = unread_.size();
    if (argument != nullptr) {
      ListArgument(element, path);
    } else {
      ListAttributes(element, path);
    }
    ListChildren(element, model, path);
    const bool is_known = model != nullptr || content == Content::kTraces ||
                          (content == Content::kPairs && IsPair(element, *parent));
    if (!is_known && unread_.size() == before) Add(UnreadKind::kElement, element, path, "");
  }

  // Returns whether an element is a named value: it has a value or a known name.
  [[nodiscard]] bool IsPair(const XMLElement& element, const ElementModel& parent) const {
    const auto& values = parent.list->values;
    return read_.IsMarked(element.FirstChild()) ||
           std::ranges::find(values, element.Name(), &OptionRow::name) != values.end();
  }

  // Reports an unread value like a text, which it is in other elements.
  void ListArgument(const XMLElement& argument, const std::string& path) {
    const tinyxml2::XMLAttribute* const value = argument.FindAttribute("val");
    if (value != nullptr && !read_.IsMarked(value) && *value->Value() != '\0') {
      Add(UnreadKind::kText, argument, path, value->Value());
    }
    ListAttributes(argument, path, {"name", "val"});
  }

  void ListAttributes(const XMLElement& element, const std::string& path,
                      std::initializer_list<std::string_view> known = {}) {
    for (const tinyxml2::XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
      if (std::ranges::find(known, a->Name()) != known.end()) continue;
      Add(UnreadKind::kAttribute, element, path,
          std::string(a->Name()).append("=\"").append(a->Value()).append("\""));
    }
  }

  const ReadMarks& read_;
  std::vector<Unread> unread_;
};

}  // namespace

void ReadMarks::MarkText(const XMLElement& element) {
  const XMLNode* const text = element.FirstChild();
  if (text != nullptr && text->ToText() != nullptr) marked_.insert(text);
}

void ReadMarks::MarkArgument(const XMLElement& argument) {
  marked_.insert(argument.FindAttribute("val"));
}

std::vector<Unread> ListUnread(const tinyxml2::XMLDocument& document, const ElementModel& model,
                               const ReadMarks& read) {
  return Lister(read).List(document, model);
}

}  // namespace vexor
