// Writing a configuration against building and printing the same document by hand, in one run.
#include <benchmark/benchmark.h>
#include <tinyxml2.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "vexor/config/reader.h"
#include "vexor/config/writer.h"

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

// What code that knows the document by heart puts into it: every text is ready.
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

void PrintByHand(const Node& root, tinyxml2::XMLPrinter& printer) {
  tinyxml2::XMLDocument document;
  AddByHand(root, document);
  document.Print(&printer);
}

double Seconds(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The two are timed in turn, so that a machine that slows down slows both. The counter is the
// median of the pairs' ratios.
void FormatAgainstHand(benchmark::State& state) {
  const _XML_FULL_CFG cfg = MakeRecord(static_cast<std::size_t>(state.range(0)));
  const std::string expected = vexor::FormatXMLConfig(cfg);
  tinyxml2::XMLDocument parsed;
  parsed.Parse(expected.c_str());
  const Node root = CopyNode(*parsed.RootElement());
  tinyxml2::XMLPrinter check;
  PrintByHand(root, check);
  if (check.CStr() != expected) state.SkipWithError("the documents differ");
  std::vector<double> ratios;
  for (auto _ : state) {
    const double by_hand = Seconds([&root] {
      tinyxml2::XMLPrinter printer;
      PrintByHand(root, printer);
      benchmark::DoNotOptimize(printer.CStr());
    });
    const double format =
        Seconds([&cfg] { benchmark::DoNotOptimize(vexor::FormatXMLConfig(cfg)); });
    state.SetIterationTime(format);
    ratios.push_back(format / by_hand);
  }
  if (ratios.empty()) return;
  std::ranges::nth_element(ratios, ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2));
  state.counters["ratio_to_hand"] = ratios[ratios.size() / 2];
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(expected.size()));
}

BENCHMARK(FormatAgainstHand)
    ->Arg(1)
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->MinTime(2);

}  // namespace

BENCHMARK_MAIN();
