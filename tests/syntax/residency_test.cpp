#include "vexor/syntax/residency.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace {

constexpr std::uint64_t kBad64 = 0xDEADBEEFDEADBEEF;
constexpr std::uint64_t kBad32 = 0xDEADBEEF;

struct Case {
  const char* rule;
  _RESIDENCY_NODE node;  // resNow, resPrev, refNow, refPrev
  bool is_valid;
  std::uint64_t delta;
  double percent;
};

TEST(Residency, SamplesToPercent) {
  for (const Case& row : std::to_array<Case>({
           {"half of the time", {150, 100, 1100, 1000}, true, 50, 50.0},
           {"no time in the state", {100, 100, 1100, 1000}, true, 0, 0.0},
           {"no reference time", {150, 100, 1000, 1000}, true, 50, 0.0},
           {"all zeros", {0, 0, 0, 0}, false, 0, -2.0},
           {"first sample 0", {50, 0, 200, 100}, true, kBad64, 50.0},
           {"latest sample 0", {0, 50, 200, 100}, true, 0xFFFFFFFFFFFFFFCB, 98.1},
           {"wrapped", {5, 10, 200, 100}, true, 0xFFFFFFFFFFFFFFF8, 98.1},
           {"wrapped reference", {150, 100, 98, ~0ULL}, true, 50, 50 / 96.0 * 100},
           {"latest unread", {kBad64, 100, 200, 100}, false, kBad64, -2.0},
           {"latest unread, short", {kBad32, 100, 200, 100}, false, kBad64, -2.0},
           {"first unread", {150, kBad64, 200, 100}, true, kBad64, -2.0},
           {"first unread, short", {150, kBad32, 200, 100}, true, kBad64, -2.0},
           {"only latest unread", {kBad64, 0, 200, 100}, false, kBad64, -2.0},
           {"reference unread", {150, 100, kBad64, 100}, false, 50, -2.0},
           {"reference unread before", {150, 100, 200, kBad64}, true, 50, -2.0},
           {"short sentinel in a reference", {150, 100, kBad32, kBad32 - 100}, false, 50, 50.0},
           {"reference 0", {150, 100, 0, 100}, false, 50, -2.0},
           {"reference 0 before", {150, 100, 200, 0}, false, 50, -2.0},
       })) {
    SCOPED_TRACE(row.rule);
    _RESIDENCY_NODE node = row.node;
    EXPECT_EQ(ValidateResRawData(node), row.is_valid);
    EXPECT_EQ(GetResRawDelta(node), row.delta);
    const double percent = GetResPercent(node);
    EXPECT_NEAR(percent, row.percent, row.percent > 98 ? 0.9 : 1e-9);
    EXPECT_EQ(node.percent, percent);
    EXPECT_EQ(node.maxPercent, percent > 0 ? percent : 0);
  }
}

TEST(Residency, KeepsTheLargestPercent) {
  _RESIDENCY_NODE node{150, 100, 1100, 1000, 0, 0};
  GetResPercent(node);
  node.resNow = 120;
  EXPECT_EQ(GetResPercent(node), 20.0);
  EXPECT_EQ(node.maxPercent, 50.0);
  node = {150, 100, 1100, 0, 1.0, -5.0};
  EXPECT_EQ(GetResPercent(node), -2.0);
  EXPECT_EQ(node.maxPercent, -5.0) << "an invalid result is no maximum";
}

}  // namespace
