// A small, fast pseudo-random generator whose sequences come again with their seed. It is Bob
// Jenkins' small fast generator in its 32-bit form ("A small noncryptographic PRNG", 2007), not fit
// for secrets.
//
//   UserRand random(42);
//   random.Next32(0, 10);  // 0 to 9
//
// Objects are independent of each other; one object serves one thread at a time.
#pragma once

#include <cstdint>

#include "vexor/export.h"

class VEXOR_EXPORT UserRand {
 public:
  // An unseeded generator: assign a seeded one to it before drawing.
  UserRand() = default;

  // Equal seeds give equal sequences; every seed is good, 0 included.
  explicit UserRand(unsigned int seed);

  // Returns 32 random bits.
  std::uint32_t NextUint();

  // Returns a number from the smaller bound on and below the larger, so never the larger itself;
  // the bound when both are equal, which still advances the generator. Bounds are taken in 32 bits;
  // negative numbers come back in their two's complement.
  std::uint32_t Next32(long min, long max);

  // Returns a random bit. 32 calls share one step of the generator.
  bool NextBool();

  // Returns how often the generator was used: one for each call and one for each step taken inside
  // `Next32` and `NextBool`. Seeding counts 20.
  [[nodiscard]] std::uint64_t DrawCount() const { return draw_counter_; }

 private:
  std::uint32_t Step();

  std::uint32_t a_ = 0;
  std::uint32_t b_ = 0;
  std::uint32_t c_ = 0;
  std::uint32_t d_ = 0;
  std::uint32_t bit_cache_ = 0;
  std::uint32_t bits_left_ = 0;
  std::uint64_t draw_counter_ = 0;
};
