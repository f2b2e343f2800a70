#include "vexor/util/config_file.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string_view>

#include "platform/platform.h"
#include "util/read_stream.h"
#include "util/standard_output.h"
#include "util/text.h"

namespace vexor {

namespace {

constexpr std::string_view kBlanks = " \t";

// Prints the message, waits for a key and ends the process: a program must not run on with half of
// its settings.
[[noreturn]] void ExitWithError(std::string_view message) {
  StandardOutput() << message << std::flush;
  std::cin.ignore();
  std::cin.get();
  std::exit(EXIT_FAILURE);
}

std::string_view TrimBlanksAndTabs(std::string_view text) {
  return TrimIf(text, [](char c) { return kBlanks.find(c) != std::string_view::npos; });
}

std::string_view RemoveComment(std::string_view line) { return line.substr(0, line.find(';')); }

// Tabs are deliberately not blanks here: a line of tabs is not skipped but lacks its separator.
bool IsOnlyBlanks(std::string_view line) {
  return line.find_first_not_of(' ') == std::string_view::npos;
}

void ParseLine(std::string_view line, std::map<std::string, std::string>& contents) {
  const std::size_t separator = line.find('=');
  // Users know these messages as they are, although they do not tell the line.
  if (separator == std::string_view::npos)
    ExitWithError("CFG: Couldn't find separator on line: \n");
  std::string_view key = TrimBlanksAndTabs(line.substr(0, separator));
  const std::string_view value = TrimBlanksAndTabs(line.substr(separator + 1));
  if (key.empty() || value.empty()) ExitWithError("CFG: Bad format for line: \n");
  key = key.substr(0, key.find_first_of(kBlanks));
  if (!contents.emplace(key, value).second) {
    ExitWithError("CFG: Can only have unique key names!\n");
  }
}

}  // namespace

}  // namespace vexor

using namespace vexor;

ConfigFile::ConfigFile(const std::string& file_name) : file_name_(file_name) {
  std::ifstream file(file_name_, std::ios::binary);
  std::string text;
  while (ReadLine(file, text)) {
    if (!text.empty() && text.back() == '\r') text.pop_back();
    const std::string_view line = RemoveComment(text);
    if (!IsOnlyBlanks(line)) ParseLine(line, contents_);
  }
}

bool ConfigFile::KeyExists(const std::string& key) const { return contents_.contains(key); }

std::string ConfigFile::GetValueOfKey(const std::string& key) const {
  const auto entry = contents_.find(key);
  return entry == contents_.end() ? "none" : entry->second;
}

bool ConfigFile::WriteKeyValue(const std::string& key, const std::string& value) {
  contents_.insert_or_assign(key, value);
  std::string text;
  for (const auto& [name, setting] : contents_) {
    text.append(name).append("=").append(setting).append(kLineEnd);
  }
  return !RewriteFile(file_name_, text);
}
