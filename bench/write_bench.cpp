// Writing a configuration, compared with hard-coded functions that build and print the document.
#include <tinyxml2.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "comparison.h"
#include "vexor/config/reader.h"
#include "vexor/config/writer.h"
#include "works.h"

namespace {

// The lab's configuration with its lists repeated.
_XML_FULL_CFG MakeRecord(std::size_t repeats) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  VexorConfigParser().ReadXMLPar(VEXOR_SOURCE_DIR "/examples/lab.xml", &cfg, true, true);
  const auto repeat = [repeats](auto& list) {
    const auto once = list;
    for (std::size_t i = 1; i < repeats; ++i) list.insert(list.end(), once.begin(), once.end());
  };
  repeat(cfg.GlobalConfig.CustomConfiguration.MSR_CFG);
  repeat(cfg.GlobalConfig.CustomConfiguration.PCIE_CFG);
  repeat(cfg.GlobalConfig.CORE_CONFIG);
  repeat(cfg.GlobalConfig.KNOBS);
  repeat(cfg.GlobalPM.PCIe_Link.ConfigState);
  return cfg;
}

// The content of the document, with all texts ready.
struct Node {
  bool is_comment = false;
  std::string name = {};  // or the comment
  std::optional<std::string> text = std::nullopt;
  std::vector<std::pair<std::string, std::string>> attributes = {};
  std::vector<Node> children = {};
};

Node CopyNode(const tinyxml2::XMLElement& element) {
  Node node{.name = element.Name()};
  for (auto* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
    node.attributes.emplace_back(a->Name(), a->Value());
  }
  if (element.NoChildren() && element.ClosingType() == tinyxml2::XMLElement::OPEN) node.text = "";
  for (auto* child = element.FirstChild(); child != nullptr; child = child->NextSibling()) {
    if (child->ToText() != nullptr) node.text = child->Value();
    if (child->ToComment() != nullptr) {
      node.children.push_back({.is_comment = true, .name = child->Value()});
    }
    if (child->ToElement() != nullptr) node.children.push_back(CopyNode(*child->ToElement()));
  }
  return node;
}

void AddByHand(const Node& node, tinyxml2::XMLNode& parent) {
  tinyxml2::XMLDocument& document = *parent.GetDocument();
  if (node.is_comment) {
    parent.InsertEndChild(document.NewComment(node.name.c_str()));
    return;
  }
  tinyxml2::XMLElement* const element = document.NewElement(node.name.c_str());
  parent.InsertEndChild(element);
  if (node.text) element->SetText(node.text->c_str());
  for (const auto& [name, value] : node.attributes) {
    element->SetAttribute(name.c_str(), value.c_str());
  }
  for (const Node& child : node.children) AddByHand(child, *element);
}

struct Document {
  _XML_FULL_CFG cfg;
  Node root;
};

Document MakeDocument(std::size_t repeats) {
  Document document = {.cfg = MakeRecord(repeats), .root = {}};
  tinyxml2::XMLDocument parsed;
  parsed.Parse(vexor::FormatXMLConfig(document.cfg).c_str());
  document.root = CopyNode(*parsed.RootElement());
  return document;
}

std::string Format(const Document& document) { return vexor::FormatXMLConfig(document.cfg); }

std::string PrintByHand(const Document& document) {
  tinyxml2::XMLDocument tree;
  AddByHand(document.root, tree);
  tinyxml2::XMLPrinter printer;
  tree.Print(&printer);
  return printer.CStr();
}

}  // namespace

void vexor::AddWriting() {
  const Peer by_hand{"tree built and printed by hand", PrintByHand};
  AddComparison<Document>("FormatXMLConfig, the lab's record", {MakeDocument(1)}, Format, by_hand);
  AddComparison<Document>("FormatXMLConfig, 1.3 MB", {MakeDocument(1000)}, Format, by_hand);
  AddGrowth("FormatXMLConfig", MakeDocument(100), MakeDocument(1600), Format);
}
