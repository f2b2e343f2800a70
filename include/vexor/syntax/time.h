// Durations in option texts, and durations as text.
//
//   unit time      unit:number or unit:low-high          msec:80, sec:10-20
//   bracket time   number[unit]                          10[sec]
//   cycles         number, number:PerSet or unit:number  100, 3:PerSet, min:5
//   unit           msec, sec, min, hour (and usec or ticks, where said so)
//   number         decimal digits, or 0x and hexadecimal digits; one beyond 64 bits is a bad number
//
// Split at ":", items lose their outer blanks, unless said otherwise, and empty ones are dropped.
// Times are unsigned 32-bit milliseconds unless said otherwise, and wrap around. Nothing is thrown
// for a bad text. Any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vexor/export.h"

// A duration as a range. A time in milliseconds leaves the microseconds 0, and the other way round.
struct ONTIME_TYPE {
  std::uint32_t avgMs = 0;  // middle of the range
  std::uint32_t minMs = 0;
  std::uint32_t maxMs = 0;
  std::uint32_t avgUs = 0;
  std::uint32_t minUs = 0;
  std::uint32_t maxUs = 0;
  bool isSet = false;  // a text other than "Invalid" was given

  bool operator==(const ONTIME_TYPE&) const = default;
};

// How long to execute.
struct _EXECYCLETIME {
  bool isValid = false;       // a usable length was given
  bool isCycleCount = false;  // it was a number of cycles, not a time
  std::uint64_t cycles = 0;
  std::uint64_t seconds = 0;  // whole seconds, at least 1 when valid

  bool operator==(const _EXECYCLETIME&) const = default;
};

// Returns the milliseconds of a unit word in any case: 1000, 60000 or 3600000; 1 for "msec" and
// for every other text.
VEXOR_EXPORT unsigned int DecodeTimeUnits(std::string_view unit);

// Returns the milliseconds of a unit time; of a range a random value from the lower bound on and
// below the upper. The seed is combined with a counter of such calls, so that equal seeds draw
// differently. Units in any case, unknown ones as "msec"; a bad number and a missing bound count as
// 0. `default_ms` when the text is not two items.
VEXOR_EXPORT unsigned int ParseUnitTime(std::string_view text, unsigned int seed,
                                        unsigned int default_ms);

// Returns the milliseconds of a bracket time in "sec", "min" or "hour", in exactly this case and
// without blanks; 0 for everything else, "500[msec]" and "500" included. The closing bracket may be
// missing; what stands behind it is not looked at.
VEXOR_EXPORT unsigned int GetTime(std::string_view text);

// Returns the range of a unit time. A unit that contains "usec" gives microseconds, one that
// contains "ticks" 1 in all microsecond fields, unknown ones count as "msec", all in any case. All
// zero, with `isSet` clear, for an empty text and exactly "Invalid"; all zero but `isSet` when the
// text is not two items. A bad or missing bound is 0, and so is one with a blank beside the dash.
VEXOR_EXPORT ONTIME_TYPE ParseOnTimeType(std::string_view text);

// Returns the sums of the millisecond fields; the microseconds are 0 and `isSet` is clear.
VEXOR_EXPORT ONTIME_TYPE add_OnTimeStructs(ONTIME_TYPE a, ONTIME_TYPE b);

// Returns the millisecond bounds as a unit time in the largest unit that both are multiples of:
// "sec:10-20"; "hour:0" for zeros. Only the lower bound unless it is below the upper.
VEXOR_EXPORT std::string GetUnitTimeString(ONTIME_TYPE time);

// Returns the time for a reader: "1.500 sec" from 1000 up, "999 msec" below.
VEXOR_EXPORT std::string FormatTime(unsigned int ms);

// Returns both millisecond bounds for a reader, also when they are equal: "80 msec - 1.500 sec".
VEXOR_EXPORT std::string FormatTime(ONTIME_TYPE time);

// Returns the unit and the number of a text, given in either order, joined by ":" in the order
// asked for; the number stays as written. A single item is a number in `default_unit`, which is not
// verified, when `allow_default_unit` is set. Empty for all else. Unit words in lower case only;
// blanks are not removed, and none is accepted.
VEXOR_EXPORT std::string TimeUnitVerifyFormat(std::string_view text, bool unit_first,
                                              bool allow_default_unit,
                                              std::string_view default_unit);

// Returns an execution length. A cycle takes the sum of the two parts in milliseconds, 0.005 if
// that is 0. Units in any case. A text with ":" that does not begin with a unit is a number of
// cycles and a word, in either order; with "PerSet" or "#Set" anywhere in it, in any case, the
// number is multiplied by `set_count`. A number alone is not trimmed. All zero for an empty text
// and a time of 0; only `isCycleCount` is set for a bad or zero number of cycles. Products wrap in
// 64 bits; what the cycle's length makes too large to hold becomes the largest number.
VEXOR_EXPORT _EXECYCLETIME ParseExeCycleTimeType(std::string_view text, unsigned int set_count,
                                                 float cycle_part_a, float cycle_part_b);

// Returns the number of failures at which a run stops: so many per cent of the total, truncated.
// The product of the two wraps in 64 bits.
VEXOR_EXPORT std::uint64_t GetExitOnFailureCounter(unsigned int percent, std::uint64_t total);
