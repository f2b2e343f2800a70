// The commands of the PECI test.
//
//   commands   words joined by ";", in any case: "Ping;GetTemp;RdPkgConfig"
//   names      names of services or registers joined by ";", made of letters, digits, "_", "-" and
//              "."; a number is a name, too: "Pkg-Temperature;0x1A". The name of a register may be
//              followed by ":" and a thread: "Perf-Status:3"
//   numbers    numbers joined by ";", each for the name at the same position; missing and empty
//              ones are 0: "0x0;;0xFF"
//   PCI        commands joined by ";", each "segment:bus:device:function:offset", for a write
//              followed by ":and-mask:or-mask": "0:0:31:0:0x40" or "0:0:31:0:0x40:0xFFFFFF00:0x1"
//   interface  "eSPI", "MCTP" or "Serial", in any case
//
// Blanks around items, and around the numbers in them, are ignored; the interface must not have
// any. A command is skipped if a part of it is unknown, not a number or out of range; for services
// that includes the parameter and data at its position. Throws only std::bad_alloc. Any thread may
// call.
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

// Reads or writes a service of the package.
struct PeciPkgConfig {
  std::string service;          // as in the text
  std::uint16_t parameter = 0;  // 0 to 0xFFFF
  std::uint32_t data = 0;       // to be written; 0 for a read
};

// Reads a register.
struct PeciMsr {
  std::string name;         // as in the text
  std::uint8_t thread = 0;  // 0 to 255
};

// Reads or writes a PCI register.
struct PeciPciConfig {
  std::uint16_t segment = 0;
  std::uint8_t bus = 0;
  std::uint8_t device = 0;    // 0 to 31
  std::uint8_t function = 0;  // 0 to 7
  std::uint16_t offset = 0;   // 0 to 4095
  // The masks of a write. A read has these defaults.
  std::uint32_t and_mask = 0xFFFFFFFF;
  std::uint32_t or_mask = 0;
};

// Returns the interface; PeciInterface::kUnknown for any other text.
VEXOR_EXPORT PeciInterface ParsePeciInterface(std::string_view text);

}  // namespace vexor

// Returns the commands of a list, in order.
VEXOR_EXPORT std::vector<vexor::PeciCommand> ParsePECIMajorCmdsList(std::string_view text);

// Returns reads of the services in `names`, in order, with the numbers in `params` as their
// parameters (16 bits).
VEXOR_EXPORT std::vector<vexor::PeciPkgConfig> ParsePECIRdPkgCfgCmdsList(std::string_view names,
                                                                         std::string_view params);

// Returns writes to the services in `names`, in order, with the numbers in `params` as their
// parameters (16 bits) and those in `data` as the values to write (32 bits).
VEXOR_EXPORT std::vector<vexor::PeciPkgConfig> ParsePECIWrPkgCfgCmdsList(std::string_view names,
                                                                         std::string_view params,
                                                                         std::string_view data);

// Returns reads of the registers in `names`, in order.
VEXOR_EXPORT std::vector<vexor::PeciMsr> ParsePECIRdMSRCmdsList(std::string_view names);

// Returns the commands of a PCI list, in order.
VEXOR_EXPORT std::vector<vexor::PeciPciConfig> ParsePECIPciCfgCmdsList(std::string_view text);
