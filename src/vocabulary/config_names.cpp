#include "vexor/vocabulary/config_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace {

constexpr auto kModes = std::to_array<std::string_view>({
    "Disable",
    "Enable",
    "Random",
    "Toggle",
    "Default",
});
static_assert(kModes.size() == CFG_MODE_UNKNOWN);

constexpr auto kSysConfigs = std::to_array<std::string_view>({
    "PerfP_Limitation_Enable",
    "HangOnGlbReset",
    "Hybrid_Sleep",
    "Fast_Startup",
    "AC_Deep_S3",
    "DC_Deep_S3",
    "AC_Deep_S4",
    "DC_Deep_S4",
    "AC_Deep_S5",
    "DC_Deep_S5",
    "LPM0_PRI",
    "LPM1_PRI",
    "LPM2_PRI",
    "LPM3_PRI",
    "LPM4_PRI",
    "LPM5_PRI",
    "LPM6_PRI",
    "LPM7_PRI",
    "Stop_on_GlobalReset0_Mask",
    "Stop_on_GlobalReset1_Mask",
    "Stop_on_GlobalReset0_IOE_Mask",
    "Stop_on_GlobalReset1_IOE_Mask",
    "HPR_Cause0_Check_Mask",
    "IOE_HPR_Cause0_Mask",
});
static_assert(kSysConfigs.size() == SYS_CFG_UNKNOWN && vexor::AllDistinct(kSysConfigs));

constexpr auto kGuiConfigs = std::to_array<std::string_view>({
    "PerfP_Limitation_Enable",
    "PerfP_Threshold",
    "PerfP_Clip",
    "PerfP_Differential",
    "HangOnGlbReset",
    "Hybrid_Sleep",
    "Fast_Startup",
    "AC_Deep_S3",
    "DC_Deep_S3",
    "AC_Deep_S4",
    "DC_Deep_S4",
    "AC_Deep_S5",
    "DC_Deep_S5",
    "LPM0_PRI",
    "LPM1_PRI",
    "LPM2_PRI",
    "LPM3_PRI",
    "LPM4_PRI",
    "LPM5_PRI",
    "LPM6_PRI",
    "LPM7_PRI",
    "Power_Scheme",
    "Battery_Simulation",
    "CrashLogCollect",
    "Stop_on_GlobalReset0_Mask",
    "Stop_on_GlobalReset1_Mask",
    "Stop_on_GlobalReset0_IOE_Mask",
    "Stop_on_GlobalReset1_IOE_Mask",
    "HPR_Cause0_Check_Mask",
    "IOE_HPR_Cause0_Mask",
    "LTR_IGN_Mask",
    "Snoop_Latency_Mask",
    "PEG_Link_Disable_WA",
    "PCIe_DMI_L1_WA",
    "Power_Down_ISP_WA",
});
static_assert(kGuiConfigs.size() == GUI_CFG_POWER_DOWN_ISP_WA + 1 &&
              vexor::AllDistinct(kGuiConfigs));

// Names that older files give to the reset and hang-cause masks.
struct OlderName {
  std::string_view name;
  SYS_CFG_ID sys;
  GUI_CFG_ID gui;
};

constexpr auto kOlderNames = std::to_array<OlderName>({
    {"GlobalReset0_Check", SYS_CFG_STOP_ON_GLOBALRESET0_MASK, GUI_CFG_STOP_ON_GLOBALRESET0_MASK},
    {"GlobalReset1_Check", SYS_CFG_STOP_ON_GLOBALRESET1_MASK, GUI_CFG_STOP_ON_GLOBALRESET1_MASK},
    {"GlobalReset0_IOE_Check", SYS_CFG_STOP_ON_GLOBALRESET0_IOE_MASK,
     GUI_CFG_STOP_ON_GLOBALRESET0_IOE_MASK},
    {"GlobalReset1_IOE_Check", SYS_CFG_STOP_ON_GLOBALRESET1_IOE_MASK,
     GUI_CFG_STOP_ON_GLOBALRESET1_IOE_MASK},
    {"HPR_Cause0_Check", SYS_CFG_HPR_CAUSE0_CHECK_MASK, GUI_CFG_HPR_CAUSE0_CHECK_MASK},
});

template <class Id>
Id ParseOlderName(std::string_view text, Id OlderName::*id, Id otherwise) {
  for (const OlderName& older : kOlderNames) {
    if (older.name == text) return older.*id;
  }
  return otherwise;
}

}  // namespace

const char* GetConfigEnableStatus(int value) { return vexor::NameOf(kModes, value, "n/a"); }

CFG_MODE ParseConfigEnableStatus(std::string_view text) {
  return vexor::ValueOf(kModes, text, CFG_MODE_UNKNOWN);
}

const char* GetSysConfigName(int value) { return vexor::NameOf(kSysConfigs, value); }

SYS_CFG_ID ParseSysConfigID(std::string_view text) {
  const SYS_CFG_ID id = vexor::ValueOf(kSysConfigs, text, SYS_CFG_UNKNOWN);
  return id == SYS_CFG_UNKNOWN ? ParseOlderName(text, &OlderName::sys, id) : id;
}

const char* GetGuiConfigName(int value) { return vexor::NameOf(kGuiConfigs, value); }

GUI_CFG_ID ParseGuiConfigID(std::string_view text) {
  const GUI_CFG_ID id = vexor::ValueOf(kGuiConfigs, text, GUI_CFG_UNKNOWN);
  return id == GUI_CFG_UNKNOWN ? ParseOlderName(text, &OlderName::gui, id) : id;
}
