// The names of the tests: those of display and input, and those of the elements of a configuration
// file.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "util/table_checks.h"
#include "util/text.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {

// How a long name is matched as input.
enum class TestNameInput : std::uint8_t {
  kAsAsked,  // case matters unless the caller ignores it
  kAnyCase,  // case never matters
  kRefused,  // never: the name is only displayed
};

struct PmTestNames {
  VEXOR_PM_TEST_ID id;
  std::string_view long_name;
  std::string_view short_name;
  TestNameInput input = TestNameInput::kAsAsked;
};

// The index of a row is the test's identifier. That "dGFX-SAGV" ignores case and "FANSPEED-CTR" is
// not accepted is part of the interface: existing files and scripts rely on it.
inline constexpr auto kPmTestNames = std::to_array<PmTestNames>({
    {PM_TEST_VEXOR, "VEXOR", "vexor"},
    {PM_TEST_CSTATES, "CSTATES", "cstate"},
    {PM_TEST_HWP, "HWP", "hwp"},
    {PM_TEST_PSTATES, "PSTATES", "pstate"},
    {PM_TEST_TSTATES, "TSTATES", "tstate"},
    {PM_TEST_SDC, "SDC", "sdc"},
    {PM_TEST_GSTATES, "GSTATES", "gstate"},
    {PM_TEST_PECI, "PECI", "peci"},
    {PM_TEST_IGFX_DVFS, "iGFX-DVFS", "dvfs"},
    {PM_TEST_IGFX_RC6, "iGFX-RC6", "rc6"},
    {PM_TEST_DGFX_DVFS, "dGFX-DVFS", "dgdvfs"},
    {PM_TEST_DGFX_RC6, "dGFX-RC6", "dgrc6"},
    {PM_TEST_DGFX_SAGV, "dGFX-SAGV", "dgsagv", TestNameInput::kAnyCase},
    {PM_TEST_DGFX_RESET, "DGFX-RESET", "dgreset"},
    {PM_TEST_FANSPEED_CTR, "FANSPEED-CTR", "dgfan", TestNameInput::kRefused},
    {PM_TEST_GCD_RC6, "GCD-RC6", "gcdrc6"},
    {PM_TEST_GCD_DVFS, "GCD-DVFS", "gcddvfs"},
    {PM_TEST_SAMEDIA_RC6, "SAMedia-RC6", "mediarc6"},
    {PM_TEST_SAMEDIA_DVFS, "SAMedia-DVFS", "mediadvfs"},
    {PM_TEST_VPU_DVFS, "Vpu-DVFS", "vpudvfs"},
    {PM_TEST_PS_DVFS, "PS-DVFS", "ipups"},
    {PM_TEST_IS_DVFS, "IS-DVFS", "ipuis"},
    {PM_TEST_UFS, "UFS", "ufs"},
    {PM_TEST_SAGV, "SAGV", "sagv"},
    {PM_TEST_PSF0_GV, "PSF0-GV", "psf0"},
    {PM_TEST_MESH_GV, "MESH-GV", "meshgv"},
    {PM_TEST_ICE_PSTATES, "Ice-Pstates", "icep"},
    {PM_TEST_ICE_CSTATES, "Ice-Cstates", "icec"},
    {PM_TEST_FACT, "FACT", "fact"},
    {PM_TEST_PCIE_LINK, "PCIe-Link", "link"},
    {PM_TEST_PCIE_GEN_WIDTH, "PCIe-GenWidth", "gen"},
    {PM_TEST_DX_STATES, "Dx-States", "dxstates"},
    {PM_TEST_TEST_CONTROL, "TestControl", "testcontrol"},
    {PM_TEST_ALL, "NA", "all", TestNameInput::kRefused},
    {PM_TEST_MAX, "NA", "max", TestNameInput::kRefused},
    {PM_TEST_START, "Vexor-Start", "start"},
    {PM_TEST_END, "Vexor-End", "end"},
});
static_assert(kPmTestNames.size() == PM_TEST_END + 1 && AreInOrder(kPmTestNames, &PmTestNames::id));
static_assert(AreDistinct(kPmTestNames, &PmTestNames::short_name, EqualsIgnoreCase));
static_assert(NoTwo(kPmTestNames, [](const PmTestNames& a, const PmTestNames& b) {
  const bool is_input = a.input != TestNameInput::kRefused && b.input != TestNameInput::kRefused;
  return is_input && EqualsIgnoreCase(a.long_name, b.long_name);
}));

// Names of tests in files and scripts of older versions.
struct OlderTestName {
  std::string_view name;
  VEXOR_PM_TEST_ID id;
};

inline constexpr auto kOlderPmTestNames = std::to_array<OlderTestName>({
    {"GT-DVFS", PM_TEST_IGFX_DVFS},
    {"GT-RC6", PM_TEST_IGFX_RC6},
});
static_assert(AreDistinct(kOlderPmTestNames, &OlderTestName::name, EqualsIgnoreCase));

constexpr std::string_view LongNameOf(VEXOR_PM_TEST_ID test) {
  return kPmTestNames[static_cast<std::size_t>(test)].long_name;
}

// Returns empty text for a test without an older name.
constexpr std::string_view OlderNameOf(VEXOR_PM_TEST_ID test) {
  for (const OlderTestName& older : kOlderPmTestNames) {
    if (older.id == test) return older.name;
  }
  return {};
}

}  // namespace vexor
