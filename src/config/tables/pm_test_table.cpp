#include "config/tables/pm_test_table.h"

#include <algorithm>

#include "config/tables/core_tests.h"
#include "config/tables/graphics_tests.h"
#include "config/tables/sections.h"
#include "config/tables/system_tests.h"
#include "vocabulary/pm_test_names.h"

namespace vexor {
namespace {

using Pm = _GLOBALPM_XMLCFG;

// Optional fields of a row.
struct Extra {
  std::string_view older = {};  // if other than the vocabulary's older name
  PmTestRow::Shape shape = PmTestRow::Shape::kElements;
  std::string_view knob_hint = {};
  bool ConfigRecord::*from_older = nullptr;
};

template <auto kRecord>
constexpr PmTestRow Test(VEXOR_PM_TEST_ID id, std::string_view group, std::string_view about,
                         std::span<const OptionRow> options, const Extra& extra = {}) {
  return {{.group = group,
           .name = LongNameOf(id),
           .older = extra.older.empty() ? OlderNameOf(id) : extra.older,
           .about = about,
           .options = options,
           .record = RecordAt<kRecord, _PM_TEST_NODE>,
           .const_record = ConstRecordAt<kRecord, _PM_TEST_NODE>},
          id,
          extra.shape,
          extra.knob_hint,
          extra.from_older};
}

constexpr Extra kGraphics{.knob_hint = kGraphicsKnobHint};
constexpr Extra kArguments{.shape = PmTestRow::Shape::kArguments};
// The cast makes one field type for all records; only the three PCIe tests use it.
constexpr auto kFromOlder = static_cast<bool ConfigRecord::*>(&_PCIE_DEVICE_CFG::FromLegacyElement);
// One older element held the options of two tests; both rows read it.
constexpr Extra kSplitDevice{.older = "PCIe-Link-DState", .from_older = kFromOlder};

constexpr std::array<PmTestRow, kPmTestCount> kTests = {{
    Test<&Pm::CSTATES>(PM_TEST_CSTATES, "CORE", "Core and package C-states.", kCstatesOptions),
    Test<&Pm::PSTATES>(PM_TEST_PSTATES, "CORE", "P-states: frequencies requested by software.",
                       kPstatesOptions),
    Test<&Pm::HWP>(PM_TEST_HWP, "CORE", "Hardware P-states: frequencies selected by the processor.",
                   kHwpOptions),
    Test<&Pm::TSTATES>(PM_TEST_TSTATES, "CORE", "T-states: clock throttling.", kTstatesOptions),
    Test<&Pm::SDC>(PM_TEST_SDC, "CORE", "Duty cycles of whole packages.", kSdcOptions),
    Test<&Pm::FACT>(PM_TEST_FACT, "CORE", "Transitions between configuration states.",
                    kFactOptions),
    Test<&Pm::Ice_Cstates>(PM_TEST_ICE_CSTATES, "ICE", "Idle states of the image-compute engine.",
                           kIceCstatesOptions),
    Test<&Pm::Ice_Pstates>(PM_TEST_ICE_PSTATES, "ICE", "P-states of the image-compute engine.",
                           kIcePstatesOptions),
    Test<&Pm::GSTATES>(PM_TEST_GSTATES, "SYSTEM", "Sleep, shutdown and reset flows of the system.",
                       kGstatesOptions),
    Test<&Pm::PECI>(PM_TEST_PECI, "SYSTEM", "Commands over PECI.", kPeciOptions),
    Test<&Pm::iGFX_DVFS>(PM_TEST_IGFX_DVFS, "GT", "Frequencies of the integrated graphics.",
                         kIgfxDvfsOptions, kGraphics),
    Test<&Pm::iGFX_RC6>(PM_TEST_IGFX_RC6, "GT", "Idle state RC6 of the integrated graphics.",
                        kIgfxRc6Options, kGraphics),
    Test<&Pm::dGFX_DVFS>(PM_TEST_DGFX_DVFS, "GT", "Frequencies of the discrete graphics.",
                         kDgfxDvfsOptions, kGraphics),
    Test<&Pm::dGFX_RC6>(PM_TEST_DGFX_RC6, "GT", "Idle state RC6 of the discrete graphics.",
                        kDgfxRc6Options, kGraphics),
    Test<&Pm::dGFX_SAGV>(PM_TEST_DGFX_SAGV, "GT",
                         "Memory frequency points of the discrete graphics.", kDgfxSagvOptions,
                         kGraphics),
    Test<&Pm::DGFX_RESET>(PM_TEST_DGFX_RESET, "GT", "Resets of the discrete graphics.",
                          kDgfxResetOptions),
    Test<&Pm::GCD_RC6>(PM_TEST_GCD_RC6, "GT", "Idle state RC6 of the GCD.", kMediaRc6Options,
                       kGraphics),
    Test<&Pm::GCD_DVFS>(PM_TEST_GCD_DVFS, "GT", "Frequencies of the GCD.", kMediaDvfsOptions,
                        kGraphics),
    Test<&Pm::SAMedia_RC6>(PM_TEST_SAMEDIA_RC6, "GT", "Idle state RC6 of the media unit.",
                           kMediaRc6Options, kGraphics),
    Test<&Pm::SAMedia_DVFS>(PM_TEST_SAMEDIA_DVFS, "GT", "Frequencies of the media unit.",
                            kMediaDvfsOptions, kGraphics),
    Test<&Pm::FANSPEED_CTR>(PM_TEST_FANSPEED_CTR, "GT", "Fan control of graphics devices.",
                            kFanSpeedOptions),
    Test<&Pm::PCIe_Link>(PM_TEST_PCIE_LINK, "Device", "Power states of PCIe links.",
                         kPcieDeviceOptions, kSplitDevice),
    Test<&Pm::PCIe_GenWidth>(PM_TEST_PCIE_GEN_WIDTH, "Device",
                             "Generations and widths of PCIe links.", kPcieDeviceOptions,
                             {.from_older = kFromOlder}),
    Test<&Pm::Dx_States>(PM_TEST_DX_STATES, "Device", "D-states of devices.", kPcieDeviceOptions,
                         kSplitDevice),
    Test<&Pm::IS_DVFS>(PM_TEST_IS_DVFS, "IPU", "Frequencies of the imaging unit, IS part.",
                       kImagingDvfsOptions, kGraphics),
    Test<&Pm::PS_DVFS>(PM_TEST_PS_DVFS, "IPU", "Frequencies of the imaging unit, PS part.",
                       kImagingDvfsOptions, kGraphics),
    Test<&Pm::Vpu_DVFS>(PM_TEST_VPU_DVFS, "Vpu", "Frequencies of the vision unit.", kVpuDvfsOptions,
                        kArguments),
    Test<&Pm::SAGV>(PM_TEST_SAGV, "UNCORE", "Memory frequency points.", kGearOptions, kGraphics),
    Test<&Pm::PSF0_GV>(PM_TEST_PSF0_GV, "UNCORE", "Frequency points of the fabric PSF0.",
                       kGearOptions, kGraphics),
    Test<&Pm::UFS>(PM_TEST_UFS, "UNCORE", "Uncore frequencies.", kUfsOptions, kGraphics),
    Test<&Pm::MESH_GV>(PM_TEST_MESH_GV, "UNCORE", "Frequencies of the mesh.", kMeshGvOptions,
                       kArguments),
}};
static_assert(AreGroupsInOrder(kTests, Section::kTests));

}  // namespace

std::span<const PmTestRow> PmTests() { return kTests; }

const PmTestRow* FindPmTest(VEXOR_PM_TEST_ID id) {
  const auto row = std::ranges::find(kTests, id, &PmTestRow::id);
  return row == kTests.end() ? nullptr : &*row;
}

}  // namespace vexor
