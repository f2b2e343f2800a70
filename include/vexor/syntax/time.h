// Parses and formats durations.
//
//   unit time      unit:number or unit:low-high          msec:80, sec:10-20
//   bracket time   number[unit]                          10[sec]
//   cycles         number, number:PerSet or unit:number  100, 3:PerSet, min:5
//   unit           msec, sec, min, hour (and usec or ticks, where stated)
//   number         decimal digits, or 0x and hexadecimal digits, up to 64 bits
//
// A text is split at ":", items lose the blanks around them, and empty items are dropped, unless
// stated otherwise. Times are milliseconds in 32 bits, which wrap around, unless stated otherwise.
// No text makes these functions throw. Any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vexor/export.h"

// A duration as a range, either in milliseconds or in microseconds; the other members are 0.
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
  bool isValid = false;       // the text is a length other than 0
  bool isCycleCount = false;  // the text is a number of cycles, not a time
  std::uint64_t cycles = 0;
  std::uint64_t seconds = 0;  // whole seconds, at least 1 when valid

  bool operator==(const _EXECYCLETIME&) const = default;
};

// Returns the milliseconds of a unit word in any case: 1000, 60000 or 3600000; 1 for "msec" and
// for every other text.
VEXOR_EXPORT unsigned int DecodeTimeUnits(std::string_view unit);

// Returns the milliseconds of a unit time. For a range, returns a random value from the lower bound
// up to, but not including, the upper. The seed is combined with a counter of such calls, so that
// repeated calls with the same seed return different values. Units in any case; unknown ones count
// as "msec". A bad number or missing bound counts as 0. Returns `default_ms` if the text does not
// have two items.
VEXOR_EXPORT unsigned int ParseUnitTime(std::string_view text, unsigned int seed,
                                        unsigned int default_ms);

// Returns the milliseconds of a bracket time in "sec", "min" or "hour", in lower case and without
// blanks; 0 for any other text, including "500[msec]" and "500". The closing bracket may be
// missing; text after it is ignored.
VEXOR_EXPORT unsigned int GetTime(std::string_view text);

// Returns the range of a unit time. Units in any case: one that contains "usec" gives microseconds,
// one that contains "ticks" gives 1 in all microsecond members, unknown ones count as "msec".
// Returns zeros with `isSet` false for empty text and exactly "Invalid", zeros with `isSet` true if
// the text does not have two items. A bad or missing bound is 0, and so is one with a blank next to
// the dash.
VEXOR_EXPORT ONTIME_TYPE ParseOnTimeType(std::string_view text);

// Returns the sums of the millisecond members; the microseconds are 0 and `isSet` is false.
VEXOR_EXPORT ONTIME_TYPE add_OnTimeStructs(ONTIME_TYPE a, ONTIME_TYPE b);

// Returns the millisecond bounds as a unit time, in the largest unit of which both are multiples:
// "sec:10-20"; "hour:0" for zeros. Returns only the lower bound unless it is below the upper.
VEXOR_EXPORT std::string GetUnitTimeString(ONTIME_TYPE time);

// Returns the time for people to read: "1.500 sec" from 1000 up, "999 msec" below.
VEXOR_EXPORT std::string FormatTime(unsigned int ms);

// Returns both millisecond bounds for people to read, even equal ones: "80 msec - 1.500 sec".
VEXOR_EXPORT std::string FormatTime(ONTIME_TYPE time);

// Returns the unit and the number of a text, which may be in either order, joined by ":" with the
// unit first or last as `unit_first` says; the number is returned as written. With
// `allow_default_unit`, a number alone gets `default_unit`, which is not checked. Any other text
// gives empty text. Units must be in lower case, and blanks are not allowed.
VEXOR_EXPORT std::string TimeUnitVerifyFormat(std::string_view text, bool unit_first,
                                              bool allow_default_unit,
                                              std::string_view default_unit);

// Returns an execution length as cycles and seconds. A cycle takes `cycle_part_a` plus
// `cycle_part_b` milliseconds, or 0.005 if that is 0. A text that begins with a unit, in any case,
// and ":" is a time. Any other text with ":" is a number of cycles and a word, in either order; if
// it contains "PerSet" or "#Set" in any case, the number is multiplied by `set_count`. A number
// alone must have no blanks around it. Returns zeros for empty text and a time of 0; sets only
// `isCycleCount` for a bad or zero number of cycles. Products wrap around at 64 bits, but a result
// that is too large because of the length of a cycle becomes the largest number.
VEXOR_EXPORT _EXECYCLETIME ParseExeCycleTimeType(std::string_view text, unsigned int set_count,
                                                 float cycle_part_a, float cycle_part_b);

// Returns the number of failures at which a run stops: `percent` of `total`, truncated. The product
// of the two wraps around at 64 bits.
VEXOR_EXPORT std::uint64_t GetExitOnFailureCounter(unsigned int percent, std::uint64_t total);
