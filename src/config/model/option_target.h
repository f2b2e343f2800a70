// Maps options of the command line to the options of a test.
#pragma once

#include <span>

#include "config/tables/pm_test_table.h"
#include "syntax/keyword_table.h"

namespace vexor {

struct OptionTarget {
  const OptionRow* option = nullptr;  // null: the test has no option for the keyword
  bool is_word = false;               // whether the keyword is one word in the option's text
};

// Returns the option with the keyword's short name; for a knob without one, the option whose words
// include it, or else KNOBS.
OptionTarget FindTarget(const PmTestRow& test, const Keyword& keyword);

// Returns the tests to which a section of the command line applies: all for PM_TEST_ALL, none for
// an id without options.
std::span<const PmTestRow> TestsOfSection(VEXOR_PM_TEST_ID id);

}  // namespace vexor
