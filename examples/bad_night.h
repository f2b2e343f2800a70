// The failures of the simulated machine in a bad night: a core that reaches its idle state less, a
// processor that does not reach its turbo frequency, a timer that does not end a sleep, a reset
// and, at the end, a power cut.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "simulated_machine.h"
#include "vexor/logging/log_file.h"
#include "vexor/util/random.h"
#include "vexor/vocabulary/pm_tests.h"

class BadNight {
 public:
  enum class Loss { kReset, kPowerCut };

  struct LossOfPower {
    Loss kind = Loss::kReset;
    Time at = Time::max();  // never
  };

  // A night of the machine in which nothing goes wrong.
  BadNight() = default;

  // A bad one. Equal seeds give equal nights.
  BadNight(unsigned seed, Time begin, Duration length);

  // Returns how well a core performs a test's request, in per mille of the typical performance.
  unsigned GetHealth(VEXOR_PM_TEST_ID test, unsigned core, std::string_view request,
                     UserRand& random) const;

  // Returns by how much a sleep that begins now exceeds the requested time.
  Duration TakeOversleep();

  // Returns the first loss of power that is still to come.
  [[nodiscard]] LossOfPower GetNextLoss() const;

 private:
  [[nodiscard]] Time At(unsigned per_mille) const;

  std::optional<Time> begin_;  // of a bad night
  Duration length_ = {};
  unsigned shift_ = 0;  // per mille of the night
  Duration oversleep_ = {};
  bool overslept_ = false;
};

// Damages two logs like a power cut in the middle of a write: cuts off the last row of `torn`, and
// replaces the last row of `zeroed` by zero bytes.
void CutPower(VexorLogging& torn, VexorLogging& zeroed);
