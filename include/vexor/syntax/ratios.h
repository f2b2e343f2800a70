// Frequency ratios: keywords that stand for a machine's own ratios, and the ratio lists of tests.
//
//   ratio       "P0", "P1", "Pe", "Pn", "Pn--" or "Pn - -" (one below), "P0++" (one above), "P0Pn"
//               (any pair), "XX" (any), "All" or "ALL", a number from 0 to 254 (0xFE), or two
//               numbers joined by "-"
//   ratios      ratios joined by "," or ";", such as "P0,0x10,8-12", or alone one of the ranges
//               "P0...Pn", "P0..P1" and "P1..Pn"; empty for all ratios
//   P-states    "P0...Pn", "P1...Pn" or "P1..Pn", "Turbo" or "P0..P1", "Specific:" and ratios, or
//               ratios alone
//   points      "Low", "Med", "High", "Dynamic", joined by "," or ";", in any case; empty for all
//
// Case matters, except for points. Blanks around an item are ignored, except by the two decoders.
// Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "vexor/export.h"

// The ratios of a machine.
struct _P0_PN_RATIOS {
  std::uint16_t P0 = 0;    // highest
  std::uint16_t Pn = 0;    // lowest
  std::uint16_t P1 = 0;    // guaranteed
  std::uint8_t valid = 0;  // not 0 if the three are known
};

// Stores the ratio of "P0", "Pn", "Pn--" or "P0++", or a special value for "P0Pn" (0xFFFF, any
// pair), "XX" (0xFFFE, any) or "All" (0xFFFD). Returns false and stores nothing for any other text.
VEXOR_EXPORT bool DecodeP0PnRatioEnums(std::string_view text, std::uint16_t p0, std::uint16_t pn,
                                       std::uint16_t& result);

// Appends the ratios of a text to `list`: "P0", "P1" or "Pn"; a range "P0...Pn", "P0..P1" or
// "P1..Pn" from its upper end down in steps of `step` (0: only the upper end); otherwise numbers
// joined by ",", each truncated to 16 bits and rounded up to a multiple of 3. Without `bounded`,
// accepts "Pn--", "P0++" and "P0Pn" (0xFFFF) as well; with it, drops listed numbers outside Pn to
// P0. A bad number is left out and discards the numbers before it. Appends nothing if `ratios` is
// not valid. Throws std::length_error for a list of more than 16,777,216 numbers.
VEXOR_EXPORT void DecodeRatios(std::string_view text, _P0_PN_RATIOS ratios, bool bounded,
                               std::vector<std::uint16_t>& list, std::uint8_t step);

namespace vexor {

enum class RatioName : std::int32_t {
  kNumber,
  kP0,
  kP1,
  kPe,
  kPn,
  kBelowPn,
  kAboveP0,
  kAnyPair,
  kAny,
  kAll,
  kP0ToPn,  // a range: the one ratio of its list
  kP0ToP1,
  kP1ToPn,
};

// A ratio as it is written: a name, or numbers from `first` to `last`, ascending or descending.
// Both are 0 with a name.
struct Ratio {
  RatioName name = RatioName::kNumber;
  std::uint16_t first = 0;
  std::uint16_t last = 0;
};

enum class PstateRange : std::int32_t {
  kAll,         // "P0...Pn", and any text that is not understood
  kGuaranteed,  // "P1...Pn" or "P1..Pn"
  kTurbo,       // "Turbo" or "P0..P1"
  kSpecific,    // as listed
};

struct PstateSelection {
  PstateRange range = PstateRange::kAll;
  std::vector<Ratio> ratios;  // with kSpecific
};

enum class RatioPoint : std::int32_t { kLow, kMed, kHigh, kDynamic };

// Returns the ratios that a frequency test steps through, in the order of the list; items that are
// not ratios are skipped. A named range such as "P0...Pn" is returned as one ratio.
VEXOR_EXPORT std::vector<Ratio> ParseTrendRatios(std::string_view text);

// Returns the P-states that a test runs; PstateRange::kAll for a text without a valid item.
VEXOR_EXPORT PstateSelection ParseExePstates(std::string_view text);

// Returns the points of a memory or fabric frequency test, in the order of the list; items that are
// not points are skipped.
VEXOR_EXPORT std::vector<RatioPoint> ParseSagvRatios(std::string_view text);

// Returns the numbers from 0 to 254 of a list joined by "," or ";"; other items are skipped.
VEXOR_EXPORT std::vector<std::uint16_t> ParseTurboActivationRatios(std::string_view text);

}  // namespace vexor
