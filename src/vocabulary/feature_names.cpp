#include "vexor/vocabulary/feature_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace {

constexpr auto kPower = std::to_array<std::string_view>({
    "RAPL_Pkg_Power_Limit1",
    "RAPL_Pkg_Clamp_Limit1",
    "RAPL_Pkg_Power_Limit2",
    "RAPL_Pkg_Clamp_Limit2",
    "Pkg_Power_Limit1_(W)",
    "Pkg_Time_Limit1",
    "Pkg_Power_Limit2_(W)",
    "Pkg_Time_Limit2",
});
static_assert(vexor::AllDistinct(kPower));

constexpr auto kCore = std::to_array<std::string_view>({
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
});
static_assert(vexor::AllDistinct(kCore));

constexpr auto kCstateLatency = std::to_array<std::string_view>({
    "Latency CTL 0",
    "Latency CTL 1",
    "Latency CTL 2",
    "Latency CTL 3",
    "Latency CTL 4",
    "Latency CTL 5",
});

constexpr auto kPrivateRegisters = std::to_array<std::string_view>({
    "PKG_ENERGY",
    "PKG_RESIDENCY",
    "CORE_RESIDENCY",
    "POWER_CONTROL",
    "PERF_STATUS",
    "LIMIT_REASONS",
    "THERMAL_STATUS",
    "TURBO_LIMIT",
});
static_assert(vexor::AllDistinct(kPrivateRegisters));

constexpr auto kMailboxes = std::to_array<std::string_view>({"CPU", "GT", "PMC", "ISP", "VPU"});

}  // namespace

const char* GetNameOfPower(int value) { return vexor::NameOf(kPower, value); }

CF_POWER ParseIDOfPower(std::string_view text) {
  return vexor::ValueOf(kPower, text, CF_POWER_UNKNOWN);
}

const char* GetNameOfCore(int value) { return vexor::NameOf(kCore, value); }

CF_CORE ParseIDOfCore(std::string_view text) {
  return vexor::ValueOf(kCore, text, CF_CORE_UNKNOWN);
}

CF_CORE ParsePMFeatureID(std::string_view text) { return ParseIDOfCore(text); }

const char* GetNameOfCstateLatency(int value) { return vexor::NameOf(kCstateLatency, value); }

CF_CSTATE_LATENCY_CTL ParseIdOfCstateLatency(std::string_view text) {
  return vexor::ValueOf(kCstateLatency, text, CF_CSTATE_LATENCY_CTL_UNKNOWN);
}

const char* GetPrivateRegisterName(int value) { return vexor::NameOf(kPrivateRegisters, value); }

PRIVAVE_REGS ParsePrivateRegisterID(std::string_view text) {
  return vexor::ValueOf(kPrivateRegisters, text, PRIVAVE_REGS_UNKNOWN);
}

CUSTOM_CFG_MAILBOX ParseCustomConfigMailboxID(std::string_view text) {
  return vexor::ValueOf(kMailboxes, text, CUSTOM_CFG_MAILBOX_UNKNOWN);
}

const char* vexor::GetCustomConfigMailboxName(int value) { return NameOf(kMailboxes, value); }
