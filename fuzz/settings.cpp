// Reads any bytes as a settings file. For a malformed file the library waits for the user and ends
// the process; here, waiting throws an exception instead.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "fuzz.h"
#include "platform/platform.h"
#include "vexor/util/config_file.h"
#include "vexor/util/files.h"

namespace {

struct AbsentUser : std::streambuf {
  struct Waited {};
  int underflow() override { throw Waited(); }
};

// Replaces the calls that wait for the disk, for speed.
void SkipDiskFlushes() {
  static vexor::FileCalls calls = vexor::kSystemFileCalls;
  calls.flush = [](vexor::FileHandle) { return std::error_code(); };
  calls.sync_name = [](const std::string&) { return std::error_code(); };
  vexor::file_calls = &calls;
}

const std::string& SettingsPath() {
  static const std::string path = "/dev/shm/vexor-fuzz-settings-" + std::to_string(getpid());
  static const int once = std::atexit([] { std::filesystem::remove(path); });
  Require(once == 0, "the file is removed at the end");
  return path;
}

// Returns key and value as they are read back from a line; empty if that would change them.
std::pair<std::string, std::string> EntryOf(std::string_view line) {
  const std::size_t middle = line.find('=');
  if (middle == std::string_view::npos) return {};
  const std::string_view key = line.substr(0, middle);
  const std::string_view value = line.substr(middle + 1);
  if (line.find_first_of(";\r") != std::string_view::npos || key.empty() || value.empty())
    return {};
  if (key.find_first_of(" \t") != std::string_view::npos) return {};
  if (std::string_view(" \t").find(value.front()) != std::string_view::npos) return {};
  if (std::string_view(" \t").find(value.back()) != std::string_view::npos) return {};
  return {std::string(key), std::string(value)};
}

void ReadBack(std::map<std::string, std::string>& known) {
  const ConfigFile file(SettingsPath());
  for (const auto& [key, value] : known) {
    Require(file.KeyExists(key) && file.GetValueOfKey(key) == value, "settings read back", key);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static AbsentUser absent;
  std::cin.rdbuf(&absent);
  std::cin.clear();
  std::cin.exceptions(std::ios::badbit);
  SkipDiskFlushes();
  const std::string_view input = AsText(data, size);
  std::ofstream(SettingsPath(), std::ios::binary) << input;
  const std::vector<std::string> lines = SplitLines(ReadFile(SettingsPath(), true));
  std::string line;
  for (const std::string_view word : {std::string_view("="), input.substr(0, size / 2)}) {
    Require(FindLineInFile(SettingsPath(), word, line) == (FindStrInFile(SettingsPath(), word) > 0),
            "a line is found by both", word);
  }
  try {
    ConfigFile file(SettingsPath());
    Require(file.WriteKeyValue("key", "value"), "the file is written");
    Require(ConfigFile(SettingsPath()).GetValueOfKey("key") == "value", "what was read is kept");
  } catch (const AbsentUser::Waited&) {  // malformed
  }

  std::ofstream(SettingsPath(), std::ios::trunc).flush();
  std::map<std::string, std::string> known;
  ConfigFile file(SettingsPath());
  for (const std::string& written : lines) {
    const auto [key, value] = EntryOf(written);
    if (key.empty() || known.size() > 8) continue;
    Require(file.WriteKeyValue(key, value), "the file is written");
    known[key] = value;
  }
  ReadBack(known);
  return 0;
}
