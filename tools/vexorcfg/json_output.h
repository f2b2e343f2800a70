// JSON output of the commands, as docs/vexorcfg.schema.json describes it.
#pragma once

#include <span>
#include <string_view>

#include "common/json.h"
#include "common/status.h"
#include "comparison.h"
#include "explanation.h"
#include "vexor/config/describe.h"

namespace tools::vexorcfg {

// Returns a document with the members that all have.
Json MakeDocument(std::string_view command, Status status);

Json MakeSetting(const vexor::Setting& setting);
Json MakeDifferences(std::span<const Difference> differences);
Json MakeExplanation(const Explanation& explanation);

// Prints a document.
void PrintDocument(const Json& document);

}  // namespace tools::vexorcfg
