// Options of the tests on a command line, which override those of a configuration file.
//
//   command line  arguments of the program itself, then sections
//   section       "/" and the short name of a test, in lower case, then the options for that test;
//                 "/all" gives options to every test that has them
//   option        "-" and the short name of a keyword, in any case, then its value; a switch, such
//                 as "-r", may stand alone, which means "true", or be followed by "true" or "false"
//   value         an argument that begins with neither "-" nor "/", in the grammar of the option; a
//                 time that begins with a digit is in milliseconds, for "-fid" in microseconds
//
//   tool -f lab.xml /cstate -at msec:80 -core Specific:0,2 -r /all -ftol 3
//
// Each keyword stands for the option of its name in the test's record, and "-states" for the states
// that the test goes through: "ExeCstates", "ExeStates" or "ConfigState". A switch whose keyword is
// no option is a word of one: of "PrePostCheck" where the test knows it there, else of "KNOBS".
//
// An argument before the first section belongs to the program, unless it looks like a section: "/"
// followed by nothing but letters, digits, "-" and "_". The first argument of all may be the path
// of the program, and is taken for a section only when an option follows it.
//
//   std::vector<std::string> faults;
//   for (const _PM_TEST_CONFIG_NODE& node : getCmdPMTestsOptions(argv, argc, faults)) {
//     vexor::ApplyTestOptions(cfg, node);
//   }
//   if (!faults.empty()) ...  // print them and stop
#pragma once

#include <string>
#include <vector>

#include "vexor/config/full_config.h"
#include "vexor/export.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {

struct TestOption {
  std::string name;   // the short name, as the table of keywords writes it
  std::string value;  // the option's text, with its unit; "true" or "false" for a switch
};

}  // namespace vexor

// The options of one section, in the order in which they were typed; a later one overrides.
struct _PM_TEST_CONFIG_NODE {
  VEXOR_PM_TEST_ID test = PM_TEST_MAX;
  std::vector<vexor::TestOption> options;
};

// Returns the sections of a command line, in their order, with the options that are right, and
// appends a line to `faults` for each that is not: an unknown test or option, one that the test
// does not have, a missing or a stray value, a text that the option's grammar refuses (for "/all":
// that of any test which has the option). A line names the section and the argument, and says what
// was expected or which name is nearest. A null argument is no value; an `argc` below 1 stands for
// no arguments. Any thread may call.
VEXOR_EXPORT std::vector<_PM_TEST_CONFIG_NODE> getCmdPMTestsOptions(
    char** argv, int argc, std::vector<std::string>& faults);

namespace vexor {

// Applies the options of one section to its test's record, or to all tests' records for "/all". The
// texts of a list ("ConfigState") replace, all together, what the list held. Texts are not checked
// again. Does nothing for an option that the test does not have, and for a test without a record.
// A configuration may be used by one thread at a time.
VEXOR_EXPORT void ApplyTestOptions(_XML_FULL_CFG& cfg, const _PM_TEST_CONFIG_NODE& node);

}  // namespace vexor
