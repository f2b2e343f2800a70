// The "CustomConfiguration" element: register writes that are applied before testing.
//
//   <MSR_CFG> <MSR> <Address>0x1A0</Address> <AndMask>..</AndMask> ... </MSR> ... </MSR_CFG>
//
// Each kind of item has a container element of its own. An item holds the trimmed text of each of
// its children, empty if the child is missing, and all of them in one text, ItemText:
// "<name>text  " for each child, or "<name/>  " if it is empty. The library does not apply the
// items; the caller does.
#pragma once

#include <string>
#include <vector>

#include "vexor/config/config_record.h"

struct _MSR_ITEM : vexor::ConfigRecord {
  std::string Address;
  std::string AndMask;
  std::string OrMask;
  std::string Pkg;
  std::string Module;
  std::string CORE;
  std::string Spare;  // always empty after reading
  std::string ItemText;
};

// The items of "PMC-MMIO", "GT-MMIO", "ISP-MMIO" and "MMIO".
struct _MMIO_ITEM : vexor::ConfigRecord {
  std::string Offset;
  std::string AndMask;
  std::string OrMask;
  std::string Spare;
  std::string ItemText;
};

struct _P2SB_MMIO_ITEM : vexor::ConfigRecord {
  std::string Port;
  std::string Address;
  std::string AndMask;
  std::string OrMask;
  std::string Spare;
  std::string ItemText;
};

struct _PCIE_ITEM : vexor::ConfigRecord {
  std::string Segment;
  std::string Bus;
  std::string Device;
  std::string Function;
  std::string Offset;
  std::string AndMask;
  std::string OrMask;
  std::string Spare;
  std::string ItemText;
};

struct _CRB_ITEM : vexor::ConfigRecord {
  std::string Address;
  std::string AndMask;
  std::string OrMask;
  std::string Type;
  std::string Pkg;
  std::string CORE;
  std::string Spare;
  std::string ItemText;
};

struct _IOSF_ITEM : vexor::ConfigRecord {
  std::string Port;
  std::string Register;
  std::string AndMask;
  std::string OrMask;
  std::string Spare;
  std::string ItemText;
};

struct _MAILBOX_ITEM : vexor::ConfigRecord {
  std::string Command;
  std::string Sub_Command;
  std::string Value;
  std::string Type;
  std::string ReadWriteType;
  std::string Offset;
  std::string Spare;
  std::string ItemText;
};

// Reading a file replaces the list of each container that the file has; the other lists stay.
struct _CUSTOM_XMLCFG {
  std::vector<_MSR_ITEM> MSR_CFG;
  std::vector<_MMIO_ITEM> PMC_MMIO;
  std::vector<_MMIO_ITEM> GT_MMIO;
  std::vector<_P2SB_MMIO_ITEM> P2SB_MMIO;
  std::vector<_MMIO_ITEM> ISP_MMIO;
  std::vector<_MMIO_ITEM> MMIO;
  std::vector<_PCIE_ITEM> PCIE_CFG;
  std::vector<_CRB_ITEM> CRBCFG;
  std::vector<_IOSF_ITEM> IOSFCFG;
  std::vector<_MAILBOX_ITEM> MailBoxCfg;
};
