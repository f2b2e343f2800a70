#include "vexor/logging/console.h"

#include <cstddef>
#include <iterator>
#include <string>

#include "util/standard_output.h"

namespace {

struct LevelName {
  const char* name;
  const char* short_name;
};

constexpr LevelName kLevelNames[] = {
    {.name = "No-Log", .short_name = "L1"},
    {.name = "Critical", .short_name = "L2"},
    {.name = "Information", .short_name = "L3"},
    {.name = "Debug", .short_name = "L4"},
};

}  // namespace

constinit std::atomic<TRACE_LEVEL> ConsoleOutput::m_ePrintLevel = TRACE_INFORMATION;

const char* GetTraceLevelName(TRACE_LEVEL level, bool short_name) {
  const auto index = static_cast<std::uint32_t>(level);  // makes negative values too large as well
  if (index >= std::size(kLevelNames)) return "";
  return short_name ? kLevelNames[index].short_name : kLevelNames[index].name;
}

TRACE_LEVEL ParseTraceLevelID(std::string_view text, TRACE_LEVEL default_level) {
  for (std::size_t i = 0; i < std::size(kLevelNames); ++i) {
    if (text == kLevelNames[i].name) return static_cast<TRACE_LEVEL>(i);
  }
  return default_level;
}

TRACE_LEVEL ConsoleOutput::GetPrintLevel() { return m_ePrintLevel.load(std::memory_order_relaxed); }

void ConsoleOutput::SetPrintLevel(TRACE_LEVEL level) {
  m_ePrintLevel.store(level, std::memory_order_relaxed);
}

void ConsoleOut(std::string_view message, TRACE_LEVEL level, bool force) {
  if (!force && level > ConsoleOutput::GetPrintLevel()) return;
  std::string line(message);
  line += '\n';
  vexor::StandardOutput().write(line.data(), static_cast<std::streamsize>(line.size()));
}

void ConsoleOut(const std::stringstream& message, TRACE_LEVEL level, bool force) {
  ConsoleOut(message.view(), level, force);
}
