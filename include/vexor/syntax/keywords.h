// The keywords of the tests' options, as a configuration file writes them, and the short names
// under which a command line knows them. vexor/config/overrides.h reads a whole command line. Any
// thread may call.
#pragma once

#include <string>
#include <string_view>

#include "vexor/export.h"

// Returns the short name of a keyword ("core" of "CoreAffinity"), exactly as the keyword is
// written; empty text for any other text. Several keywords may share a short name.
VEXOR_EXPORT std::string GetKeywordShortName(std::string_view keyword);

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
