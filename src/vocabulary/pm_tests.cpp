#include "vexor/vocabulary/pm_tests.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "util/text.h"
#include "vocabulary/name_table.h"

namespace {

// How a long name is accepted back as input.
enum class Input {
  kAsAsked,  // exactly, or in any case when the caller asks
  kAnyCase,  // in any case, whatever the caller asks
  kRefused,  // a display name only
};

struct TestNames {
  VEXOR_PM_TEST_ID id;
  std::string_view long_name;
  std::string_view short_name;
  Input input = Input::kAsAsked;
};

// A test's row index is its identifier. That "dGFX-SAGV" ignores case and that "FANSPEED-CTR" is
// not accepted back are part of the interface: existing files and scripts rely on it.
constexpr auto kTests = std::to_array<TestNames>({
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
    {PM_TEST_DGFX_SAGV, "dGFX-SAGV", "dgsagv", Input::kAnyCase},
    {PM_TEST_DGFX_RESET, "DGFX-RESET", "dgreset"},
    {PM_TEST_FANSPEED_CTR, "FANSPEED-CTR", "dgfan", Input::kRefused},
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
    {PM_TEST_ALL, "NA", "all", Input::kRefused},
    {PM_TEST_MAX, "NA", "max", Input::kRefused},
    {PM_TEST_START, "Vexor-Start", "start"},
    {PM_TEST_END, "Vexor-End", "end"},
});
static_assert(kTests.size() == PM_TEST_END + 1 && vexor::AreInOrder(kTests, &TestNames::id));

struct Alias {
  std::string_view long_name;
  VEXOR_PM_TEST_ID id;
};

constexpr auto kAliases = std::to_array<Alias>({
    {"GT-DVFS", PM_TEST_IGFX_DVFS},
    {"GT-RC6", PM_TEST_IGFX_RC6},
});

// Names of one length mostly differ in their first letter: to look at it costs less than a call to
// compare the rest.
constexpr bool IsSameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a.empty() || (a.front() == b.front() && a == b));
}

// No two long names differ in case only, so the order of comparison does not show.
template <class Equals>
VEXOR_PM_TEST_ID FindLongName(std::string_view name, Equals equals) {
  for (const auto& [id, long_name, short_name, input] : kTests) {
    if (input == Input::kRefused) continue;
    const bool is_any_case = input == Input::kAnyCase;
    if (is_any_case ? vexor::EqualsIgnoreCase(name, long_name) : equals(name, long_name)) {
      return id;
    }
  }
  for (const Alias& alias : kAliases) {
    if (equals(name, alias.long_name)) return alias.id;
  }
  return PM_TEST_MAX;
}

template <class Equals>
VEXOR_PM_TEST_ID FindShortName(std::string_view name, Equals equals) {
  for (std::size_t id = 0; id < kTests.size(); ++id) {
    if (equals(name, kTests[id].short_name)) return static_cast<VEXOR_PM_TEST_ID>(id);
  }
  return PM_TEST_MAX;
}

bool SelectsTest(const char* argument) {
  if (argument == nullptr) return false;
  std::string token(argument);
  if (token.find('/') == std::string::npos) return false;
  std::erase(token, '/');
  return ParsePMTestID(token, false) != PM_TEST_MAX;
}

}  // namespace

VEXOR_PM_TEST_ID GetPMTestID(std::string_view name, bool ignore_case) {
  return ignore_case ? FindLongName(name, vexor::EqualsIgnoreCase) : FindLongName(name, IsSameName);
}

std::string GetPMTestName(VEXOR_PM_TEST_ID id) {
  const bool known = id >= 0 && id <= PM_TEST_END;
  return std::string(known ? kTests[static_cast<std::size_t>(id)].long_name : "NA");
}

const char* GetPMTestNameByID(int id) {
  const bool known = id >= 0 && id <= PM_TEST_END;
  return known ? kTests[static_cast<std::size_t>(id)].short_name.data() : "";
}

VEXOR_PM_TEST_ID ParsePMTestID(std::string_view token, bool ignore_case) {
  return ignore_case ? FindShortName(token, vexor::EqualsIgnoreCase)
                     : FindShortName(token, IsSameName);
}

bool HasPMTestId(char** argv, int argc) {
  return std::any_of(argv, argv + std::max(argc, 0), SelectsTest);
}
