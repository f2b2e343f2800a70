// Computes how long a component stayed in a state, from two samples of two free-running counters:
// the residency counter of the state, and a reference counter of the elapsed time.
//
// A sample that could not be read is 0xDEADBEEFDEADBEEF or 0xDEADBEEF. Threads may call at the same
// time, each for nodes of its own.
#pragma once

#include <cstdint>

#include "vexor/export.h"

struct _RESIDENCY_NODE {
  std::uint64_t resNow = 0;   // residency counter, latest sample
  std::uint64_t resPrev = 0;  // residency counter, sample before it
  std::uint64_t refNow = 0;   // reference counter, latest sample
  std::uint64_t refPrev = 0;  // reference counter, sample before it
  double percent = 0;         // last residency; -2.0 if it could not be computed
  double maxPercent = 0;      // largest residency so far
};

// Returns whether the samples are usable: both latest ones could be read, and neither reference
// sample is 0.
VEXOR_EXPORT bool ValidateResRawData(_RESIDENCY_NODE& node);

// Returns by how much the residency counter grew, minus 3 if it wrapped around. Returns 0 if both
// samples are 0; 0xDEADBEEFDEADBEEF if a sample could not be read or the earlier one is 0.
VEXOR_EXPORT std::uint64_t GetResRawDelta(_RESIDENCY_NODE& node);

// Returns the residency in per cent and stores it in `percent` and, if it is the largest so far, in
// `maxPercent`. If a residency sample could not be read, or a reference sample is 0 or
// 0xDEADBEEFDEADBEEF, returns and stores -2.0, but not in `maxPercent`.
VEXOR_EXPORT double GetResPercent(_RESIDENCY_NODE& node);
