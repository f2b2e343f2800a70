// Reads any bytes as a configuration, then writes and summarises the record.
#include <tinyxml2.h>

#include <memory>
#include <stdexcept>

#include "fuzz.h"
#include "vexor/config/describe.h"
#include "vexor/config/reader.h"
#include "vexor/config/summaries.h"
#include "vexor/config/workloads.h"
#include "vexor/config/writer.h"

namespace {

struct Outcome {
  bool read = false;
  bool threw = false;
};

Outcome Read(const std::string& path, _XML_FULL_CFG& cfg, bool verify, bool strict) {
  try {
    return {.read = VexorConfigParser().ReadXMLPar(path, &cfg, verify, strict), .threw = false};
  } catch (const std::out_of_range& error) {  // as documented for trace entries
    Require(error.what() == std::string_view("invalid vector<T> subscript"), error.what());
    return {.read = false, .threw = true};
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = AsText(data, size);
  const std::string& path = HoldInFile(input);
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  const Outcome any = Read(path, *cfg, false, false);
  GetXMLPMTestsInfo(*cfg);
  GetXMLTestControlInfo(*cfg);
  Require(GetXMLGlobalConfigInfo(*cfg).size() == 18, "the global summary has its lines");
  const vexor::Description description = vexor::DescribeXMLConfigText(input);
  Require(any.read == description.error.empty(), "what is read is described", description.error);
  if (any.read) {
    Require(description.version == cfg->GlobalConfig.Version, "the version is described");
    vexor::FormatXMLConfig(*cfg);
  }
  const Outcome strict = Read(path, *cfg, true, true);
  Require(!strict.read || (any.read && cfg->GlobalConfig.VersionMatch), "strictness refuses more");

  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  document.Parse(input.data(), input.size());
  const auto workloads = std::make_unique<_WORKLOADS_XMLCFG>();
  GetWorkLoadsXML(*workloads, document.FirstChildElement());
  return 0;
}
