#include "logging/version_note.h"

#include <array>
#include <cstddef>
#include <cstdio>

#include "build_stamp.h"
#include "vexor/util/version.h"

namespace vexor {

std::string MakeVersionNote() {
  // The library drives no device of its own.
  constexpr const char* kDriverVersion = "N/A";
  std::array<char, 160> note = {};
  const int length =
      std::snprintf(note.data(), note.size(),
                    "Version,%s -- Driver Version: %s -- Hash 0x%x -- Build date: %s @ %s",
                    GetVersionText(), kDriverVersion, kBuildHash, kBuildDate, kBuildTime);
  return {note.data(), static_cast<std::size_t>(length)};
}

}  // namespace vexor
