#include "vexor/syntax/ratios.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using vexor::Ratio;
using Ratios = std::vector<std::uint16_t>;

TEST(Ratios, SingleKeywords) {
  const std::pair<const char*, int> cases[] = {{"P0", 24},     {"Pn", 8},        {"Pn--", 7},
                                               {"P0++", 25},   {"P0Pn", 0xFFFF}, {"XX", 0xFFFE},
                                               {"All", 0xFFFD}};
  for (const auto& [text, ratio] : cases) {
    std::uint16_t result = 1;
    EXPECT_TRUE(DecodeP0PnRatioEnums(text, 24, 8, result)) << text;
    EXPECT_EQ(result, ratio) << text;
  }
  for (const char* text : {"", "p0", "P1", "P0 ", "P0...Pn", "ALL", "8"}) {
    std::uint16_t result = 1;
    EXPECT_FALSE(DecodeP0PnRatioEnums(text, 24, 8, result)) << text;
    EXPECT_EQ(result, 1) << text;
  }
  std::uint16_t wrapped = 1;
  EXPECT_TRUE(DecodeP0PnRatioEnums("Pn--", 0xFFFF, 0, wrapped) && wrapped == 0xFFFF);
  EXPECT_TRUE(DecodeP0PnRatioEnums("P0++", 0xFFFF, 0, wrapped) && wrapped == 0);
}

TEST(Ratios, ListsDependOnTheMachine) {
  struct Case {
    const char* text;
    Ratios unbounded;
    Ratios bounded;
    int step = 4;
  };
  const Case cases[] = {
      {"P0", {24}, {24}},
      {"P1", {16}, {16}},
      {"Pn", {8}, {8}},
      {"Pn--", {7}, {}},
      {"P0++", {25}, {}},
      {"P0Pn", {0xFFFF}, {}},
      {"P0...Pn", {24, 20, 16, 12, 8}, {24, 20, 16, 12, 8}},
      {"P0..P1", {24, 20, 16}, {24, 20, 16}},
      {"P1..Pn", {16, 11}, {16, 11}, 5},
      {"P1..Pn", {16}, {16}, 255},
      {"P1..Pn", {16}, {16}, 0},  // a step of 0 ends at once
      {"8,9,31", {9, 9, 33}, {9, 9}},
      {"10-12;", {}, {}},
      {"5,0x16,[24-25]", {6, 24, 24, 27}, {24, 24}},
      {"8,x,9", {9}, {9}},
      {"65546,65535", {12, 0xFFFF}, {12}},  // truncated to 16 bits
      {"All", {}, {}},
      {"XX", {}, {}},
      {"p0", {}, {}},
      {"P0,P1", {}, {}},
      {"", {}, {}},
  };
  const _P0_PN_RATIOS ratios{24, 8, 16, 1};
  for (const Case& row : cases) {
    for (const bool bounded : {false, true}) {
      Ratios list = {1};
      DecodeRatios(row.text, ratios, bounded, list, static_cast<std::uint8_t>(row.step));
      Ratios expected = bounded ? row.bounded : row.unbounded;
      expected.insert(expected.begin(), 1);
      EXPECT_EQ(list, expected) << row.text << " " << bounded;
    }
  }
  Ratios list;
  DecodeRatios("P0", {24, 8, 16, 0}, false, list, 1);
  DecodeRatios("P0..P1", {8, 8, 16, 1}, false, list, 1);
  EXPECT_TRUE(list.empty()) << "invalid ratios and a reversed range give nothing";
  DecodeRatios("P0...Pn", {2, 0, 1, 1}, false, list, 2);
  EXPECT_EQ(list, (Ratios{2, 0})) << "nothing wraps below 0";
  EXPECT_THROW(DecodeRatios("1-99999999", ratios, true, list, 1), std::length_error);
}

std::string Show(const std::vector<Ratio>& ratios) {
  std::string text;
  for (const Ratio& ratio : ratios) {
    text += std::to_string(static_cast<int>(ratio.name)) + ":" + std::to_string(ratio.first) + "-" +
            std::to_string(ratio.last) + " ";
  }
  return text;
}

TEST(Ratios, TrendRatiosKeepTheirOrder) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"P0,P1,Pe,Pn,Pn--,P0++,P0Pn,XX,All",
       "1:0-0 2:0-0 3:0-0 4:0-0 5:0-0 6:0-0 7:0-0 8:0-0 9:0-0 "},
      {"P0, P1, Pe, Pn, Pn - -, P0++, P0Pn", "1:0-0 2:0-0 3:0-0 4:0-0 5:0-0 6:0-0 7:0-0 "},
      {"12-8;;0xFE ,0-254", "0:12-8 0:254-254 0:0-254 "},
      {"ALL", "9:0-0 "},
      {"255,p0,8-,-8,0x,8,99999999999999999999, ", "0:8-8 "},
  };
  for (const auto& [text, ratios] : cases) {
    EXPECT_EQ(Show(vexor::ParseTrendRatios(text)), ratios) << text;
  }
}

TEST(Ratios, PstatesToRun) {
  struct Case {
    const char* text;
    vexor::PstateRange range;
    const char* ratios;
  };
  using vexor::PstateRange;
  const Case cases[] = {
      {"P0...Pn", PstateRange::kAll, ""},
      {"P1...Pn", PstateRange::kGuaranteed, ""},
      {"P1..Pn", PstateRange::kGuaranteed, ""},
      {" Turbo", PstateRange::kTurbo, ""},
      {"P0..P1", PstateRange::kTurbo, ""},
      {"Specific:8,P1", PstateRange::kSpecific, "0:8-8 2:0-0 "},
      {"P0", PstateRange::kSpecific, "1:0-0 "},
      {"8-12,x", PstateRange::kSpecific, "0:8-12 "},
      {"Specific:", PstateRange::kAll, ""},
      {"turbo", PstateRange::kAll, ""},
      {"", PstateRange::kAll, ""},
  };
  for (const Case& row : cases) {
    const vexor::PstateSelection selection = vexor::ParseExePstates(row.text);
    EXPECT_EQ(selection.range, row.range) << row.text;
    EXPECT_EQ(Show(selection.ratios), row.ratios) << row.text;
  }
}

TEST(Ratios, PointsAndTurboActivation) {
  using vexor::RatioPoint;
  using Points = std::vector<RatioPoint>;
  EXPECT_EQ(vexor::ParseSagvRatios("Low,Med,High,Dynamic"),
            (Points{RatioPoint::kLow, RatioPoint::kMed, RatioPoint::kHigh, RatioPoint::kDynamic}));
  EXPECT_EQ(vexor::ParseSagvRatios("high; LOW,,Mid"),
            (Points{RatioPoint::kHigh, RatioPoint::kLow}));
  EXPECT_TRUE(vexor::ParseSagvRatios("").empty());
  EXPECT_EQ(vexor::ParseTurboActivationRatios("20, 0xFE;0,255,x,1-2"), (Ratios{20, 254, 0}));
}

}  // namespace
