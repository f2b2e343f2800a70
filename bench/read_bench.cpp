// Reading a configuration, compared with only parsing the same file into a tree.
#include <tinyxml2.h>

#include <boost/property_tree/xml_parser.hpp>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "comparison.h"
#include "vexor/config/check.h"
#include "vexor/config/reader.h"
#include "works.h"

namespace {

// The lab's configuration with its register items and setting items repeated up to a size.
std::string MakeConfiguration(std::size_t size) {
  std::ifstream file(VEXOR_SOURCE_DIR "/examples/lab.xml", std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  std::string lab = text.str();
  const auto repeat = [&lab](const std::string& opener, const std::string& item,
                             std::size_t bytes) {
    std::string items;
    while (items.size() < bytes) items += item;
    lab.insert(lab.find(opener) + opener.size(), items);
  };
  if (size <= lab.size()) return lab;
  const std::size_t missing = size - lab.size();
  repeat(
      "<MSR_CFG>",
      "\n        <MSR>\n          <Address>0x1FC</Address>\n          <AndMask>0xFFFFFFFFFFFFFFFD"
      "</AndMask>\n          <OrMask>0x2</OrMask>\n          <Pkg>All</Pkg>\n"
      "          <Module>All</Module>\n          <CORE>All</CORE>\n        </MSR>",
      missing / 3);
  repeat("<CONFIG>", "\n          <ITEM>0; RAPL_Pkg_Power_Limit2; Enable</ITEM>", missing / 3);
  repeat("<PCIe-Link>", "\n        <ConfigState>0:1C:0 L0s-and-L1</ConfigState>", missing / 3);
  return lab;
}

// Files that are removed at the end of the run.
class TemporaryFiles {
 public:
  TemporaryFiles() = default;
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;
  ~TemporaryFiles() {
    for (const std::string& path : paths_) std::remove(path.c_str());
  }

  const std::string& Add(const std::filesystem::path& path) {
    return paths_.emplace_back(path.string());
  }

 private:
  std::vector<std::string> paths_;
};

std::string WriteConfiguration(std::size_t size) {
  static TemporaryFiles files;
  const std::string& path = files.Add(std::filesystem::temp_directory_path() /
                                      ("vexor_read_bench_" + std::to_string(size) + ".xml"));
  std::ofstream(path, std::ios::binary) << MakeConfiguration(size);
  return path;
}

bool Read(const std::string& path) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  return VexorConfigParser().ReadXMLPar(path, &cfg, true, true);
}

bool LoadFile(const std::string& path) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  return document.LoadFile(path.c_str()) == tinyxml2::XML_SUCCESS;
}

bool ReadPropertyTree(const std::string& path) {
  boost::property_tree::ptree tree;
  boost::property_tree::read_xml(path, tree);
  return !tree.empty();
}

}  // namespace

void vexor::AddReading() {
  struct Size {
    const char* name;
    std::size_t bytes;
  };
  constexpr Size kSizes[] = {{"the lab's file", 0}, {"1 MB", 1 << 20}, {"20 MB", 20 << 20}};
  for (const Size& size : kSizes) {
    AddComparison<std::string>(
        std::string("ReadXMLPar, ") + size.name, {WriteConfiguration(size.bytes)}, Read,
        Peer{"LoadFile alone", LoadFile}, Peer{"property_tree, parsing alone", ReadPropertyTree});
  }
  const std::string once = WriteConfiguration(1 << 20);
  const std::string sixteen_fold = WriteConfiguration(16 << 20);
  AddGrowth("ReadXMLPar", once, sixteen_fold, Read);
  AddGrowth("CheckXMLConfig", once, sixteen_fold,
            [](const std::string& path) { return CheckXMLConfig(path); });
}
