// The power-management tests that have options, in the order of a written file.
#pragma once

#include <span>
#include <string_view>

#include "config/tables/option_table.h"
#include "vexor/config/pm_tests.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {

struct PmTestRow : RecordRow<_GLOBALPM_XMLCFG, _PM_TEST_NODE> {
  // How the options are written in the test's element.
  enum class Shape : std::uint8_t {
    kElements,   // <name>text</name>
    kArguments,  // <arg name="name" val="text"/>
  };
  VEXOR_PM_TEST_ID id = PM_TEST_MAX;
  Shape shape = Shape::kElements;
  std::string_view knob_hint;                // the writer stores it in KnobHint before writing
  bool ConfigRecord::*from_older = nullptr;  // whether the element had the older name; may be null
};

// Size of the reader's arrays of tests.
inline constexpr std::size_t kPmTestCount = 31;

// Hint comments at the head of the section, for options of nearly every test.
inline constexpr HintedName kPmTestHints[] = {
    {"Log_Level",
     {.kind = Hint::Kind::kSingle, .texts = {"No-Log,Critical,Error,Warning,Information,Debug"}}},
    {"TestMode", {.kind = Hint::Kind::kSingle, .texts = {"Verify;Exercise"}}},
};

std::span<const PmTestRow> PmTests();

// Returns the test's row, or null for an id without options.
const PmTestRow* FindPmTest(VEXOR_PM_TEST_ID id);

}  // namespace vexor
