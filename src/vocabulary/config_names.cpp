#include "vexor/vocabulary/config_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace vexor {

namespace {

constexpr auto kModes = NamesBefore<CFG_MODE_UNKNOWN>({
    {CFG_MODE_DISABLE, "Disable"},
    {CFG_MODE_ENABLE, "Enable"},
    {CFG_MODE_RANDOM, "Random"},
    {CFG_MODE_TOGGLE, "Toggle"},
    {CFG_MODE_DEFAULT, "Default"},
});

constexpr auto kSysConfigs = NamesBefore<SYS_CFG_UNKNOWN>({
    {SYS_CFG_PERFP_LIMITATION_ENABLE, "PerfP_Limitation_Enable"},
    {SYS_CFG_HANGONGLBRESET, "HangOnGlbReset"},
    {SYS_CFG_HYBRID_SLEEP, "Hybrid_Sleep"},
    {SYS_CFG_FAST_STARTUP, "Fast_Startup"},
    {SYS_CFG_AC_DEEP_S3, "AC_Deep_S3"},
    {SYS_CFG_DC_DEEP_S3, "DC_Deep_S3"},
    {SYS_CFG_AC_DEEP_S4, "AC_Deep_S4"},
    {SYS_CFG_DC_DEEP_S4, "DC_Deep_S4"},
    {SYS_CFG_AC_DEEP_S5, "AC_Deep_S5"},
    {SYS_CFG_DC_DEEP_S5, "DC_Deep_S5"},
    {SYS_CFG_LPM0_PRI, "LPM0_PRI"},
    {SYS_CFG_LPM1_PRI, "LPM1_PRI"},
    {SYS_CFG_LPM2_PRI, "LPM2_PRI"},
    {SYS_CFG_LPM3_PRI, "LPM3_PRI"},
    {SYS_CFG_LPM4_PRI, "LPM4_PRI"},
    {SYS_CFG_LPM5_PRI, "LPM5_PRI"},
    {SYS_CFG_LPM6_PRI, "LPM6_PRI"},
    {SYS_CFG_LPM7_PRI, "LPM7_PRI"},
    {SYS_CFG_STOP_ON_GLOBALRESET0_MASK, "Stop_on_GlobalReset0_Mask"},
    {SYS_CFG_STOP_ON_GLOBALRESET1_MASK, "Stop_on_GlobalReset1_Mask"},
    {SYS_CFG_STOP_ON_GLOBALRESET0_IOE_MASK, "Stop_on_GlobalReset0_IOE_Mask"},
    {SYS_CFG_STOP_ON_GLOBALRESET1_IOE_MASK, "Stop_on_GlobalReset1_IOE_Mask"},
    {SYS_CFG_HPR_CAUSE0_CHECK_MASK, "HPR_Cause0_Check_Mask"},
    {SYS_CFG_IOE_HPR_CAUSE0_MASK, "IOE_HPR_Cause0_Mask"},
});

constexpr auto kGuiConfigs = NamesBefore<Next(GUI_CFG_POWER_DOWN_ISP_WA)>({
    {GUI_CFG_PERFP_LIMITATION_ENABLE, "PerfP_Limitation_Enable"},
    {GUI_CFG_PERFP_THRESHOLD, "PerfP_Threshold"},
    {GUI_CFG_PERFP_CLIP, "PerfP_Clip"},
    {GUI_CFG_PERFP_DIFFERENTIAL, "PerfP_Differential"},
    {GUI_CFG_HANGONGLBRESET, "HangOnGlbReset"},
    {GUI_CFG_HYBRID_SLEEP, "Hybrid_Sleep"},
    {GUI_CFG_FAST_STARTUP, "Fast_Startup"},
    {GUI_CFG_AC_DEEP_S3, "AC_Deep_S3"},
    {GUI_CFG_DC_DEEP_S3, "DC_Deep_S3"},
    {GUI_CFG_AC_DEEP_S4, "AC_Deep_S4"},
    {GUI_CFG_DC_DEEP_S4, "DC_Deep_S4"},
    {GUI_CFG_AC_DEEP_S5, "AC_Deep_S5"},
    {GUI_CFG_DC_DEEP_S5, "DC_Deep_S5"},
    {GUI_CFG_LPM0_PRI, "LPM0_PRI"},
    {GUI_CFG_LPM1_PRI, "LPM1_PRI"},
    {GUI_CFG_LPM2_PRI, "LPM2_PRI"},
    {GUI_CFG_LPM3_PRI, "LPM3_PRI"},
    {GUI_CFG_LPM4_PRI, "LPM4_PRI"},
    {GUI_CFG_LPM5_PRI, "LPM5_PRI"},
    {GUI_CFG_LPM6_PRI, "LPM6_PRI"},
    {GUI_CFG_LPM7_PRI, "LPM7_PRI"},
    {GUI_CFG_POWER_SCHEME, "Power_Scheme"},
    {GUI_CFG_BATTERY_SIMULATION, "Battery_Simulation"},
    {GUI_CFG_CRASHLOGCOLLECT, "CrashLogCollect"},
    {GUI_CFG_STOP_ON_GLOBALRESET0_MASK, "Stop_on_GlobalReset0_Mask"},
    {GUI_CFG_STOP_ON_GLOBALRESET1_MASK, "Stop_on_GlobalReset1_Mask"},
    {GUI_CFG_STOP_ON_GLOBALRESET0_IOE_MASK, "Stop_on_GlobalReset0_IOE_Mask"},
    {GUI_CFG_STOP_ON_GLOBALRESET1_IOE_MASK, "Stop_on_GlobalReset1_IOE_Mask"},
    {GUI_CFG_HPR_CAUSE0_CHECK_MASK, "HPR_Cause0_Check_Mask"},
    {GUI_CFG_IOE_HPR_CAUSE0_MASK, "IOE_HPR_Cause0_Mask"},
    {GUI_CFG_LTR_IGN_MASK, "LTR_IGN_Mask"},
    {GUI_CFG_SNOOP_LATENCY_MASK, "Snoop_Latency_Mask"},
    {GUI_CFG_PEG_LINK_DISABLE_WA, "PEG_Link_Disable_WA"},
    {GUI_CFG_PCIE_DMI_L1_WA, "PCIe_DMI_L1_WA"},
    {GUI_CFG_POWER_DOWN_ISP_WA, "Power_Down_ISP_WA"},
});

// Names of the reset and hang-cause masks in older files.
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
static_assert(AreDistinct(kOlderNames, &OlderName::name));

template <class Id>
Id ParseOlderName(std::string_view text, Id OlderName::*id, Id otherwise) {
  for (const OlderName& older : kOlderNames) {
    if (older.name == text) return older.*id;
  }
  return otherwise;
}

}  // namespace

}  // namespace vexor

using namespace vexor;

const char* GetConfigEnableStatus(int value) { return NameOf(kModes, value, "n/a"); }

CFG_MODE ParseConfigEnableStatus(std::string_view text) {
  return ValueOf(kModes, text, CFG_MODE_UNKNOWN);
}

const char* GetSysConfigName(int value) { return NameOf(kSysConfigs, value); }

SYS_CFG_ID ParseSysConfigID(std::string_view text) {
  const SYS_CFG_ID id = ValueOf(kSysConfigs, text, SYS_CFG_UNKNOWN);
  return id == SYS_CFG_UNKNOWN ? ParseOlderName(text, &OlderName::sys, id) : id;
}

const char* GetGuiConfigName(int value) { return NameOf(kGuiConfigs, value); }

GUI_CFG_ID ParseGuiConfigID(std::string_view text) {
  const GUI_CFG_ID id = ValueOf(kGuiConfigs, text, GUI_CFG_UNKNOWN);
  return id == GUI_CFG_UNKNOWN ? ParseOlderName(text, &OlderName::gui, id) : id;
}
