// Reads configuration files from strings.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <list>
#include <string>

#include "temporary_folder.h"
#include "vexor/config/reader.h"

// Sets the file from which the library reads the host IP.
inline void NameHostIpFile(const std::string& path) {
  static std::list<std::string> variables;  // the environment keeps the pointer of the last one
  putenv(variables.emplace_back("VEXOR_HOST_IP_FILE=" + path).data());
}

inline std::string Wrapped(const std::string& element, const std::string& content) {
  return "<" + element + ">" + content + "</" + element + ">";
}

// Returns a document with the content in its root, by default of the library's own version.
inline std::string Document(const std::string& content, const std::string& version = "3.21.522.0") {
  return Wrapped("VEXOR", Wrapped("Version", version) + content);
}

struct ReadResult {
  bool read = false;
  std::string output;
};

// Reads a document into the record without a reset.
inline ReadResult ReadInto(_XML_FULL_CFG& cfg, const std::string& document, bool verify = false,
                           bool strict = false) {
  const TemporaryFolder folder;
  WriteBytes(folder / "config.xml", document);
  testing::internal::CaptureStdout();
  ReadResult result;
  result.read = VexorConfigParser().ReadXMLPar(folder / "config.xml", &cfg, verify, strict);
  result.output = testing::internal::GetCapturedStdout();
  return result;
}

// Reads a document into a record of defaults. Reading must succeed without output.
inline _XML_FULL_CFG ReadDocument(const std::string& document) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  const ReadResult result = ReadInto(cfg, document);
  EXPECT_TRUE(result.read) << document;
  EXPECT_EQ(result.output, "");
  return cfg;
}
