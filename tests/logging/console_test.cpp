#include "vexor/logging/console.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

TEST(TraceLevel, NamesAndTheirParser) {
  const struct {
    int value;
    const char* name;
    const char* short_name;
  } kLevels[] = {{0, "No-Log", "L1"}, {1, "Critical", "L2"}, {2, "Information", "L3"},
                 {3, "Debug", "L4"},  {4, "", ""},           {-1, "", ""}};
  constexpr auto kDefault = static_cast<TRACE_LEVEL>(77);
  for (const auto& level : kLevels) {
    const auto value = static_cast<TRACE_LEVEL>(level.value);
    EXPECT_STREQ(GetTraceLevelName(value, false), level.name);
    EXPECT_STREQ(GetTraceLevelName(value, true), level.short_name);
    EXPECT_EQ(ParseTraceLevelID(level.name, kDefault), *level.name != '\0' ? value : kDefault);
    EXPECT_EQ(ParseTraceLevelID(level.short_name, kDefault), kDefault);
  }
  for (const char* text : {"debug", "Debug ", "Debu"}) {
    EXPECT_EQ(ParseTraceLevelID(text, kDefault), kDefault) << text;
  }
}

std::string Printed(TRACE_LEVEL print_level, const std::string& message, TRACE_LEVEL level,
                    bool force) {
  const TRACE_LEVEL before = ConsoleOutput::GetPrintLevel();
  ConsoleOutput::SetPrintLevel(print_level);
  EXPECT_EQ(ConsoleOutput::GetPrintLevel(), print_level);
  testing::internal::CaptureStdout();
  ConsoleOut(message, level, force);
  ConsoleOutput::SetPrintLevel(before);
  return testing::internal::GetCapturedStdout();
}

TEST(ConsoleOut, PrintsForcedMessagesAndThoseNotAboveThePrintLevel) {
  EXPECT_EQ(ConsoleOutput::GetPrintLevel(), TRACE_INFORMATION);
  EXPECT_EQ(Printed(TRACE_INFORMATION, "m", TRACE_INFORMATION, false), "m\n");
  EXPECT_EQ(Printed(TRACE_INFORMATION, "m", TRACE_DEBUG, false), "");
  EXPECT_EQ(Printed(TRACE_INFORMATION, "m", TRACE_DEBUG, true), "m\n");
  EXPECT_EQ(Printed(TRACE_NO_LOG, "m", TRACE_NO_LOG, false), "m\n");
  EXPECT_EQ(Printed(TRACE_NO_LOG, "m", TRACE_CRITICAL, false), "");
  EXPECT_EQ(Printed(static_cast<TRACE_LEVEL>(-5), "m", TRACE_NO_LOG, false), "");
  EXPECT_EQ(Printed(TRACE_DEBUG, "already ended\n", TRACE_DEBUG, false), "already ended\n\n");
}

TEST(ConsoleOut, PrintsTheWholeStreamAndDoesNotChangeIt) {
  std::stringstream stream;
  stream << "one " << 2;
  stream.get();  // what was read counts as well
  testing::internal::CaptureStdout();
  ConsoleOut(stream, TRACE_CRITICAL, false);
  stream << " more";
  ConsoleOut(stream, TRACE_CRITICAL, false);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "one 2\none 2 more\n");
}

}  // namespace
