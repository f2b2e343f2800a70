// Options of the tests on a command line. They override what the configuration says for the same
// keyword in that test's record.
//
//   command line  arguments of the program itself, then sections
//   section       "/" and the short name of a test, then the options for that test: "/cstate"
//   option        "-" and the short name of a keyword, in any case, then its value: "-core 0,2"; a
//                 switch, such as "-r", may stand alone or before "true" or "false"
//   value         an argument that begins with neither "-" nor "/"; a time without a unit is in
//                 milliseconds, that of "-fid" in microseconds
//
//   tool -f lab.xml /cstate -at msec:80 -core Specific:0,2 -r /all -ftol 3
//
// What comes before the first section is not looked at. To apply a node to a test's record is a
// loop:
//
//   for (const vexor::TestOption& option : node.options) {
//     for (every option of the record) {
//       if (IsOverwriteOption(its keyword, option.name)) its text = option.value;
//     }
//     for (every knob that the test knows) {
//       UpdateknobsOptions(record.KNOBS, the knob, option.name, option.value);
//     }
//   }
//
// Any thread may call.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {

struct TestOption {
  std::string name;   // the short name, as the table of keywords writes it
  std::string value;  // what follows it; "true" for a switch that stands alone
};

}  // namespace vexor

// The options of one section, in the order in which they were typed; a later one overrides.
struct _PM_TEST_CONFIG_NODE {
  VEXOR_PM_TEST_ID test = PM_TEST_MAX;
  std::vector<vexor::TestOption> options;
};

// Returns the sections of a command line, in their order, and appends a line to `faults` for each
// argument that is wrong: a test or an option that is unknown, with the nearest short name, an
// option without its value, or a value without its option. What is wrong changes nothing.
VEXOR_EXPORT std::vector<_PM_TEST_CONFIG_NODE> getCmdPMTestsOptions(
    char** argv, int argc, std::vector<std::string>& faults);

// Returns whether an option, given by its short name in any case, overrides the keyword. No option
// overrides an unknown keyword.
VEXOR_EXPORT bool IsOverwriteOption(std::string_view keyword, std::string_view option);

// Returns whether the option, given by its short name in any case, is the knob's. If it is, the
// knob is appended to the list at ";", unless it stands there, for a value of "true" in any case,
// and taken out of it for any other value.
VEXOR_EXPORT bool UpdateknobsOptions(std::string& knobs, std::string_view knob,
                                     std::string_view option, std::string_view value);

// Returns the text with the prefix in front of it when it begins with a digit, such as "msec:10-20"
// for "msec:" and "10-20"; else the text unchanged.
VEXOR_EXPORT std::string PrependtoRange(std::string_view prefix, std::string_view text);
