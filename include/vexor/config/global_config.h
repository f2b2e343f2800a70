// The "GLOBALCONFIGURATION" section, that is, settings of the whole run, and the file's version.
//
//   <GLOBALCONFIGURATION>
//     <SysConfiguration> <CORE> <CONFIG> <ITEM>..</ITEM> ... </SysConfiguration>
//     <CustomConfiguration> ... </CustomConfiguration>
//     <SystemSetup> <OverwriteCfg> <CPU>..</CPU> ... <SETTING> <TopoMode>OS</TopoMode> ...
//   </GLOBALCONFIGURATION>
//
// Values are stored as trimmed text. One thread at a time may use a record.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vexor/config/config_record.h"
#include "vexor/config/custom_registers.h"
#include "vexor/export.h"

struct _GLOBALCONFIG_XMLCFG : vexor::ConfigRecord {
  std::string Version;
  bool VersionMatch = true;  // see GetGlobalCfgXML; set again when ReadXMLPar succeeds
  std::vector<std::string> CORE_CONFIG;
  std::vector<std::string> CORE_SETTING;
  std::vector<std::string> POWER_CONFIG;
  std::vector<std::string> POWER_SETTING;
  vexor::NamedValues UNCORE_CONFIG;
  vexor::NamedValues UNCORE_SETTING;
  vexor::NamedValues GSTATES;
  vexor::NamedValues OS;
  vexor::NamedValues KNOBS;
  _CUSTOM_XMLCFG CustomConfiguration;
  std::string CPU;
  std::string PCH;
  std::string Power_Base;
  std::string MCH_Base;
  std::string GTTM_Address;
  std::string ISP_MMIO_Base;
  std::string P2SB_Base;
  std::string PCIeExt_Address;
  std::string CrashLog_Base;
  std::string XRAM_Base;
  std::string TopoMode;
  std::string Seeds;
  std::string Ordered_Interleave_ICE_Flow;
  std::string Ignore_Error_Code;
  std::string MailBox_Max_Busy_Check;
  std::string Host_IP_Config;
  std::string Log_Path;
  std::string Log_File_Name;
  std::string Log_Add_Option;
  std::string Log_Level;
  std::string Read_Interval;
  std::string Spare1;  // never touched by the library
  std::string Collect_Crashlog_AllResets;
  std::string Spare2;  // reset only, as the next two
  std::string Spare3;
  std::string Spare4;
  std::string OverwriteCfg;  // both: the element's children that are neither empty nor "Default"
  std::string SETTING;       // in one text, "<name>text  " for each
  std::string Flow_Config;
  std::string Check_Bios_Knobs;
  std::uint64_t SpareWord = 0;    // never touched by the library
  std::uint64_t LoopTracker = 0;  // set to 1 by every reading; never reset
};

// Reads the version and the "GLOBALCONFIGURATION" child of `root`. Sets the record's version text
// (empty if the file has none) and its loop counter, and clears the version-match flag unless the
// version equals the library's byte for byte. With `verifyVersion`, a version is refused if it has
// fewer than four parts, or if its first or fourth part (up to a "_") is not the library's: prints
// "Invalid XML Version: " and the version, reads nothing more and returns false. Also returns false
// for a null `root`. If the file has "SysConfiguration", all lists of its groups are replaced;
// likewise all texts of "OverwriteCfg" and of "SETTING". What the file lacks stays as it was. If
// the file has "SETTING", an empty host IP is read from the host-IP file, and one that is not an
// IPv4 address becomes empty.
VEXOR_EXPORT bool GetGlobalCfgXML(_GLOBALCONFIG_XMLCFG& cfg, const tinyxml2::XMLElement* root,
                                  bool verifyVersion);

// Returns the first line of the host-IP file without outer blanks and without a carriage return;
// empty text if the file cannot be opened. The file is C:\temp\Vexor\HostIP.txt on Windows and
// /etc/vexor/HostIP.txt elsewhere, unless the environment variable VEXOR_HOST_IP_FILE gives
// another. Any thread may call, as long as none changes the environment.
VEXOR_EXPORT std::string ReadHostIpFile();

namespace vexor {

// Sets the record's texts and lists to their defaults, and reads the host IP from the host-IP file.
// Does not change the version-match flag, the loop counter, OverwriteCfg, SETTING and the members
// that the library never touches.
VEXOR_EXPORT void ResetGlobalConfig(_GLOBALCONFIG_XMLCFG& cfg);

}  // namespace vexor
