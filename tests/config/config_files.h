// Configuration files made of text, and what reading them gives.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <list>
#include <string>

#include "temporary_folder.h"
#include "vexor/config/reader.h"

// Makes the library take the host's address from another file.
inline void NameHostIpFile(const std::string& path) {
  static std::list<std::string> variables;  // the environment keeps the pointer of the last one
  putenv(variables.emplace_back("VEXOR_HOST_IP_FILE=" + path).data());
}

inline std::string Wrapped(const std::string& element, const std::string& content) {
  return "<" + element + ">" + content + "</" + element + ">";
}

// A document whose root holds the content, of the library's own version unless another is given.
inline std::string Document(const std::string& content, const std::string& version = "3.21.522.0") {
  return Wrapped("VEXOR", Wrapped("Version", version) + content);
}

struct ReadResult {
  bool read = false;
  std::string output;
};

// Reads a document into the record as it stands.
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

// Reads a document, which must succeed without output, into a fresh default record.
inline _XML_FULL_CFG ReadDocument(const std::string& document) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  const ReadResult result = ReadInto(cfg, document);
  EXPECT_TRUE(result.read) << document;
  EXPECT_EQ(result.output, "");
  return cfg;
}
