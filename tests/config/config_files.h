// Configuration files made of text, and what reading them gives.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <string>

#include "vexor/config/reader.h"

// A file of the given content that goes with its object.
class TempFile {
 public:
  explicit TempFile(const std::string& content, const std::string& name = "config.xml") {
    static std::atomic<int> counter = 0;
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    folder_ = std::filesystem::temp_directory_path() /
              ("vexor_" + std::to_string(stamp) + "_" + std::to_string(counter++));
    std::filesystem::create_directory(folder_);
    path_ = (folder_ / name).string();
    std::ofstream(path_, std::ios::binary) << content;
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  ~TempFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string folder() const { return folder_.string(); }

 private:
  std::filesystem::path folder_;
  std::string path_;
};

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
  const TempFile file(document);
  testing::internal::CaptureStdout();
  ReadResult result;
  result.read = VexorConfigParser().ReadXMLPar(file.path(), &cfg, verify, strict);
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
