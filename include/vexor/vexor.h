// All public headers of the library.
#pragma once

#include "vexor/export.h"
#include "vexor/logging/console.h"
#include "vexor/util/command_line.h"
#include "vexor/util/ipv4.h"
#include "vexor/util/numbers.h"
#include "vexor/util/random.h"
#include "vexor/util/strings.h"
#include "vexor/util/version.h"
#include "vexor/vocabulary/pm_tests.h"
