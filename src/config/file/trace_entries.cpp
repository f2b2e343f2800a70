#include "config/file/trace_entries.h"

#include <cstdint>
#include <stdexcept>

#include "config/file/version_rules.h"
#include "util/text.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace vexor {
namespace {

constexpr std::string_view kOlderDeviceTest = "PCIe-Link-DState";

// Returns an item, or throws the error of malformed trace entries.
const std::string& At(const std::vector<std::string>& items, std::size_t index) {
  if (index >= items.size()) throw std::out_of_range("invalid vector<T> subscript");
  return items[index];
}

// Anything but a number, and numbers beyond 64 bits, count as negative and therefore as old.
std::int32_t VersionNumber(const std::string& piece) {
  return static_cast<std::int32_t>(
      static_cast<std::uint32_t>(ParseUnsigned(piece).value_or(kNoNumber32)));
}

// Joins fields, which Split has trimmed.
std::string JoinFields(const std::vector<std::string>& fields) {
  std::string text = fields.front();
  for (std::size_t i = 1; i < fields.size(); ++i) text += "_" + fields[i];
  return text;
}

std::string Renamed(std::string entry, const std::string& from, const std::string& to) {
  StringReplaceSubstring(entry, from, to);
  return entry;
}

}  // namespace

TraceMigration::TraceMigration(const std::string& version) {
  const std::vector<std::string> pieces = SplitVersion(version);
  At(pieces, 3);
  is_old_ = VersionNumber(pieces[1]) < 20 && VersionNumber(pieces[2]) < 490;
}

void TraceMigration::Append(const std::string& entry, std::vector<std::string>& entries) const {
  std::vector<std::string> fields = Split(entry, '_', true);
  At(fields, 2);
  const std::vector<std::string> parts = Split(fields[2], ':', false);
  std::string current = entry;
  if (At(parts, 0) == "0" && is_old_) {
    // Replaces every "0" of the field, not only the code: existing files were converted this way.
    StringReplaceSubstring(fields[2], "0", "Con");
    current = JoinFields(fields);
  }
  if (!EqualsIgnoreCase(fields[0], kOlderDeviceTest)) {
    entries.push_back(current);
    return;
  }
  entries.push_back(Renamed(current, fields[0], "PCIe-Link"));
  entries.push_back(Renamed(current, fields[0], "Dx-States"));
}

}  // namespace vexor
