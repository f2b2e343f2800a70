#include "bad_night.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "vexor/util/files.h"

namespace {

// A part of the machine that performs worse for a part of the night, and how often.
struct Weakness {
  VEXOR_PM_TEST_ID test;
  unsigned core;
  std::string_view request;
  unsigned from;  // per mille of the night
  unsigned until;
  unsigned health;   // per mille of the typical
  unsigned percent;  // of the times
};

constexpr Weakness kWeaknesses[] = {
    {PM_TEST_CSTATES, 3, "C6", 200, 2000, 400, 60},
    {PM_TEST_PSTATES, 0, "P0", 330, 420, 870, 100},
    {PM_TEST_PCIE_LINK, 0, "L1", 940, 2000, 600, 50},
};

// In per mille of the night. Events after the long sleep are delayed by its length.
constexpr unsigned kOversleep = 480;
constexpr unsigned kReset = 700;
constexpr unsigned kPowerCut = 930;
constexpr unsigned kMostShift = 40;

// Returns where the last line of a log begins.
std::size_t FindLastLine(const std::string& bytes) {
  return bytes.size() < 2 ? 0 : bytes.find_last_of('\n', bytes.size() - 2) + 1;
}

}  // namespace

BadNight::BadNight(unsigned seed, Time begin, Duration length) : begin_(begin), length_(length) {
  UserRand random(seed);
  shift_ = random.Next32(0, kMostShift);
  oversleep_ = length / 1000 * random.Next32(150, 250);
}

Time BadNight::At(unsigned per_mille) const {
  return *begin_ + length_ / 1000 * (per_mille + shift_);
}

unsigned BadNight::GetHealth(VEXOR_PM_TEST_ID test, unsigned core, std::string_view request,
                             UserRand& random) const {
  constexpr unsigned kGood = 1000;
  if (!begin_) return kGood;
  const Time now = SimulatedMachine::Now();
  for (const Weakness& weakness : kWeaknesses) {
    const bool applies =
        weakness.test == test && weakness.core == core && weakness.request == request;
    if (!applies || now < At(weakness.from) || now > At(weakness.until)) continue;
    if (random.Next32(0, 100) < weakness.percent) return weakness.health;
  }
  return kGood;
}

Duration BadNight::TakeOversleep() {
  if (!begin_ || overslept_) return {};
  const Time now = SimulatedMachine::Now();
  if (now < At(kOversleep) || now > At(kReset)) return {};
  overslept_ = true;
  return oversleep_;
}

BadNight::LossOfPower BadNight::GetNextLoss() const {
  if (!begin_) return {};
  const Time now = SimulatedMachine::Now();
  const Time reset = At(kReset) + oversleep_;
  const Time power_cut = At(kPowerCut) + oversleep_;
  if (now < reset) return {.kind = Loss::kReset, .at = reset};
  if (now < power_cut) return {.kind = Loss::kPowerCut, .at = power_cut};
  return {};
}

void CutPower(VexorLogging& torn, VexorLogging& zeroed) {
  torn.CloseFile(true);
  const std::string cut = ReadFile(torn.GetLogFile(), false);
  const std::size_t row = FindLastLine(cut);
  std::filesystem::resize_file(torn.GetLogFile(), row + (cut.size() - row) / 2);

  constexpr std::size_t kBlock = 512;
  zeroed.CloseFile(true);
  std::string bytes = ReadFile(zeroed.GetLogFile(), false);
  bytes.resize(FindLastLine(bytes));
  bytes.append(kBlock, '\0');
  std::ofstream(zeroed.GetLogFile(), std::ios::binary) << bytes;
}
