#include "config/pm_test_table.h"

#include <algorithm>

#include "config/tables/core_tests.h"
#include "config/tables/graphics_tests.h"
#include "config/tables/system_tests.h"

namespace vexor {
namespace {

using Pm = _GLOBALPM_XMLCFG;

// What a row may say beside its names and options.
struct Extra {
  std::string_view older = {};
  PmTestRow::Shape shape = PmTestRow::Shape::kElements;
  std::string_view knob_hint = {};
  bool ConfigRecord::*from_older = nullptr;
};

template <auto kRecord>
constexpr PmTestRow Test(VEXOR_PM_TEST_ID id, std::string_view group, std::string_view name,
                         std::span<const OptionRow> options, const Extra& extra = {}) {
  return {{.group = group,
           .name = name,
           .older = extra.older,
           .options = options,
           .record = RecordAt<kRecord>,
           .look = LookAt<kRecord>},
          id,
          extra.shape,
          extra.knob_hint,
          extra.from_older};
}

constexpr Extra kGraphics{.knob_hint = kGraphicsKnobHint};
constexpr Extra kArguments{.shape = PmTestRow::Shape::kArguments};
constexpr auto kFromOlder = static_cast<bool ConfigRecord::*>(&_PCIE_DEVICE_CFG::FromLegacyElement);
constexpr Extra kSplitDevice{.older = "PCIe-Link-DState", .from_older = kFromOlder};

constexpr std::array<PmTestRow, kPmTestCount> kTests = {{
    Test<&Pm::CSTATES>(PM_TEST_CSTATES, "CORE", "CSTATES", kCstatesOptions),
    Test<&Pm::PSTATES>(PM_TEST_PSTATES, "CORE", "PSTATES", kPstatesOptions),
    Test<&Pm::HWP>(PM_TEST_HWP, "CORE", "HWP", kHwpOptions),
    Test<&Pm::TSTATES>(PM_TEST_TSTATES, "CORE", "TSTATES", kTstatesOptions),
    Test<&Pm::SDC>(PM_TEST_SDC, "CORE", "SDC", kSdcOptions),
    Test<&Pm::FACT>(PM_TEST_FACT, "CORE", "FACT", kFactOptions),
    Test<&Pm::Ice_Cstates>(PM_TEST_ICE_CSTATES, "ICE", "Ice-Cstates", kIceCstatesOptions),
    Test<&Pm::Ice_Pstates>(PM_TEST_ICE_PSTATES, "ICE", "Ice-Pstates", kIcePstatesOptions),
    Test<&Pm::GSTATES>(PM_TEST_GSTATES, "SYSTEM", "GSTATES", kGstatesOptions),
    Test<&Pm::PECI>(PM_TEST_PECI, "SYSTEM", "PECI", kPeciOptions),
    Test<&Pm::iGFX_DVFS>(PM_TEST_IGFX_DVFS, "GT", "iGFX-DVFS", kIgfxDvfsOptions,
                         {.older = "GT-DVFS", .knob_hint = kGraphicsKnobHint}),
    Test<&Pm::iGFX_RC6>(PM_TEST_IGFX_RC6, "GT", "iGFX-RC6", kIgfxRc6Options,
                        {.older = "GT-RC6", .knob_hint = kGraphicsKnobHint}),
    Test<&Pm::dGFX_DVFS>(PM_TEST_DGFX_DVFS, "GT", "dGFX-DVFS", kDgfxDvfsOptions, kGraphics),
    Test<&Pm::dGFX_RC6>(PM_TEST_DGFX_RC6, "GT", "dGFX-RC6", kDgfxRc6Options, kGraphics),
    Test<&Pm::dGFX_SAGV>(PM_TEST_DGFX_SAGV, "GT", "dGFX-SAGV", kDgfxSagvOptions, kGraphics),
    Test<&Pm::DGFX_RESET>(PM_TEST_DGFX_RESET, "GT", "DGFX-RESET", kDgfxResetOptions),
    Test<&Pm::GCD_RC6>(PM_TEST_GCD_RC6, "GT", "GCD-RC6", kMediaRc6Options, kGraphics),
    Test<&Pm::GCD_DVFS>(PM_TEST_GCD_DVFS, "GT", "GCD-DVFS", kMediaDvfsOptions, kGraphics),
    Test<&Pm::SAMedia_RC6>(PM_TEST_SAMEDIA_RC6, "GT", "SAMedia-RC6", kMediaRc6Options, kGraphics),
    Test<&Pm::SAMedia_DVFS>(PM_TEST_SAMEDIA_DVFS, "GT", "SAMedia-DVFS", kMediaDvfsOptions,
                            kGraphics),
    Test<&Pm::FANSPEED_CTR>(PM_TEST_FANSPEED_CTR, "GT", "FANSPEED-CTR", kFanSpeedOptions),
    Test<&Pm::PCIe_Link>(PM_TEST_PCIE_LINK, "Device", "PCIe-Link", kPcieDeviceOptions,
                         kSplitDevice),
    Test<&Pm::PCIe_GenWidth>(PM_TEST_PCIE_GEN_WIDTH, "Device", "PCIe-GenWidth", kPcieDeviceOptions,
                             {.from_older = kFromOlder}),
    Test<&Pm::Dx_States>(PM_TEST_DX_STATES, "Device", "Dx-States", kPcieDeviceOptions,
                         kSplitDevice),
    Test<&Pm::IS_DVFS>(PM_TEST_IS_DVFS, "IPU", "IS-DVFS", kImagingDvfsOptions, kGraphics),
    Test<&Pm::PS_DVFS>(PM_TEST_PS_DVFS, "IPU", "PS-DVFS", kImagingDvfsOptions, kGraphics),
    Test<&Pm::Vpu_DVFS>(PM_TEST_VPU_DVFS, "Vpu", "Vpu-DVFS", kVpuDvfsOptions, kArguments),
    Test<&Pm::SAGV>(PM_TEST_SAGV, "UNCORE", "SAGV", kGearOptions, kGraphics),
    Test<&Pm::PSF0_GV>(PM_TEST_PSF0_GV, "UNCORE", "PSF0-GV", kGearOptions, kGraphics),
    Test<&Pm::UFS>(PM_TEST_UFS, "UNCORE", "UFS", kUfsOptions, kGraphics),
    Test<&Pm::MESH_GV>(PM_TEST_MESH_GV, "UNCORE", "MESH-GV", kMeshGvOptions, kArguments),
}};

}  // namespace

std::span<const PmTestRow> PmTests() { return kTests; }

const PmTestRow* FindPmTest(VEXOR_PM_TEST_ID id) {
  const auto row = std::ranges::find(kTests, id, &PmTestRow::id);
  return row == kTests.end() ? nullptr : &*row;
}

}  // namespace vexor
