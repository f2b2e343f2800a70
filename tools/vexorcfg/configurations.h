// The configuration files that the commands read.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "common/files.h"
#include "vexor/config/describe.h"
#include "vexor/config/full_config.h"

namespace tools::vexorcfg {

// Returns what the file at the path, or standard input, amounts to; nothing, with a message on
// standard error, for one that is no configuration file. `input` keeps its content.
std::optional<vexor::Description> DescribeInput(const std::string& path, Input& input);

// Reads a file that DescribeInput has accepted into a record. Null, with a message on standard
// error, when it changed meanwhile.
std::unique_ptr<_XML_FULL_CFG> ReadRecord(const std::string& path);

}  // namespace tools::vexorcfg
