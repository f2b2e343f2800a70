// The options of "SystemSetup" and the lists of "SysConfiguration".
#pragma once

#include "config/tables/option_table.h"
#include "config/tables/sections.h"
#include "vexor/config/global_config.h"

namespace vexor {

// Replaces an empty host IP by the one in the host-IP file, and then any text that is not an IPv4
// address by empty text.
void NormalizeHostIp(_GLOBALCONFIG_XMLCFG& cfg);

// "CPU" and "PCH" are read but not written.
// clang-format off
inline constexpr auto kOverwriteOptions = Finish(Options<_GLOBALCONFIG_XMLCFG>({
    {.name = "CPU", .text = &_GLOBALCONFIG_XMLCFG::CPU,
     .about = "Processor to assume instead of the detected one.", .flow = Flow::kReadOnly},
    {.name = "PCH", .text = &_GLOBALCONFIG_XMLCFG::PCH,
     .about = "Platform controller to assume instead of the detected one.",
     .flow = Flow::kReadOnly},
    {.name = "Power_Base", .text = &_GLOBALCONFIG_XMLCFG::Power_Base, .syntax = Syntax::kAddress,
     .about = "Base address of the power-management block."},
    {.name = "MCH_Base", .text = &_GLOBALCONFIG_XMLCFG::MCH_Base, .syntax = Syntax::kAddress,
     .about = "Base address of the memory controller."},
    {.name = "GTTM_Address", .text = &_GLOBALCONFIG_XMLCFG::GTTM_Address,
     .syntax = Syntax::kAddress, .about = "Base address of the graphics registers."},
    {.name = "ISP_MMIO_Base", .text = &_GLOBALCONFIG_XMLCFG::ISP_MMIO_Base,
     .syntax = Syntax::kAddress, .about = "Base address of the image-processing registers."},
    {.name = "P2SB_Base", .text = &_GLOBALCONFIG_XMLCFG::P2SB_Base, .syntax = Syntax::kAddress,
     .about = "Base address of the sideband bridge."},
    {.name = "PCIeExt_Address", .text = &_GLOBALCONFIG_XMLCFG::PCIeExt_Address,
     .syntax = Syntax::kAddress, .about = "Base address of the PCIe configuration space."},
    {.name = "CrashLog_Base", .text = &_GLOBALCONFIG_XMLCFG::CrashLog_Base,
     .syntax = Syntax::kAddress, .about = "Base address of the crash log."},
    {.name = "XRAM_Base", .text = &_GLOBALCONFIG_XMLCFG::XRAM_Base, .syntax = Syntax::kAddress,
     .about = "Base address of the extension memory."},
}));

inline constexpr auto kSettingOptions = Finish(Options<_GLOBALCONFIG_XMLCFG>({
    {.name = "Seeds", .text = &_GLOBALCONFIG_XMLCFG::Seeds, .syntax = Syntax::kNumbers,
     .about = "Seeds of the random choices; empty for new seeds in each run."},
    {.name = "TopoMode", .text = &_GLOBALCONFIG_XMLCFG::TopoMode, .reset = "OS",
     .about = "Source of the processor topology."},
    {.name = "Ordered_Interleave_ICE_Flow",
     .text = &_GLOBALCONFIG_XMLCFG::Ordered_Interleave_ICE_Flow, .syntax = Syntax::kBoolean,
     .reset = "false", .about = "Whether interleaved tests run in a fixed order."},
    {.name = "Ordered_Flow_Interleave", .text = &_GLOBALCONFIG_XMLCFG::Ordered_Interleave_ICE_Flow,
     .syntax = Syntax::kBoolean, .reset = "false",
     .about = "Older name of Ordered_Interleave_ICE_Flow.", .flow = Flow::kReadOnly,
     .overwrite = Overwrite::kIfEmpty},
    {.name = "Ignore_Error_Code", .text = &_GLOBALCONFIG_XMLCFG::Ignore_Error_Code,
     .syntax = Syntax::kNumbers, .about = "Error codes that do not count as failures."},
    {.name = "MailBox_Max_Busy_Check", .text = &_GLOBALCONFIG_XMLCFG::MailBox_Max_Busy_Check,
     .syntax = Syntax::kCount, .reset = "1000",
     .about = "Maximum number of polls of a busy mailbox."},
    {.name = "Host_IP_Config", .text = &_GLOBALCONFIG_XMLCFG::Host_IP_Config,
     .syntax = Syntax::kIpv4,
     .about = "IPv4 address of the host; empty for the one in the host-IP file.",
     .adjust = kAdjustment<NormalizeHostIp>},
    {.name = "Log_Path", .text = &_GLOBALCONFIG_XMLCFG::Log_Path,
     .about = "Folder of the log files; empty for the current one."},
    {.name = "Log_File_Name", .text = &_GLOBALCONFIG_XMLCFG::Log_File_Name,
     .reset = "VexorLog.csv", .about = "Name of the log file; empty for one made from the time."},
    {.name = "Read_Interval", .text = &_GLOBALCONFIG_XMLCFG::Read_Interval,
     .about = "Time between two readings of the monitored registers."},
    {.name = "Log_Add_Option", .text = &_GLOBALCONFIG_XMLCFG::Log_Add_Option,
     .syntax = Syntax::kWord, .reset = "Overwrite", .words = "Overwrite;New;Append",
     .about = "What to do with an existing log file."},
    {.name = "Log_Level", .text = &_GLOBALCONFIG_XMLCFG::Log_Level, .syntax = Syntax::kLogLevel,
     .reset = "Information", .about = "Least severe level that is logged."},
    {.name = "Flow_Config", .text = &_GLOBALCONFIG_XMLCFG::Flow_Config, .reset = "No Interleave",
     .about = "How the tests are interleaved."},
    {.name = "Collect-Crashlog-AllResets",
     .text = &_GLOBALCONFIG_XMLCFG::Collect_Crashlog_AllResets, .syntax = Syntax::kBoolean,
     .reset = "false", .about = "Whether crash logs are collected after every reset."},
    {.name = "Check_Bios_Knobs", .text = &_GLOBALCONFIG_XMLCFG::Check_Bios_Knobs,
     .syntax = Syntax::kBoolean, .reset = "true",
     .about = "Whether the firmware's knobs are checked before the tests."},
    {.name = "Spare2", .text = &_GLOBALCONFIG_XMLCFG::Spare2, .about = "A spare text.",
     .flow = Flow::kResetOnly},
    {.name = "Spare3", .text = &_GLOBALCONFIG_XMLCFG::Spare3, .about = "A spare text.",
     .flow = Flow::kResetOnly},
    {.name = "Spare4", .text = &_GLOBALCONFIG_XMLCFG::Spare4, .about = "A spare text.",
     .flow = Flow::kResetOnly},
}));

// A list under "SysConfiguration": texts in elements "ITEM", or named values whose elements may
// have any name. Exactly one of items and pairs is set.
struct SystemListRow {
  std::string_view group;
  std::string_view name;
  std::vector<std::string> _GLOBALCONFIG_XMLCFG::*items = nullptr;
  NamedValues _GLOBALCONFIG_XMLCFG::*pairs = nullptr;
  std::string_view about = {};             // one sentence
  Hint hint = {};                          // comments at the head of the list
  std::span<const OptionRow> values = {};  // pairs: the values that have a grammar
  bool are_always_written = false;         // whether `values` are written even if absent
};

constexpr Hint Comments(const std::array<std::string_view, 4>& texts) {
  return {.kind = Hint::Kind::kPlain, .texts = texts};
}

// Named values of "OS" that have a grammar.
inline constexpr auto kOsValues = std::to_array<OptionRow>({
    {.name = "Power_Scheme", .syntax = Syntax::kPowerScheme,
     .about = "Power plan of the operating system.",
     .hint = {.kind = Hint::Kind::kOptions, .texts =
         {"Default,Balance,Power-Saver,High-Performance,Random,All"}}},
    {.name = "Battery_Simulation", .syntax = Syntax::kPowerSource,
     .about = "Power source to simulate.",
     .hint = {.kind = Hint::Kind::kOptions, .texts = {"Default,AC,DC"}}},
});

// A reset adds these to the list.
inline constexpr auto kKnobValues = std::to_array<OptionRow>({
    {.name = "LTR_IGN_Mask", .syntax = Syntax::kMask, .reset = "0",
     .about = "Devices whose latency tolerance reports are ignored."},
    {.name = "Snoop_Latency_Mask", .syntax = Syntax::kMask, .reset = "0",
     .about = "Devices whose snoop latency is ignored."},
});

// The lists, in the order of a written file.
inline constexpr SystemListRow kSystemLists[] = {
    {.group = "SYSTEM", .name = "GSTATES", .pairs = &_GLOBALCONFIG_XMLCFG::GSTATES,
     .about = "Settings of the sleep states.",
     .hint = Comments({
         "Valid Settings Names : HangOnGlbReset; Hybrid_Sleep; Fast_Startup; AC_Deep_S3; "
             "DC_Deep_S3; AC_Deep_S4; DC_Deep_S4; AC_Deep_S5; DC_Deep_S5"})},
    {.group = "SYSTEM", .name = "OS", .pairs = &_GLOBALCONFIG_XMLCFG::OS,
     .about = "Settings of the operating system.", .values = kOsValues, .are_always_written = true},
    {.group = "SYSTEM", .name = "KNOBS", .pairs = &_GLOBALCONFIG_XMLCFG::KNOBS,
     .about = "Further platform knobs.", .values = kKnobValues},
    {.group = "CORE", .name = "CONFIG", .items = &_GLOBALCONFIG_XMLCFG::CORE_CONFIG,
     .about = "Features of the cores.",
     .hint = Comments({
         "CONFIG format : Socket; Name; Value",
         "Valid Config options for CSTATES:SDC; Time_MWait; Enhanced_CState;C1_Demotion; "
             "C1_UnDemotion; C3_Demotion; C3_UnDemotion; PkgC_Demotion;PkgC_UnDemotion",
         "Valid Config options for PSTATES:Orvel_RateGlide; Turbo; HWP; RTH; TM;SwStp_Clk; "
             "P-CTRL; EETurbo; EHalt_INDP; EHalt_ULFM",
         "Valid Single Config value:Default,Enable;Disable;Random;Toggle"})},
    {.group = "CORE", .name = "SETTING", .items = &_GLOBALCONFIG_XMLCFG::CORE_SETTING,
     .about = "Values of the cores.",
     .hint = Comments({
         "Valid Settings options for CSTATES:PCxLimit",
         "Valid Settings options for PSTATES : Turbo_Activate_Ratios; Fast_MSR"})},
    {.group = "POWER", .name = "CONFIG", .items = &_GLOBALCONFIG_XMLCFG::POWER_CONFIG,
     .about = "Features of the power limits.",
     .hint = Comments({
         "Valid Config options for Power:RAPL_Pkg_Clamp_Limit1; RAPL_Pkg_Power_Limit2; "
             "RAPL_Pkg_Clamp_Limit2",
         "Valid Single Config value:Default,Enable;Disable;Random;Toggle"})},
    {.group = "POWER", .name = "SETTING", .items = &_GLOBALCONFIG_XMLCFG::POWER_SETTING,
     .about = "Values of the power limits.",
     .hint = Comments({
         "Valid Settings options for Power:Pkg_Power_Limit1_Watt; Pkg_Time_Limit1; "
             "Pkg_Power_Limit2_Watt; Pkg_Time_Limit2"})},
    {.group = "UNCORE", .name = "CONFIG", .pairs = &_GLOBALCONFIG_XMLCFG::UNCORE_CONFIG,
     .about = "Features of the uncore.",
     .hint = Comments({"Valid Single Config value:Default,Enable;Disable"})},
    {.group = "UNCORE", .name = "SETTING", .pairs = &_GLOBALCONFIG_XMLCFG::UNCORE_SETTING,
     .about = "Values of the uncore."},
};
// clang-format on
static_assert(AreGroupsInOrder(kSystemLists, Section::kSysConfiguration));

}  // namespace vexor
