// A folder for one test's files, removed with all that is in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;  // several programs of tests may run at once
    do {
      path_ = std::filesystem::temp_directory_path() / ("vexor-" + std::to_string(random()));
    } while (!std::filesystem::create_directories(path_));
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] std::string path() const { return path_.generic_string(); }
  [[nodiscard]] std::string operator/(std::string_view name) const {
    return (path_ / name).generic_string();
  }

 private:
  std::filesystem::path path_;
};

inline std::string ReadBytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

inline void WriteBytes(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}
