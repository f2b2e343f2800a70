#include "logging/log_names.h"

#include <algorithm>
#include <limits>

#include "platform/platform.h"
#include "util/text.h"
#include "vexor/util/clock.h"
#include "vexor/util/files.h"

namespace vexor {

namespace {

constexpr std::string_view kExtension = ".csv";

struct NamePieces {
  std::string_view folder;
  std::string_view stem;
  std::string_view extension;
};

NamePieces Split(std::string_view name) {
  const std::size_t base = GetFilePath(name).size();
  std::size_t end = name.size() - kExtension.size();
  if (!EndsWithIgnoreCase(name.substr(base), kExtension)) {
    end = name.find_last_of('.');
    if (end == std::string_view::npos || end <= base) end = name.size();
  }
  return {name.substr(0, base), name.substr(base, end - base), name.substr(end)};
}

std::string Number(std::string_view stem, std::uint32_t index, std::string_view extension) {
  return std::string(stem).append("_").append(std::to_string(index)).append(extension);
}

bool AreSameFileName(std::string_view a, std::string_view b) {
  return kHasWindowsNames ? EqualsIgnoreCase(a, b) : a == b;
}

}  // namespace

std::optional<std::uint32_t> FindSeriesIndex(std::string_view file_name) {
  const std::string_view stem = Split(file_name).stem;
  const std::size_t underscore = stem.find_last_of('_');
  if (underscore == std::string_view::npos) return std::nullopt;
  const std::optional<std::uint64_t> index = ParseUnsigned(stem.substr(underscore + 1));
  if (!index || *index >= std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  return static_cast<std::uint32_t>(*index);
}

std::string MakeLogName(std::string_view path, std::string_view name, unsigned copy) {
  std::string file(path);
  if (!path.empty() && path.back() != '/' && path.back() != '\\') file += '/';
  if (name.empty()) {
    file.append("VexorLog_").append(GetTimeStamp());
    if (copy > 1) file.append("-").append(std::to_string(copy));
    return file.append(kExtension);
  }
  file += name;
  return EndsWithIgnoreCase(name, kExtension) ? file : file.append(kExtension);
}

std::string MakeSplitName(std::string_view name, std::uint32_t index) {
  const NamePieces pieces = Split(name);
  std::string_view stem = pieces.stem;
  // Index 0 is always inserted, even if the user's name ends with a number: run_7 -> run_7_0.
  std::string before;
  if (index > 0) before.append("_").append(std::to_string(index - 1));
  if (stem.ends_with(before)) stem.remove_suffix(before.size());
  return std::string(pieces.folder).append(Number(stem, index, pieces.extension));
}

bool NamesDeviceOrStream(std::string_view path) {
  constexpr std::string_view kDevices[] = {"NUL", "CON", "PRN", "AUX", "CONIN$", "CONOUT$"};
  constexpr std::string_view kNumberedDevices[] = {"COM", "LPT"};
  std::string_view name = path.substr(GetFilePath(path).size());
  const bool has_drive = name.size() == path.size() && name.size() >= 2 && name[1] == ':';
  if (has_drive) name.remove_prefix(2);
  if (name.find(':') != std::string_view::npos) return true;
  // Windows ignores the extension, and blanks before it: "NUL .csv" is the device, too.
  name = TrimBlanks(name.substr(0, name.find('.')));
  const auto is_name = [&name](std::string_view device) { return EqualsIgnoreCase(name, device); };
  if (std::any_of(std::begin(kDevices), std::end(kDevices), is_name)) return true;
  if (name.empty() || !IsDecDigit(name.back())) return false;
  name.remove_suffix(1);
  return std::any_of(std::begin(kNumberedDevices), std::end(kNumberedDevices), is_name);
}

std::string FindLastOfSeries(std::string_view path, std::string_view name, std::error_code& error) {
  const std::string file = MakeLogName(path, name);
  const std::string folder = GetFilePath(file);
  const std::string base_name = GetFileBaseName(file);
  const NamePieces pieces = Split(base_name);
  std::string last;
  std::uint32_t highest = 0;
  for (const std::string& candidate : ListFiles(folder.empty() ? "." : folder, error)) {
    const std::optional<std::uint32_t> index = FindSeriesIndex(candidate);
    if (!index || (!last.empty() && *index < highest)) continue;
    // Skips numbers that a series never writes, such as "007".
    if (!AreSameFileName(candidate, Number(pieces.stem, *index, pieces.extension))) continue;
    last = candidate;
    highest = *index;
  }
  return last.empty() || error ? std::string() : GetFilePath(name) + last;
}

}  // namespace vexor
