// All public headers of the library.
#pragma once

#include "vexor/export.h"
#include "vexor/logging/console.h"
#include "vexor/syntax/error_codes.h"
#include "vexor/util/command_line.h"
#include "vexor/util/ipv4.h"
#include "vexor/util/numbers.h"
#include "vexor/util/random.h"
#include "vexor/util/strings.h"
#include "vexor/util/version.h"
#include "vexor/vocabulary/config_names.h"
#include "vexor/vocabulary/device_names.h"
#include "vexor/vocabulary/feature_names.h"
#include "vexor/vocabulary/platform_names.h"
#include "vexor/vocabulary/pm_tests.h"
#include "vexor/vocabulary/report_labels.h"
#include "vexor/vocabulary/state_names.h"
