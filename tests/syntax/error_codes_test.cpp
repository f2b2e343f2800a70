#include "vexor/syntax/error_codes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct TestTags {
  int test;
  std::string_view tags;  // in order: bits in hexadecimal and tag, separated by "|"
};

constexpr auto kTestTags = std::to_array<TestTags>({
    {1,
     "4 EC_CSTATE;|80000004 EC_C1;|100004 EC_C3;|200004 EC_C6;|400004 EC_C7;|800004 EC_C8;|"
     "1000004 EC_C9;|2000004 EC_C10;|10000004 EC_RC6;|20000004 EC_CX_LIMIT;|"
     "40000004 EC_CX_PRODEMOTION;"},
    {2, "100002 EC_HWP;|400002 EC_MAX_TURBO;|800002 EC_TURBO;"},
    {3, "200002 EC_LEGACY_P;|400002 EC_MAX_TURBO;|800002 EC_TURBO;|1000002 EC_FACT;"},
    {4, "480 EC_TSTATE;|100480 EC_CLK_MOD_DISABLE;"},
    {5,
     "880 EC_SDC;|400880 EC_SDC_PKG_DEEP;|800880 EC_SDC_PKG_SHALLOW;|1000880 EC_SDC_CORE;|"
     "2000880 EC_SDC_THREAD;"},
    {6,
     "8 EC_SX_STATE;|40000180 EC_G3; |4000180 EC_COLD_RESET;|8000180 EC_WARM_RESET;|"
     "100008 EC_S5;|200008 EC_S4;|400008 EC_S3;|800008 EC_S0I3;|"
     "1000008 EC_S0I2_S0I1_S0IR_SXIDLE; |2000008 EC_MEM_SR; |"
     "10000008 EC_SHORT_TIME_ELAPSE/EARLY_WAKE|10000008 EC_SX_WAKE_EARLY/SHORT-TIME-ELAPSE; |"
     "20000008 EC_SXWAKE_OR_RESET_TIMEOUT;|40000008 EC_SX_PSON;|80000008 EC_SX_PRE_POST_CHECK;"},
    {7, "20080 EC_PECI;"},
    {8, "1080 EC_GT;|101080 EC_IGFX;|401080 EC_GT_DVFS;"},
    {9, "1080 EC_GT;|101080 EC_IGFX;|801080 EC_GT_RC6;"},
    {10, "1080 EC_GT;|201080 EC_DGFX;|401080 EC_GT_DVFS;"},
    {11, "1080 EC_GT;|201080 EC_DGFX;|801080 EC_GT_RC6;"},
    {12, "1080 EC_GT;|201080 EC_DGFX;|1001080 EC_GT_SAGV;"},
    {13, "1080 EC_GT;|201080 EC_DGFX;|101080 EC_IGFX;|2001080 EC_GT_RESET;"},
    {15, "801080 EC_GCD_RC6;"},
    {16, "401080 EC_GCD_DVFS;"},
    {17, "801080 EC_MEDIA_RC6;"},
    {18, "401080 EC_MEDIA_DVFS;"},
    {19, "140080 EC_VPU_DVFS;|240080 EC_VPU_DX;"},
    {20, "400280 EC_ISP_PS;"},
    {21, "800280 EC_ISP_IS;"},
    {22, "100040 EC_UFS;|10100040 EC_MIN_EQU_MAX;|20100040 EC_CLIPPING;"},
    {23, "200040 EC_SAGV;"},
    {24, "400040 EC_PSF0;"},
    {25, "100040 EC_MESH_GV;|10100040 EC_MIN_EQU_MAX;|20100040 EC_CLIPPING;"},
    {29, "102080 EC_LINK_STATE;"},
    {30, "202080 EC_PCIE_GEN;"},  // instead of the width
    {31, "802080 EC_DX_STATE;"},
});

constexpr unsigned int kNeitherConfigNorSystem = 0xFFFFFFDE;

std::vector<vexor::ErrorTag> TagsOf(int test, unsigned int code) {
  return vexor::GetErrorTags(static_cast<VEXOR_PM_TEST_ID>(test), code);
}

std::string Show(const std::vector<vexor::ErrorTag>& tags) {
  std::ostringstream text;
  for (const vexor::ErrorTag& tag : tags) {
    text << (text.tellp() > 0 ? "|" : "") << std::hex << tag.bits << tag.tag;
  }
  return text.str();
}

// A tag that no test has above is a new one.
bool IsListed(std::string_view tag) {
  return std::ranges::any_of(kTestTags, [tag](const TestTags& row) {
    return row.tags.find(tag) != std::string_view::npos;
  });
}

TEST(ErrorCodes, EveryTagNeedsAllItsBits) {
  for (const TestTags& row : kTestTags) {
    const std::vector<vexor::ErrorTag> tags = TagsOf(row.test, kNeitherConfigNorSystem);
    std::vector<vexor::ErrorTag> known = tags;
    std::erase_if(known, [](const vexor::ErrorTag& tag) { return !IsListed(tag.tag); });
    EXPECT_EQ(Show(known), row.tags) << row.test;
    for (const vexor::ErrorTag& tag : tags) {
      for (unsigned int bit = 1; bit != 0; bit <<= 1) {
        if ((tag.bits & bit) == 0) continue;
        for (const vexor::ErrorTag& other : TagsOf(row.test, tag.bits & ~bit)) {
          EXPECT_NE(other.tag, tag.tag) << row.test << " " << std::hex << bit;
        }
      }
    }
  }
  EXPECT_EQ(Show(TagsOf(PM_TEST_PCIE_GEN_WIDTH, 0x402080)), "402080 EC_PCIE_WIDTH;");
}

TEST(ErrorCodes, OtherTestsHaveOnlyTheTracingTag) {
  for (const int test : {0, 14, 26, 27, 28, 32, 33, 34, 35, 36, 37, 1000, -1, -2147483647 - 1}) {
    const auto id = static_cast<VEXOR_PM_TEST_ID>(test);
    EXPECT_EQ(GetErrorCode(id, 0xFFFFFFDE), " EC_VEXORTRACE;") << test;
    EXPECT_EQ(GetErrorCode(id, 0x00100080), " EC_VEXORTRACE;") << test;
    EXPECT_EQ(GetErrorCode(id, 0x80) + GetErrorCode(id, 0x00100000), "") << test;
  }
}

TEST(ErrorCodes, SystemAndConfigurationTagsComeFirst) {
  struct Case {
    unsigned int code;
    const char* text;
  };
  for (const Case& row : std::to_array<Case>({
           {0x20, ""},
           {0x00F00000, ""},
           {0x00100020, " EC_MCA; "},
           {0x00200020, " EC_GLOBAL_RESET; "},
           {0x00400020, " EC_DISP_UNDERRUN; "},
           {0x00800020, " EC_TDR; "},
           {0x1, "EC_CONFIG: "},
           {0x04000001, "EC_CONFIG:  EC_SCOPE; "},
           {0x0C000001, "EC_CONFIG:  EC_NO_EXE_STATES; "},
           {0x4C000001, "EC_CONFIG:  EC_FEATURE_NOT_ENABLE; "},
           {0xCC000001, "EC_CONFIG:  EC_FEATURE_UNSUPPORT; "},
           {0xDC000001, "EC_CONFIG:  EC_CPU_AFFINITY;"},
           {0xFC000001, "EC_CONFIG:  EC_DRIVER; "},
           {0x00F00021, " EC_MCA;  EC_GLOBAL_RESET;  EC_DISP_UNDERRUN;  EC_TDR; EC_CONFIG: "},
           {0x201200A1, " EC_MCA; EC_CONFIG:  EC_DRIVER;  EC_PECI;"},
       })) {
    EXPECT_EQ(GetErrorCode(PM_TEST_PECI, row.code), row.text) << std::hex << row.code;
  }
}

TEST(ErrorCodes, TagsHaveTheirBits) {
  EXPECT_EQ(Show(TagsOf(PM_TEST_PECI, 0x3C1200A1)),
            "100020 EC_MCA; |1EC_CONFIG: |20000000 EC_DRIVER; |20080 EC_PECI;");
  EXPECT_EQ(Show(TagsOf(PM_TEST_PECI, 0)), "");
}

TEST(ErrorCodes, EveryListedTagIsReportedForItsBits) {
  std::size_t count = 0;
  for (int id = -1; id <= PM_TEST_END; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    const std::vector<vexor::ErrorTag> tags = vexor::ListErrorTags(test);
    const auto has = [&tags](std::string_view name) {
      return std::ranges::count(tags, name, &vexor::ErrorTag::tag) == 1;
    };
    for (const vexor::ErrorTag& tag : tags) {
      EXPECT_NE(GetErrorCode(test, tag.bits).find(tag.tag), std::string::npos) << id << tag.tag;
    }
    for (unsigned int bit = 1U << 20U; bit != 0; bit <<= 1U) {
      for (const vexor::ErrorTag& tag : TagsOf(id, 0xFFFFFU | bit)) {
        EXPECT_TRUE(has(tag.tag)) << id << tag.tag;
        ++count;
      }
    }
  }
  EXPECT_GT(count, 0U);
}

TEST(ErrorCodes, CategoriesAreDroppedWithTheLastDetail) {
  struct Case {
    unsigned int ignore;
    unsigned int code;
    unsigned int left;
  };
  for (const Case& row : std::to_array<Case>({
           {0x00100004, 0x00300004, 0x00200004},  // a detail is left, so the category stays
           {0x00100004, 0x00100004, 0},
           {0x00100004, 0x0010000C, 0x8},         // only the ignored category is dropped
           {0x00100004, 0x00200004, 0x00200004},  // another detail
           {0x00100008, 0x00100004, 0x00100004},  // nothing in common but a detail
           {0xFFF00000, 0x00100004, 0x00100004},  // no category is ignored
           {0x4, 0x4, 0},
           {0x4, 0x00100004, 0x00100004},  // a category without details ignores none
           {0x00080000, 0x000C0000, 0x00040000},
           {0xFFFFFFFF, 0xFFFFFFFF, 0},
           {0xFFFFFFFF, 0, 0},
       })) {
    EXPECT_EQ(IgnoreErrorCode(row.ignore, row.code), row.left)
        << std::hex << row.ignore << " " << row.code;
  }
}

}  // namespace
