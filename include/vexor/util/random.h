// A small, fast pseudo-random generator: Bob Jenkins' small fast generator in its 32-bit form ("A
// small noncryptographic PRNG", 2007). Equal seeds give equal sequences. Not for secrets.
//
//   UserRand random(42);
//   random.Next32(0, 10);  // 0 to 9
//
// Objects are independent of each other. One thread at a time may use an object.
#pragma once

#include <cstdint>

#include "vexor/export.h"

class VEXOR_EXPORT UserRand {
 public:
  // An unseeded generator: assign a seeded one to it before use.
  UserRand() = default;

  // Any seed is good, including 0.
  explicit UserRand(unsigned int seed);

  // Returns 32 random bits.
  std::uint32_t NextUint();

  // Returns a number from the smaller bound up to, but not including, the larger. If both are
  // equal, returns that number and still advances the generator. Bounds are truncated to 32 bits;
  // negative numbers are returned in two's complement.
  std::uint32_t Next32(long min, long max);

  // Returns a random bit. 32 calls share one step of the generator.
  bool NextBool();

  // Returns a count of uses: one for each call, plus one for each step that `Next32` and `NextBool`
  // take. Seeding counts 20.
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
