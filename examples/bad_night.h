// What goes wrong with the simulated machine in a bad night: a core that idles less than before, a
// processor that does not reach its turbo frequency, a sleep that no timer ends, a reset and, in
// the end, a power cut.
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

  // Returns how well the machine does what a test asks of a core, in per mille of the typical.
  unsigned GetHealth(VEXOR_PM_TEST_ID test, unsigned core, std::string_view request,
                     UserRand& random) const;

  // Returns how much longer than asked for the machine sleeps now.
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

// Leaves two logs as a power cut in the middle of a write does: the last row of `torn` is cut off,
// and the last row of `zeroed` has its room in the file, but zero bytes for its content.
void CutPower(VexorLogging& torn, VexorLogging& zeroed);
