// The keywords of the tests' options, as a configuration file writes them, and the short names
// under which a command line knows them. Any thread may call.
#pragma once

#include <string>
#include <string_view>

#include "vexor/export.h"

// Returns the short name of a keyword ("core" of "CoreAffinity"), exactly as the keyword is
// written; empty text for any other text. Several keywords may share a short name.
VEXOR_EXPORT std::string GetKeywordShortName(std::string_view keyword);
