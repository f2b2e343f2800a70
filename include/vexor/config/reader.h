// Reading a configuration file.
//
//   _XML_FULL_CFG cfg;
//   ResetVexorXmlConfiguration(cfg);
//   VexorConfigParser parser;
//   if (!parser.ReadXMLPar("lab.xml", &cfg, true, false)) { ... }
#pragma once

#include <string>

#include "vexor/config/config_record.h"
#include "vexor/config/full_config.h"
#include "vexor/export.h"

// Holds no state: any thread may read, each into a record of its own.
class VEXOR_EXPORT VexorConfigParser {
 public:
  // Reads the file at `path` into `cfg` and returns whether it was read. A section or a test that
  // the file lacks keeps its values, but the test control starts from its defaults in every
  // reading; an option that a present element lacks becomes empty. Messages go to standard output.
  // False, without a message, for a null `cfg`; with "XML parse error! ID: " and the XML library's
  // error id for a file that cannot be loaded (0 for one without a "VEXOR" root). With
  // `verifyVersion` only compatible versions are read, with `strictVersion` only the library's own;
  // a refused version leaves the version text and the cleared version-match flag in the record
  // (and, when strict, the global configuration). Throws std::out_of_range ("invalid vector<T>
  // subscript") for a malformed trace entry, or a "TestTraceCfg" in a file whose version has fewer
  // than four pieces; nothing else.
  bool ReadXMLPar(const std::string& path, _XML_FULL_CFG* cfg, bool verifyVersion,
                  bool strictVersion);

  // Appends an element of that name and text as the last child of `parent`, an element of
  // `document`. Does nothing when `parent`, `document` or `name` is null.
  void CreateXMLElement(tinyxml2::XMLElement* parent, tinyxml2::XMLDocument* document,
                        const char* name, const std::string& text);
};
