#include "vexor/util/random.h"

#include <gtest/gtest.h>

namespace {

// The expected values were computed independently of this library, from the published algorithm.

TEST(UserRand, ReturnsTheSequenceOfItsSeed) {
  struct Case {
    unsigned seed;
    std::uint32_t values[4];
  };
  const Case cases[] = {
      {0, {0x1A9B6C07, 0x9A550895, 0xF12BE876, 0x0902BA19}},
      {1, {0xA25132F4, 0x1EFA0761, 0x332B56B3, 0xD1AEDB87}},
      {0xFFFFFFFF, {0xBEA8325D, 0xB428F0F3, 0x61294FA5, 0xDE2DD8D2}},
  };
  for (const Case& c : cases) {
    UserRand random(c.seed);
    EXPECT_EQ(random.DrawCount(), 20U) << "seeding takes 20 steps";
    for (const std::uint32_t value : c.values) EXPECT_EQ(random.NextUint(), value) << c.seed;
    EXPECT_EQ(random.DrawCount(), 24U);
  }
}

TEST(UserRand, ScalesIntoARange) {
  UserRand random(42);
  EXPECT_EQ(random.Next32(0, 10), 2U);
  EXPECT_EQ(random.Next32(-5, 5), 4U);
  EXPECT_EQ(random.Next32(10, 0), 4U) << "the order of the bounds does not matter";
  EXPECT_EQ(random.Next32(INT32_MIN, INT32_MAX), 2713268847U) << "the widest range";
  for (int i = 0; i < 100; ++i) EXPECT_EQ(random.Next32(-1, 0), 0xFFFFFFFFU);
}

TEST(UserRand, EqualBoundsStillTakeAStep) {
  UserRand random(1);
  EXPECT_EQ(random.Next32(5, 5), 5U);
  EXPECT_EQ(random.DrawCount(), 22U) << "the call and its step";
  EXPECT_EQ(random.NextUint(), 0x1EFA0761U);
}

TEST(UserRand, ReturnsTheBitsOfAStepFromTheHighestDown) {
  UserRand random(7);
  std::uint32_t bits = 0;
  for (int i = 0; i < 32; ++i) bits = bits << 1U | (random.NextBool() ? 1U : 0U);
  EXPECT_EQ(bits, 0x3FDD1F11U);
  EXPECT_EQ(random.DrawCount(), 53U) << "32 calls and one step";
  const UserRand copy = random;
  EXPECT_EQ(random.NextUint(), 0x5DCC7DC6U);
  random = copy;
  EXPECT_FALSE(random.NextBool()) << "the 33rd bit is the top of the next step";
}

}  // namespace
