// Reads the configuration files of the commands.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "common/files.h"
#include "vexor/config/describe.h"
#include "vexor/config/full_config.h"

namespace tools::vexorcfg {

// Returns the description of the file at the path, or of standard input; nothing, with a message on
// standard error, if it is not a configuration file. `input` gets its content.
std::optional<vexor::Description> DescribeInput(const std::string& path, Input& input);

// Reads a file that DescribeInput has accepted into a record. Null, with a message on standard
// error, if the record cannot be read, for example because the file has changed since.
std::unique_ptr<_XML_FULL_CFG> ReadRecord(const std::string& path);

}  // namespace tools::vexorcfg
