#include "vexor/vocabulary/pm_tests.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "util/text.h"

namespace {

// How a long name is accepted back as input.
enum class Input {
  kAsAsked,  // exactly, or in any case when the caller asks
  kAnyCase,  // in any case, whatever the caller asks
  kRefused,  // a display name only
};

struct TestNames {
  std::string_view long_name;
  std::string_view short_name;
  Input input = Input::kAsAsked;
};

// A test's row index is its identifier. That "dGFX-SAGV" ignores case and that "FANSPEED-CTR" is
// not accepted back are part of the interface: existing files and scripts rely on it.
constexpr auto kTests = std::to_array<TestNames>({
    {"VEXOR", "vexor"},
    {"CSTATES", "cstate"},
    {"HWP", "hwp"},
    {"PSTATES", "pstate"},
    {"TSTATES", "tstate"},
    {"SDC", "sdc"},
    {"GSTATES", "gstate"},
    {"PECI", "peci"},
    {"iGFX-DVFS", "dvfs"},
    {"iGFX-RC6", "rc6"},
    {"dGFX-DVFS", "dgdvfs"},
    {"dGFX-RC6", "dgrc6"},
    {"dGFX-SAGV", "dgsagv", Input::kAnyCase},
    {"DGFX-RESET", "dgreset"},
    {"FANSPEED-CTR", "dgfan", Input::kRefused},
    {"GCD-RC6", "gcdrc6"},
    {"GCD-DVFS", "gcddvfs"},
    {"SAMedia-RC6", "mediarc6"},
    {"SAMedia-DVFS", "mediadvfs"},
    {"Vpu-DVFS", "vpudvfs"},
    {"PS-DVFS", "ipups"},
    {"IS-DVFS", "ipuis"},
    {"UFS", "ufs"},
    {"SAGV", "sagv"},
    {"PSF0-GV", "psf0"},
    {"MESH-GV", "meshgv"},
    {"Ice-Pstates", "icep"},
    {"Ice-Cstates", "icec"},
    {"FACT", "fact"},
    {"PCIe-Link", "link"},
    {"PCIe-GenWidth", "gen"},
    {"Dx-States", "dxstates"},
    {"TestControl", "testcontrol"},
    {"NA", "all", Input::kRefused},
    {"NA", "max", Input::kRefused},
    {"Vexor-Start", "start"},
    {"Vexor-End", "end"},
});
static_assert(kTests.size() == PM_TEST_END + 1);

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
  for (std::size_t id = 0; id < kTests.size(); ++id) {
    const auto& [long_name, short_name, input] = kTests[id];
    if (input == Input::kRefused) continue;
    const bool is_any_case = input == Input::kAnyCase;
    if (is_any_case ? vexor::EqualsIgnoreCase(name, long_name) : equals(name, long_name)) {
      return static_cast<VEXOR_PM_TEST_ID>(id);
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
