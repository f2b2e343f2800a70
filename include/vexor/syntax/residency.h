// How long a component stayed in a state, from two samples of two free-running counters: a
// residency counter of the state and a reference counter of the time that passed.
//
// A sample that could not be read holds 0xDEADBEEFDEADBEEF or 0xDEADBEEF. Threads may call at the
// same time for nodes of their own.
#pragma once

#include <cstdint>

#include "vexor/export.h"

struct _RESIDENCY_NODE {
  std::uint64_t resNow = 0;   // residency counter, latest sample
  std::uint64_t resPrev = 0;  // residency counter, sample before it
  std::uint64_t refNow = 0;   // reference counter, latest sample
  std::uint64_t refPrev = 0;  // reference counter, sample before it
  double percent = 0;         // last residency; -2.0 when it could not be computed
  double maxPercent = 0;      // largest residency so far
};

// Returns whether the two latest samples and the earlier reference sample can be used: the latest
// were read, and neither reference sample is 0.
VEXOR_EXPORT bool ValidateResRawData(_RESIDENCY_NODE& node);

// Returns by how much the residency counter grew, 3 less when it wrapped; 0 when both samples are
// 0; 0xDEADBEEFDEADBEEF when a sample could not be read or the earlier one is 0.
VEXOR_EXPORT std::uint64_t GetResRawDelta(_RESIDENCY_NODE& node);

// Returns the residency in per cent and keeps it in `percent` and, when it is the largest so far,
// in `maxPercent`; -2.0, which never counts as the largest, when a residency sample could not be
// read or a reference sample is 0 or 0xDEADBEEFDEADBEEF.
VEXOR_EXPORT double GetResPercent(_RESIDENCY_NODE& node);
