// The check of "TestTraceCfg": entries that make a configuration unreadable, that are written in an
// older form, or that name no test.
#pragma once

#include <tinyxml2.h>

#include <string>

#include "config/check/findings.h"
#include "config/check/unknown_names.h"

namespace vexor {

// `version` is the version text of the file.
void CheckTraces(const tinyxml2::XMLElement& element, const std::string& path,
                 const std::string& version, Findings& findings, UnknownNames& unknown);

}  // namespace vexor
