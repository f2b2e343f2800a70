// The check of "TestTraceCfg": reports entries that make a configuration unreadable, that are in an
// older form, or that do not start with a test name.
#pragma once

#include <tinyxml2.h>

#include <string>

#include "config/check/findings.h"
#include "config/check/unknown_names.h"

namespace vexor {

// `version` is the version in the file, which determines how entries are read.
void CheckTraces(const tinyxml2::XMLElement& element, const std::string& path,
                 const std::string& version, Findings& findings, UnknownNames& unknown);

}  // namespace vexor
