#include "vexor/config/reader.h"

#include <tinyxml2.h>

#include <array>
#include <cassert>
#include <cstdio>
#include <memory>
#include <new>

#include "config/file/element_walk.h"
#include "config/file/reader.h"
#include "config/file/xml_document.h"
#include "util/standard_output.h"
#include "vexor/config/legacy.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// The file is closed even if parsing throws.
tinyxml2::XMLError Load(const std::string& path, tinyxml2::XMLDocument& document) {
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr) return tinyxml2::XML_ERROR_FILE_NOT_FOUND;
  return ParseXmlFile(file.get(), document);
}

// Also called when memory has run out, so it allocates none. One write keeps the line in one piece
// when other threads print, too.
bool RefuseFile(tinyxml2::XMLError error) {
  std::array<char, 48> message = {};
  const int length =
      std::snprintf(message.data(), message.size(), "XML parse error! ID: %d\n", int{error});
  assert(length > 0 && static_cast<std::size_t>(length) < message.size());
  StandardOutput().write(message.data(), length);
  return false;
}

bool RefuseVersion(const std::string& version) {
  StandardOutput() << "Error: XML file " + version + " version does not match with Vexor Version " +
                          GetVersionText() + " EC_CONFIG\n";
  return false;
}

bool ReadFile(const std::string& path, _XML_FULL_CFG& cfg, bool verify_version,
              bool strict_version) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  const tinyxml2::XMLError error = Load(path, document);
  if (error != tinyxml2::XML_SUCCESS) return RefuseFile(error);
  const tinyxml2::XMLElement* const root = FindRoot(document);
  // A well-formed file with another root is reported as a parse error with id 0; there is no other
  // error to report it with.
  if (root == nullptr) return RefuseFile(tinyxml2::XML_SUCCESS);
  if (!GetGlobalCfgXML(cfg.GlobalConfig, root, verify_version)) return false;
  if (strict_version && !cfg.GlobalConfig.VersionMatch) {
    return RefuseVersion(cfg.GlobalConfig.Version);
  }
  ReadSections(*root, cfg);
  return true;
}

}  // namespace

void ReadSections(const tinyxml2::XMLElement& root, _XML_FULL_CFG& cfg) {
  cfg.GlobalConfig.VersionMatch = true;
  GetTestControlXML(cfg.TestControl, &root, cfg.GlobalConfig.Version);
  GetGlobalPMXML(cfg.GlobalPM, &root);
  CheckLegacyLxDx(&cfg);
}

}  // namespace vexor

using namespace vexor;

bool VexorConfigParser::ReadXMLPar(const std::string& path, _XML_FULL_CFG* cfg, bool verifyVersion,
                                   bool strictVersion) {
  if (cfg == nullptr) return false;
  try {
    return ReadFile(path, *cfg, verifyVersion, strictVersion);
  } catch (const std::bad_alloc&) {
    return RefuseFile(tinyxml2::XML_ERROR_FILE_READ_ERROR);
  }
}

void VexorConfigParser::CreateXMLElement(tinyxml2::XMLElement* parent,
                                         tinyxml2::XMLDocument* document, const char* name,
                                         const std::string& text) {
  if (parent == nullptr || document == nullptr || name == nullptr) return;
  tinyxml2::XMLElement* const element = document->NewElement(name);
  element->SetText(text.c_str());
  parent->InsertEndChild(element);
}
