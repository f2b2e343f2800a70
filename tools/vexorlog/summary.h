// The summary as JSON, for other programs.
#pragma once

#include "json.h"
#include "survey.h"

namespace tools::vexorlog {

Json MakeSummaryJson(const Survey& survey);

}  // namespace tools::vexorlog
