// Options of the command line over those of a configuration file.
#pragma once

#include "vexor/config/full_config.h"
#include "vexor/export.h"
#include "vexor/syntax/test_options.h"

namespace vexor {

// Applies the options of one section of the command line to its test's record, or to all tests'
// records for "/all": an option overrides the texts of its keywords and switches the knobs of its
// keywords. Does nothing for an option that the test does not have, and for an id without a record.
VEXOR_EXPORT void ApplyTestOptions(_XML_FULL_CFG& cfg, const _PM_TEST_CONFIG_NODE& node);

}  // namespace vexor
