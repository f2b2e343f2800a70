// The requests of the simulated tests to the machine, their readings, and the columns of a row.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simulated_machine.h"
#include "vexor/syntax/residency.h"
#include "vexor/util/random.h"
#include "vexor/vocabulary/pm_tests.h"

// The columns of the default header that a test fills itself, in order. The column of a residency,
// in per cent, follows that of its counter.
enum Column : std::uint32_t {
  // clang-format off
  kIter, kScope, kResult, kFailCount, kRequest, kStatus, kNotes, kFrequency, kClkMod,
  kPc2, kPc2Percent, kPc3, kPc3Percent, kPc6, kPc6Percent, kPc7, kPc7Percent, kPc8, kPc8Percent,
  kPc9, kPc9Percent, kPc10, kPc10Percent, kMc6, kMc6Percent, kC1, kC1Percent, kC3, kC3Percent,
  kC6, kC6Percent, kC7, kC7Percent, kGtRc6, kGtRc6Percent, kGtBw, kGtBwPercent, kGtSr, kGtSrPercent,
  kClipCause, kColumns
  // clang-format on
};

// The texts for `VexorLogging::LogData`.
using Cells = std::vector<std::string>;

// A state or an operating point that a test requests, and the reading that it expects.
struct Request {
  VEXOR_PM_TEST_ID test;
  std::string_view scope;
  std::string_view name;
  Column column;       // of the reading
  unsigned typical;    // MHz, or per mille of the time
  unsigned least;      // what the test accepts
  std::uint32_t code;  // the error word of a reading below
};

// Returns the requests of a test, which it makes in turn; at least one.
std::span<const Request> GetRequests(VEXOR_PM_TEST_ID test);

// The counters that one thread of a test reads.
class Meter {
 public:
  Meter(std::span<const Request> requests, unsigned seed);

  // Fills the columns of all requests for an iteration of this length, for which the machine was
  // asked for `request` and gave so many per mille of the typical. Returns the reading for the
  // request itself, in MHz or per cent.
  double Read(const Request& request, Duration time, unsigned health, Cells& cells);

 private:
  double ReadResidency(Column column, Duration time, unsigned per_mille, Cells& cells);

  std::span<const Request> requests_;
  UserRand random_;
  std::array<_RESIDENCY_NODE, kColumns> counters_ = {};
};

// Describes what is wrong with a reading, for the log: the error word, its tags, what was read and
// what was expected.
std::string ExplainFault(const Request& request, double reading);

// Returns the error word and its tags: "0x00200004 EC_CSTATE; EC_C6;".
std::string ExplainCode(VEXOR_PM_TEST_ID test, std::uint32_t code);

// Returns the smallest reading that `request` accepts, in its unit.
double GetLeast(const Request& request);
