// Where an option of the command line goes in a test's record.
#pragma once

#include <span>

#include "config/tables/pm_test_table.h"
#include "syntax/keyword_table.h"

namespace vexor {

struct OptionTarget {
  const OptionRow* option = nullptr;  // null: the test has no option for the keyword
  bool is_word = false;               // the keyword is a word of the option's text
};

// Returns the option that has the keyword's short name; for a knob, the list of words that knows
// it, or else KNOBS.
OptionTarget FindTarget(const PmTestRow& test, const Keyword& keyword);

// Returns the tests that a section of the command line is for: all for PM_TEST_ALL, none for an id
// without a record.
std::span<const PmTestRow> TestsOfSection(VEXOR_PM_TEST_ID id);

}  // namespace vexor
