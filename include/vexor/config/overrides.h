// Test options on a command line, which override those of a configuration file.
//
//   command line  arguments of the program itself, then sections
//   section       "/" and the short name of a test, in lower case, then the options for that test;
//                 the options of "/all" go to every test that has them
//   option        "-" and the short name of a keyword, in any case, then its value; a switch, such
//                 as "-r", may stand alone, which means "true", or be followed by "true" or "false"
//   value         an argument that begins with neither "-" nor "/", in the grammar of the option; a
//                 time that begins with a digit is in milliseconds, for "-fid" in microseconds
//
//   tool -f lab.xml /cstate -at msec:80 -core Specific:0,2 -r /all -ftol 3
//
// A keyword sets the option of its name in the test's record. "-states" sets the states that the
// test goes through: "ExeCstates", "ExeStates" or "ConfigState". A switch whose keyword is not an
// option adds or removes a word of one: of "PrePostCheck" if the test knows the word there, else of
// "KNOBS".
//
// Arguments before the first section belong to the program, except those that look like a section:
// "/" followed only by letters, digits, "-" and "_". The very first argument may be the program's
// path, so it is taken for a section only if an option follows it.
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
  std::string name;   // the short name, spelled as GetKeywordShortName returns it
  std::string value;  // the option's text, with its unit; "true" or "false" for a switch
};

}  // namespace vexor

// The options of one section, in the order in which they were typed; later ones override earlier
// ones.
struct _PM_TEST_CONFIG_NODE {
  VEXOR_PM_TEST_ID test = PM_TEST_MAX;
  std::vector<vexor::TestOption> options;
};

// Returns the sections of a command line in order, with their valid options. Appends a line to
// `faults` for every other argument: an unknown test or option, an option that the test does not
// have, a missing or stray value, or a text that the option's grammar refuses (for "/all": the
// grammar of any test that has the option). A line names the section and the argument, and says
// what was expected or which name is most similar. A null argument counts as a missing value, an
// `argc` below 1 as no arguments. Any thread may call.
VEXOR_EXPORT std::vector<_PM_TEST_CONFIG_NODE> getCmdPMTestsOptions(
    char** argv, int argc, std::vector<std::string>& faults);

namespace vexor {

// Applies the options of one section to the record of its test, or for "/all" to the records of all
// tests. The options of the section that set a list ("ConfigState") together replace the list. The
// texts are not checked again. Does nothing for an option that the test does not have, and for a
// test without a record. One thread at a time may use a configuration.
VEXOR_EXPORT void ApplyTestOptions(_XML_FULL_CFG& cfg, const _PM_TEST_CONFIG_NODE& node);

}  // namespace vexor
