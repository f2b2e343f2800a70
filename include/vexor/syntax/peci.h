// The commands of the PECI test.
//
//   commands   words joined by ";", in any case: "Ping;GetTemp;RdPkgConfig"
//   names      names of services or registers joined by ";", each of letters, digits, "_", "-" and
//              "."; a number is a name too: "Pkg-Temperature;0x1A". Behind the name of a register
//              ":" and a thread may stand: "Perf-Status:3"
//   numbers    numbers joined by ";", each for the name at the same place; one that is missing or
//              empty counts as 0: "0x0;;0xFF"
//   PCI        commands joined by ";", each "segment:bus:device:function:offset", for a write
//              followed by ":and-mask:or-mask": "0:0:31:0:0x40" or "0:0:31:0:0x40:0xFFFFFF00:0x1"
//   interface  "eSPI", "MCTP" or "Serial", in any case
//
// Blanks around an item are passed over, and so is a command a part of which is unknown, no number
// or out of its range. Any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

namespace vexor {

enum class PeciCommand : std::int32_t {
  kPing,              // "Ping"
  kGetDib,            // "GetDIB"
  kGetTemp,           // "GetTemp"
  kRdPkgConfig,       // "RdPkgConfig"
  kWrPkgConfig,       // "WrPkgConfig"
  kRdMsr,             // "RdMSR"
  kRdMsrExt,          // "RdMSRExt"
  kWrMsr,             // "WrMSR"
  kRdPciConfig,       // "RdPCIConfig"
  kWrPciConfig,       // "WrPCIConfig"
  kRdPciConfigLocal,  // "RdPCIConfigLocal"
  kWrPciConfigLocal,  // "WrPCIConfigLocal"
  kRdEndPointConfig,  // "RdEndPointConfig"
  kWrEndPointConfig,  // "WrEndPointConfig"
};

enum class PeciInterface : std::int32_t { kUnknown, kEspi, kMctp, kSerial };

// A read or a write of a service of the package.
struct PeciPkgConfig {
  std::string service;  // as written
  std::uint16_t parameter = 0;
  std::uint32_t data = 0;  // of a write
};

// A read of a register.
struct PeciMsr {
  std::string name;  // as written
  std::uint8_t thread = 0;
};

// A read or a write of a PCI register.
struct PeciPciConfig {
  std::uint16_t segment = 0;
  std::uint8_t bus = 0;
  std::uint8_t device = 0;    // 0 to 31
  std::uint8_t function = 0;  // 0 to 7
  std::uint16_t offset = 0;   // 0 to 4095
  std::uint32_t and_mask = 0xFFFFFFFF;
  std::uint32_t or_mask = 0;
};

// Returns the interface of a word, PeciInterface::kUnknown for any other text.
VEXOR_EXPORT PeciInterface ParsePeciInterface(std::string_view text);

}  // namespace vexor

// Returns the commands of a list, in its order.
VEXOR_EXPORT std::vector<vexor::PeciCommand> ParsePECIMajorCmdsList(std::string_view text);

// Returns the reads of a list of services and the list of their parameters (16 bits).
VEXOR_EXPORT std::vector<vexor::PeciPkgConfig> ParsePECIRdPkgCfgCmdsList(std::string_view names,
                                                                         std::string_view params);

// Returns the writes of a list of services and the lists of their parameters (16 bits) and of what
// is written (32 bits).
VEXOR_EXPORT std::vector<vexor::PeciPkgConfig> ParsePECIWrPkgCfgCmdsList(std::string_view names,
                                                                         std::string_view params,
                                                                         std::string_view data);

// Returns the reads of a list of registers.
VEXOR_EXPORT std::vector<vexor::PeciMsr> ParsePECIRdMSRCmdsList(std::string_view names);

// Returns the commands of a PCI list.
VEXOR_EXPORT std::vector<vexor::PeciPciConfig> ParsePECIPciCfgCmdsList(std::string_view text);
