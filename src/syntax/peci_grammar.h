// What is wrong with PECI commands in an option text; nothing for a good one. Empty text is good:
// nothing is asked for.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParsePeciInterface`.
std::optional<Fault> CheckPeciInterface(std::string_view text);

// Of `ParsePECIMajorCmdsList`.
std::optional<Fault> CheckPeciCommands(std::string_view text);

// Of the services of `ParsePECIRdPkgCfgCmdsList` and `ParsePECIWrPkgCfgCmdsList`.
std::optional<Fault> CheckPeciServices(std::string_view text);

// Of their parameters.
std::optional<Fault> CheckPeciParameters(std::string_view text);

// Of what is written, and of masks.
std::optional<Fault> CheckPeciData(std::string_view text);

// Of `ParsePECIRdMSRCmdsList`.
std::optional<Fault> CheckPeciRegisters(std::string_view text);

// Of `ParsePECIPciCfgCmdsList`.
std::optional<Fault> CheckPeciPciConfigs(std::string_view text);

}  // namespace vexor
