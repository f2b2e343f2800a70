#include "vexor/config/schema.h"

#include <algorithm>
#include <memory>

#include "config/file/xml_writer.h"
#include "config/model/document_model.h"
#include "config/tables/sections.h"
#include "config/texts/syntax_table.h"
#include "config/texts/text_pattern.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;

class SchemaWriter {
 public:
  std::string Write(const ElementModel& root) &&;

 private:
  // The type of an element that holds elements. Elements with the same options share one.
  struct ComplexType {
    std::string name;
    const ElementModel* element;
  };

  void WriteElement(const ElementModel& element, const std::string& parent);
  std::string TypeOf(const ElementModel& element, const std::string& parent);
  std::string TextTypeOf(const OptionRow* option);
  std::string ComplexTypeOf(const ElementModel& element, const std::string& parent);
  static bool HasSameOptions(const ElementModel& a, const ElementModel& b);
  void WriteComplexType(const ComplexType& type);
  void WriteAnyElements();
  void WriteArguments(const ElementModel& section);
  void WriteAbout(const ElementModel& element);
  void WriteDocumentation(std::string_view text);
  void WriteSwitchType();
  void WriteTextType(const OptionRow& option);
  void WriteTexts(const OptionRow& option);
  void WriteWords(std::string_view base, Words words);

  XmlWriter out_;
  std::vector<ComplexType> types_;       // in the order in which they are first used
  std::vector<const OptionRow*> texts_;  // one option for each grammar in use
};

std::string SchemaWriter::Write(const ElementModel& root) && {
  out_.Element("xs:schema", {{"xmlns:xs", "http://www.w3.org/2001/XMLSchema"}}, [&] {
    out_.Comment(
        " Configuration files of VexorUtils, made from its option tables. Elements may be in any "
        "order. ");
    WriteElement(root, "");
    std::size_t written = 0;
    while (written < types_.size()) {
      const ComplexType type = types_[written++];  // a copy: writing adds more types
      WriteComplexType(type);
    }
    WriteSwitchType();
    for (const OptionRow* const option : texts_) WriteTextType(*option);
  });
  return std::move(out_).Release();
}

void SchemaWriter::WriteElement(const ElementModel& element, const std::string& parent) {
  const OptionRow* const option = element.option;
  const bool has_own_words = option != nullptr && HasOwnWords(option->syntax);
  if (has_own_words) {
    out_.Element("xs:element", {{"name", element.name}}, [&] {
      WriteAbout(element);
      out_.Element("xs:simpleType", [&] { WriteTexts(*option); });
    });
  } else {
    out_.Element("xs:element", {{"name", element.name}, {"type", TypeOf(element, parent)}},
                 [&] { WriteAbout(element); });
  }
}

// `parent` is the type of the parent element.
std::string SchemaWriter::TypeOf(const ElementModel& element, const std::string& parent) {
  switch (element.content) {
    case Content::kSwitch:
      return "switch";
    case Content::kVersion:
    case Content::kCounter:
      return "xs:string";
    case Content::kOption:
    case Content::kItem:
      return TextTypeOf(element.option);
    case Content::kChildren:
    case Content::kArguments:
    case Content::kPairs:
    case Content::kTraces:
      break;
  }
  return ComplexTypeOf(element, parent);
}

std::string SchemaWriter::TextTypeOf(const OptionRow* option) {
  if (option == nullptr || MakePattern(*option).empty()) return "xs:string";
  if (option->flag != nullptr) return "switch";
  const auto has_its_syntax = [option](const OptionRow* other) {
    return other->syntax == option->syntax;
  };
  if (std::ranges::none_of(texts_, has_its_syntax)) texts_.push_back(option);
  return std::string(GetSyntax(option->syntax).name);
}

std::string SchemaWriter::ComplexTypeOf(const ElementModel& element, const std::string& parent) {
  for (const ComplexType& known : types_) {
    if (HasSameOptions(*known.element, element)) return known.name;
  }
  std::string name(element.name);
  const bool is_taken = std::ranges::find(types_, name, &ComplexType::name) != types_.end();
  if (is_taken) name = parent + "." + name;
  types_.push_back({name, &element});
  return name;
}

bool SchemaWriter::HasSameOptions(const ElementModel& a, const ElementModel& b) {
  return !a.children.empty() && !b.children.empty() &&
         a.children.front().content == Content::kOption &&
         a.children.front().option == b.children.front().option;
}

void SchemaWriter::WriteComplexType(const ComplexType& type) {
  out_.Element("xs:complexType", {{"name", type.name}}, [&] {
    const Content content = type.element->content;
    if (content == Content::kArguments) return WriteArguments(*type.element);
    if (content == Content::kPairs || content == Content::kTraces) return WriteAnyElements();
    out_.Element("xs:choice", {{"minOccurs", "0"}, {"maxOccurs", "unbounded"}}, [&] {
      for (const ElementModel& child : type.element->children) {
        WriteElement(child, type.name);
      }
    });
  });
}

void SchemaWriter::WriteAnyElements() {
  out_.Element("xs:sequence", [&] {
    out_.AttributeElement(
        "xs:any", {{"minOccurs", "0"}, {"maxOccurs", "unbounded"}, {"processContents", "skip"}});
  });
}

void SchemaWriter::WriteArguments(const ElementModel& section) {
  const auto write_names = [&] {
    for (const ElementModel& argument : section.children) {
      out_.Element("xs:enumeration", {{"value", argument.name}}, [&] { WriteAbout(argument); });
    }
  };
  const auto write_attributes = [&] {
    out_.Element("xs:attribute", {{"name", "name"}, {"use", "required"}}, [&] {
      out_.Element("xs:simpleType", [&] {
        out_.Element("xs:restriction", {{"base", "xs:string"}}, write_names);
      });
    });
    out_.AttributeElement("xs:attribute", {{"name", "val"}, {"type", "xs:string"}});
    out_.AttributeElement("xs:attribute", {{"name", "randVal"}, {"type", "xs:string"}});
  };
  out_.Element("xs:sequence", {{"minOccurs", "0"}, {"maxOccurs", "unbounded"}}, [&] {
    out_.Element("xs:element", {{"name", kArgumentElement}},
                 [&] { out_.Element("xs:complexType", write_attributes); });
  });
}

// Must be called first in an element. Keeps the rest of the element on one line.
void SchemaWriter::WriteAbout(const ElementModel& element) {
  out_.KeepOnLine();
  const std::string about = element.IsOlder()
                                ? "Older name of " + JoinWithAnd(element.currents) + "."
                                : std::string(element.about);
  if (!about.empty()) WriteDocumentation(about);
}

void SchemaWriter::WriteDocumentation(std::string_view text) {
  out_.Element("xs:annotation", [&] {
    out_.KeepOnLine();
    out_.TextElement("xs:documentation", text);
  });
}

// Only exactly "true" switches on. xs:boolean would also accept "1".
void SchemaWriter::WriteSwitchType() {
  out_.Element("xs:simpleType", {{"name", "switch"}}, [&] {
    WriteWords("xs:string", {"true", "false"});
  });
}

void SchemaWriter::WriteTextType(const OptionRow& option) {
  const SyntaxRow& syntax = GetSyntax(option.syntax);
  out_.Element("xs:simpleType", {{"name", syntax.name}}, [&] {
    const std::string grammar(GrammarOf(option.syntax));
    WriteDocumentation(grammar + "; for example " + std::string(syntax.example));
    WriteTexts(option);
  });
}

void SchemaWriter::WriteTexts(const OptionRow& option) {
  if (HasPlainWords(option)) return WriteWords("xs:token", GetWords(option));
  out_.Element("xs:restriction", {{"base", "xs:token"}}, [&] {
    out_.AttributeElement("xs:pattern", {{"value", MakePattern(option)}});
  });
}

// Allows the words and empty text.
void SchemaWriter::WriteWords(std::string_view base, Words words) {
  words.emplace_back();
  out_.Element("xs:restriction", {{"base", base}}, [&] {
    for (const std::string_view word : words) {
      out_.AttributeElement("xs:enumeration", {{"value", word}});
    }
  });
}

}  // namespace

std::string GetXMLSchema() {
  const auto records = std::make_unique<FullRecords>();
  const ElementModel root = MakeDocumentModel(*records);
  return SchemaWriter().Write(root);
}

}  // namespace vexor
