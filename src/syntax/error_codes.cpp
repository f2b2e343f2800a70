#include "vexor/syntax/error_codes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "util/table_checks.h"

namespace vexor {

namespace {

constexpr std::uint32_t kCategories = 0x000FFFFF;

constexpr std::uint32_t kConfig = 0x1;
constexpr std::uint32_t kPstate = 0x2;
constexpr std::uint32_t kCstate = 0x4;
constexpr std::uint32_t kSleep = 0x8;
constexpr std::uint32_t kSystem = 0x20;
constexpr std::uint32_t kUncore = 0x40;
constexpr std::uint32_t kTracing = 0x80;
constexpr std::uint32_t kReset = 0x80 | 0x100;
constexpr std::uint32_t kIsp = 0x80 | 0x200;
constexpr std::uint32_t kTstate = 0x80 | 0x400;
constexpr std::uint32_t kSdc = 0x80 | 0x800;
constexpr std::uint32_t kGraphics = 0x80 | 0x1000;
constexpr std::uint32_t kPcie = 0x80 | 0x2000;
constexpr std::uint32_t kPeci = 0x80 | 0x20000;
constexpr std::uint32_t kVpu = 0x80 | 0x40000;

constexpr std::uint32_t Bit(unsigned int index) { return std::uint32_t{1} << index; }

// A tag is reported if all of its bits are set.
struct Rule {
  std::uint32_t bits;
  std::string_view tag;
};

struct TestRule {
  VEXOR_PM_TEST_ID test;
  std::uint32_t bits;
  std::string_view tag;
  std::uint32_t unless = 0;  // if all of these bits are set, the tag is not reported
};

constexpr bool HasAll(std::uint32_t code, std::uint32_t bits) { return (code & bits) == bits; }

constexpr auto kSystemRules = std::to_array<Rule>({
    {kSystem | Bit(20), " EC_MCA; "},
    {kSystem | Bit(21), " EC_GLOBAL_RESET; "},
    {kSystem | Bit(22), " EC_DISP_UNDERRUN; "},
    {kSystem | Bit(23), " EC_TDR; "},
});

// Comes before the tag of a rule below.
constexpr std::string_view kConfigTag = "EC_CONFIG: ";

// Only the first rule that applies is reported: its error makes those below it moot.
constexpr auto kConfigRules = std::to_array<Rule>({
    {Bit(29), " EC_DRIVER; "},
    {Bit(28), " EC_CPU_AFFINITY;"},
    {Bit(31), " EC_FEATURE_UNSUPPORT; "},
    {Bit(30), " EC_FEATURE_NOT_ENABLE; "},
    {Bit(27), " EC_NO_EXE_STATES; "},
    {Bit(26), " EC_SCOPE; "},
});

// Sorted by test, and for each test in the order in which its tags are reported. Three oddities are
// deliberate, as programs that read the tags expect them: the C1 tag has bit 31, bit 28 of the
// sleep tests has two tags, and a link width is not reported together with a generation.
constexpr auto kTestRules = std::to_array<TestRule>({
    {PM_TEST_CSTATES, kCstate, " EC_CSTATE;"},
    {PM_TEST_CSTATES, kCstate | Bit(31), " EC_C1;"},
    {PM_TEST_CSTATES, kCstate | Bit(20), " EC_C3;"},
    {PM_TEST_CSTATES, kCstate | Bit(21), " EC_C6;"},
    {PM_TEST_CSTATES, kCstate | Bit(22), " EC_C7;"},
    {PM_TEST_CSTATES, kCstate | Bit(23), " EC_C8;"},
    {PM_TEST_CSTATES, kCstate | Bit(24), " EC_C9;"},
    {PM_TEST_CSTATES, kCstate | Bit(25), " EC_C10;"},
    {PM_TEST_CSTATES, kCstate | Bit(28), " EC_RC6;"},
    {PM_TEST_CSTATES, kCstate | Bit(29), " EC_CX_LIMIT;"},
    {PM_TEST_CSTATES, kCstate | Bit(30), " EC_CX_PRODEMOTION;"},

    {PM_TEST_HWP, kPstate | Bit(20), " EC_HWP;"},
    {PM_TEST_HWP, kPstate | Bit(22), " EC_MAX_TURBO;"},
    {PM_TEST_HWP, kPstate | Bit(23), " EC_TURBO;"},

    {PM_TEST_PSTATES, kPstate | Bit(21), " EC_LEGACY_P;"},
    {PM_TEST_PSTATES, kPstate | Bit(22), " EC_MAX_TURBO;"},
    {PM_TEST_PSTATES, kPstate | Bit(23), " EC_TURBO;"},
    {PM_TEST_PSTATES, kPstate | Bit(24), " EC_FACT;"},

    {PM_TEST_TSTATES, kTstate, " EC_TSTATE;"},
    {PM_TEST_TSTATES, kTstate | Bit(20), " EC_CLK_MOD_DISABLE;"},

    {PM_TEST_SDC, kSdc, " EC_SDC;"},
    {PM_TEST_SDC, kSdc | Bit(22), " EC_SDC_PKG_DEEP;"},
    {PM_TEST_SDC, kSdc | Bit(23), " EC_SDC_PKG_SHALLOW;"},
    {PM_TEST_SDC, kSdc | Bit(24), " EC_SDC_CORE;"},
    {PM_TEST_SDC, kSdc | Bit(25), " EC_SDC_THREAD;"},

    {PM_TEST_GSTATES, kSleep, " EC_SX_STATE;"},
    {PM_TEST_GSTATES, kReset | Bit(30), " EC_G3; "},
    {PM_TEST_GSTATES, kReset | Bit(26), " EC_COLD_RESET;"},
    {PM_TEST_GSTATES, kReset | Bit(27), " EC_WARM_RESET;"},
    {PM_TEST_GSTATES, kSleep | Bit(20), " EC_S5;"},
    {PM_TEST_GSTATES, kSleep | Bit(21), " EC_S4;"},
    {PM_TEST_GSTATES, kSleep | Bit(22), " EC_S3;"},
    {PM_TEST_GSTATES, kSleep | Bit(23), " EC_S0I3;"},
    {PM_TEST_GSTATES, kSleep | Bit(24), " EC_S0I2_S0I1_S0IR_SXIDLE; "},
    {PM_TEST_GSTATES, kSleep | Bit(25), " EC_MEM_SR; "},
    {PM_TEST_GSTATES, kSleep | Bit(28), " EC_SHORT_TIME_ELAPSE/EARLY_WAKE"},
    {PM_TEST_GSTATES, kSleep | Bit(28), " EC_SX_WAKE_EARLY/SHORT-TIME-ELAPSE; "},
    {PM_TEST_GSTATES, kSleep | Bit(29), " EC_SXWAKE_OR_RESET_TIMEOUT;"},
    {PM_TEST_GSTATES, kSleep | Bit(30), " EC_SX_PSON;"},
    {PM_TEST_GSTATES, kSleep | Bit(31), " EC_SX_PRE_POST_CHECK;"},

    {PM_TEST_PECI, kPeci, " EC_PECI;"},

    {PM_TEST_IGFX_DVFS, kGraphics, " EC_GT;"},
    {PM_TEST_IGFX_DVFS, kGraphics | Bit(20), " EC_IGFX;"},
    {PM_TEST_IGFX_DVFS, kGraphics | Bit(22), " EC_GT_DVFS;"},

    {PM_TEST_IGFX_RC6, kGraphics, " EC_GT;"},
    {PM_TEST_IGFX_RC6, kGraphics | Bit(20), " EC_IGFX;"},
    {PM_TEST_IGFX_RC6, kGraphics | Bit(23), " EC_GT_RC6;"},

    {PM_TEST_DGFX_DVFS, kGraphics, " EC_GT;"},
    {PM_TEST_DGFX_DVFS, kGraphics | Bit(21), " EC_DGFX;"},
    {PM_TEST_DGFX_DVFS, kGraphics | Bit(22), " EC_GT_DVFS;"},

    {PM_TEST_DGFX_RC6, kGraphics, " EC_GT;"},
    {PM_TEST_DGFX_RC6, kGraphics | Bit(21), " EC_DGFX;"},
    {PM_TEST_DGFX_RC6, kGraphics | Bit(23), " EC_GT_RC6;"},

    {PM_TEST_DGFX_SAGV, kGraphics, " EC_GT;"},
    {PM_TEST_DGFX_SAGV, kGraphics | Bit(21), " EC_DGFX;"},
    {PM_TEST_DGFX_SAGV, kGraphics | Bit(24), " EC_GT_SAGV;"},

    {PM_TEST_DGFX_RESET, kGraphics, " EC_GT;"},
    {PM_TEST_DGFX_RESET, kGraphics | Bit(21), " EC_DGFX;"},
    {PM_TEST_DGFX_RESET, kGraphics | Bit(20), " EC_IGFX;"},
    {PM_TEST_DGFX_RESET, kGraphics | Bit(25), " EC_GT_RESET;"},

    {PM_TEST_GCD_RC6, kGraphics | Bit(23), " EC_GCD_RC6;"},
    {PM_TEST_GCD_DVFS, kGraphics | Bit(22), " EC_GCD_DVFS;"},
    {PM_TEST_SAMEDIA_RC6, kGraphics | Bit(23), " EC_MEDIA_RC6;"},
    {PM_TEST_SAMEDIA_DVFS, kGraphics | Bit(22), " EC_MEDIA_DVFS;"},

    {PM_TEST_VPU_DVFS, kVpu | Bit(20), " EC_VPU_DVFS;"},
    {PM_TEST_VPU_DVFS, kVpu | Bit(21), " EC_VPU_DX;"},

    {PM_TEST_PS_DVFS, kIsp | Bit(22), " EC_ISP_PS;"},
    {PM_TEST_IS_DVFS, kIsp | Bit(23), " EC_ISP_IS;"},

    {PM_TEST_UFS, kUncore | Bit(20), " EC_UFS;"},
    {PM_TEST_UFS, kUncore | Bit(20) | Bit(28), " EC_MIN_EQU_MAX;"},
    {PM_TEST_UFS, kUncore | Bit(20) | Bit(29), " EC_CLIPPING;"},

    {PM_TEST_SAGV, kUncore | Bit(21), " EC_SAGV;"},
    {PM_TEST_PSF0_GV, kUncore | Bit(22), " EC_PSF0;"},

    {PM_TEST_MESH_GV, kUncore | Bit(20), " EC_MESH_GV;"},
    {PM_TEST_MESH_GV, kUncore | Bit(20) | Bit(28), " EC_MIN_EQU_MAX;"},
    {PM_TEST_MESH_GV, kUncore | Bit(20) | Bit(29), " EC_CLIPPING;"},

    {PM_TEST_PCIE_LINK, kPcie | Bit(20), " EC_LINK_STATE;"},
    {PM_TEST_PCIE_GEN_WIDTH, kPcie | Bit(21), " EC_PCIE_GEN;"},
    {PM_TEST_PCIE_GEN_WIDTH, kPcie | Bit(22), " EC_PCIE_WIDTH;", kPcie | Bit(21)},
    {PM_TEST_DX_STATES, kPcie | Bit(23), " EC_DX_STATE;"},
});

// The rules of tests that have none above.
constexpr auto kTracingRules = std::to_array<TestRule>({
    {PM_TEST_VEXOR, kTracing | Bit(20), " EC_VEXORTRACE;"},
});

// The index of each test's first rule. One more entry ends the rules of the last test.
constexpr auto kFirstRules = [] {
  std::array<std::size_t, PM_TEST_DX_STATES + 2> firsts{};
  for (const TestRule& rule : kTestRules) {
    for (auto test = static_cast<std::size_t>(rule.test) + 1; test < firsts.size(); ++test) {
      ++firsts[test];
    }
  }
  return firsts;
}();

// RulesOf expects the rules of a test to be adjacent, and finds none of a test after the last one.
static_assert(std::ranges::is_sorted(kTestRules, {}, &TestRule::test) &&
              kTestRules.back().test <= PM_TEST_DX_STATES);
static_assert(NoTwo(kTestRules, [](const TestRule& upper, const TestRule& lower) {
  return upper.test == lower.test && upper.tag == lower.tag;
}));
static_assert(AreDistinct(kSystemRules, &Rule::tag) && AreDistinct(kConfigRules, &Rule::tag));

constexpr std::span<const TestRule> RulesOf(VEXOR_PM_TEST_ID test) {
  if (test < 0 || test > PM_TEST_DX_STATES) return kTracingRules;
  const auto index = static_cast<std::size_t>(test);
  const std::size_t first = kFirstRules[index];
  const auto rules = std::span(kTestRules).subspan(first, kFirstRules[index + 1] - first);
  return rules.empty() ? kTracingRules : rules;
}

// Calls `visit` with the bits and the tag of every rule that applies, in the order of the tags.
template <class Visit>
void VisitTags(VEXOR_PM_TEST_ID test, std::uint32_t code, Visit visit) {
  for (const Rule& rule : kSystemRules) {
    if (HasAll(code, rule.bits)) visit(rule.bits, rule.tag);
  }
  if (HasAll(code, kConfig)) {
    visit(kConfig, kConfigTag);
    const auto applies = [code](const Rule& rule) { return HasAll(code, rule.bits); };
    const auto first = std::ranges::find_if(kConfigRules, applies);
    if (first != kConfigRules.end()) visit(first->bits, first->tag);
  }
  for (const TestRule& rule : RulesOf(test)) {
    const bool is_replaced = rule.unless != 0 && HasAll(code, rule.unless);
    if (HasAll(code, rule.bits) && !is_replaced) visit(rule.bits, rule.tag);
  }
}

}  // namespace

std::vector<ErrorTag> GetErrorTags(VEXOR_PM_TEST_ID test, unsigned int code) {
  std::vector<ErrorTag> tags;
  VisitTags(test, code, [&tags](std::uint32_t bits, std::string_view tag) {
    tags.push_back({.tag = tag, .bits = bits});
  });
  return tags;
}

std::vector<ErrorTag> ListErrorTags(VEXOR_PM_TEST_ID test) {
  const std::span<const TestRule> rules = RulesOf(test);
  std::vector<ErrorTag> tags;
  tags.reserve(kSystemRules.size() + 1 + kConfigRules.size() + rules.size());
  for (const Rule& rule : kSystemRules) tags.push_back({.tag = rule.tag, .bits = rule.bits});
  tags.push_back({.tag = kConfigTag, .bits = kConfig});
  for (const Rule& rule : kConfigRules) {
    tags.push_back({.tag = rule.tag, .bits = kConfig | rule.bits});
  }
  for (const TestRule& rule : rules) tags.push_back({.tag = rule.tag, .bits = rule.bits});
  return tags;
}

}  // namespace vexor

using namespace vexor;

std::string GetErrorCode(VEXOR_PM_TEST_ID test, unsigned int code) {
  std::string text;
  VisitTags(test, code, [&text](std::uint32_t /*bits*/, std::string_view tag) { text += tag; });
  return text;
}

unsigned int IgnoreErrorCode(unsigned int ignore_mask, unsigned int code) {
  if ((ignore_mask & code & kCategories) == 0) return code;
  // A detail means nothing without its category: all categories stay while a detail is left.
  const std::uint32_t details = code & ~ignore_mask & ~kCategories;
  if (details != 0) return (code & kCategories) | details;
  return code & ~ignore_mask & kCategories;
}
