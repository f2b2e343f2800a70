#include "vexor/vocabulary/report_labels.h"

#include <array>

#include "vocabulary/name_table.h"

namespace vexor {

namespace {

// Programs that read these reports search for the labels as they are, including the misspellings,
// the blank after "HWP" and the irregular last rows.
constexpr auto kSysInfo = std::to_array<std::string_view>({
    "CPUID",
    "LPC-ID",
    "Patch ID",
    "Virtual CPU",
    "Total Sockets",
    "Module-Per-Socket",
    "Cores-Per-Socket",
    "Theads-Per-Socket",
    "Hybrid Cores",
    "System Power States",
    "CPU Power States",
    "IA Px[Pn:P1:P0]",
    "Active-Core Turbo",
    "UFS Px[Pn:P0]",
    "GT Px[Pn:Pe:P0]",
    "ISP Px[Pn:P0]",
    "PMWR BASE",
    "MCH BASE",
    "PCIeExt BASE",
    "P2SB BASE",
    "GT MMIO BASE",
    "DGFX MMIO BASE",
    "ISP_MMIO",
    "Ice MMIO BASE",
    "VPU MMIO BASE",
    "IOE MMIO BASE",
    "Platorm-Info MSR",
    "AVX-512",
    "Debug Patch",
    "TJ-Max",
    "ProcHot/TM",
    "Fan Temp",
    "SDC",
    "HWP ",
    "HWP Pkg Mode",
    "CrashLog",
    "Config TDP",
    "Config TDP Level",
    "Nominal TDP Ratio",
    "TDP LEVEL1 Ratio",
    "TDP LEVEL1 PKG PWR",
    "TDP LEVEL1 min:max PWR",
    "TDP LEVEL2 Ratio",
    "TDP LEVEL2 PKG POWER",
    "TDP LEVEL 2 min:max PWR",
});

constexpr auto kSysCfg = std::to_array<std::string_view>({
    "Power Scheme",
    "Orvel RateGlide",
    "Turbo Mode",
    "HWP",
    "Race-To-Halt",
    "Thermal Monitor",
    "Clock Modulation",
    "P-Control",
    "Energy Turbo",
    "Fast-MSR",
    "Turbo Activation Ratio",
    "SDC",
    "Time Mwait",
    "C1-E",
    "C1 Demotion",
    "C1 UnDemotion",
    "C3 Demotion",
    "C3 UnDemotion",
    "PCx Demotion",
    "PCx UnDemotion",
    "Pkg Cstate Limit",
    "Hybrid Sleep",
    "Fast Startup",
    "AC Deep S3",
    "DC Deep S3",
    "AC Deep S4",
    "DC Deep S4",
    "AC Deep S5",
    "DC Deep S5",
    "RAPL Pkg Power Limit1",
    "RAPL Pkg Clamp Limit1",
    "Pkg Power Limit1(Watt)",
    "Pkg Time Limit1",
    "RAPL Pkg Power Limit2",
    "RAPL Pkg Clamp Limit2",
    "Pkg Power Limit2(Watt)",
    "Pkg Time Limit2",
    "WinIdle BIOS En",
});

}  // namespace

}  // namespace vexor

using namespace vexor;

const char* GetDefSysInfoName(int index) { return NameOf(kSysInfo, index); }

int GetDefSysInfoListSize() { return static_cast<int>(kSysInfo.size()); }

const char* GetDefSysCfgName(int index) { return NameOf(kSysCfg, index); }

int GetDefSysCfgListSize() { return static_cast<int>(kSysCfg.size()); }
