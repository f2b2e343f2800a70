// The keywords of test options: the names that a configuration file uses, and the short names for
// command lines. vexor/config/overrides.h parses a whole command line. Any thread may call.
#pragma once

#include <string>
#include <string_view>

#include "vexor/export.h"

// Returns the short name of a keyword: "core" for "CoreAffinity". Case matters; empty text for any
// other text. Several keywords may have the same short name.
VEXOR_EXPORT std::string GetKeywordShortName(std::string_view keyword);

// Returns whether `option` is the short name of the keyword, in any case. False for an unknown
// keyword.
VEXOR_EXPORT bool IsOverwriteOption(std::string_view keyword, std::string_view option);

// Returns whether `option` is the short name of the knob, in any case. If it is, updates the list
// `knobs`, joined by ";": the value "true", in any case, appends the knob unless it is in the list;
// any other value removes it.
VEXOR_EXPORT bool UpdateknobsOptions(std::string& knobs, std::string_view knob,
                                     std::string_view option, std::string_view value);

// Returns the text with the prefix before it if the text begins with a digit: "msec:" and "10-20"
// give "msec:10-20". Returns other texts unchanged.
VEXOR_EXPORT std::string PrependtoRange(std::string_view prefix, std::string_view text);
