// Reads a configuration file.
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

// Has no state. Any thread may read, each into its own record.
class VEXOR_EXPORT VexorConfigParser {
 public:
  // Reads the file at `path` into `cfg` and returns whether it was read. Sections and tests that
  // the file lacks keep their values, except that the test control is reset first; an option that
  // is missing from an element that the file has becomes empty. Messages go to standard output.
  // Returns false without a message for a null `cfg`. Prints "XML parse error! ID: " and the XML
  // library's error id for a file that cannot be loaded, with id 0 for one without a "VEXOR" root.
  // With `verifyVersion` only compatible versions are read, with `strictVersion` only the library's
  // own. Refusing a version still sets the version text and clears the version-match flag in the
  // record; with `strictVersion` the global configuration has been read as well. Throws
  // std::out_of_range ("invalid vector<T> subscript") for a malformed trace entry, and for a
  // "TestTraceCfg" in a file whose version has fewer than four parts; nothing else. If memory runs
  // out, the file counts as one that cannot be loaded.
  bool ReadXMLPar(const std::string& path, _XML_FULL_CFG* cfg, bool verifyVersion,
                  bool strictVersion);

  // Appends an element of this name and text as the last child of `parent`, an element of
  // `document`. Does nothing if `parent`, `document` or `name` is null.
  void CreateXMLElement(tinyxml2::XMLElement* parent, tinyxml2::XMLDocument* document,
                        const char* name, const std::string& text);
};
