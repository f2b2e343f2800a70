#include "vexor/util/random.h"

#include <algorithm>
#include <bit>

UserRand::UserRand(unsigned int seed) : a_(0xf1ea5eed), b_(seed), c_(seed), d_(seed) {
  constexpr int kWarmUpSteps = 20;
  for (int i = 0; i < kWarmUpSteps; ++i) Step();
}

// Counts one for the step. Next32 and NextBool count themselves in addition.
std::uint32_t UserRand::Step() {
  ++draw_counter_;
  const std::uint32_t e = a_ - std::rotl(b_, 27);
  a_ = b_ ^ std::rotl(c_, 17);
  b_ = c_ + d_;
  c_ = d_ + e;
  d_ = e + a_;
  return d_;
}

std::uint32_t UserRand::NextUint() { return Step(); }

std::uint32_t UserRand::Next32(long min, long max) {
  ++draw_counter_;
  const std::uint64_t r = Step();
  // `long` has 32 bits on Windows and 64 elsewhere. Truncated, so that both systems draw the same.
  const auto [low, high] =
      std::minmax({static_cast<std::int32_t>(min), static_cast<std::int32_t>(max)});
  const std::uint32_t width = static_cast<std::uint32_t>(high) - static_cast<std::uint32_t>(low);
  return static_cast<std::uint32_t>(low) + static_cast<std::uint32_t>((r * width) >> 32U);
}

bool UserRand::NextBool() {
  constexpr std::uint32_t kBits = 32;
  ++draw_counter_;
  if (bits_left_ == 0) {
    bit_cache_ = Step();
    bits_left_ = kBits;
  }
  --bits_left_;
  return ((bit_cache_ >> bits_left_) & 1U) != 0;
}
