#include "measurements.h"

#include <algorithm>
#include <cstdio>

#include "vexor/syntax/error_codes.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace {

constexpr bool IsResidency(Column column) { return column >= kPc2; }

// In the order of the tests. Where a state has no column of its own, the reading is how many per
// cent of the attempts to enter it succeeded, under "Status".
constexpr Request kRequests[] = {
    {PM_TEST_CSTATES, "Core", "C1", kC1, 910, 600, 0x80000004},
    {PM_TEST_CSTATES, "Core", "C6", kC6, 780, 500, 0x00200004},
    {PM_TEST_CSTATES, "Core", "C8", kPc8, 640, 400, 0x00800004},
    {PM_TEST_CSTATES, "Core", "C10", kPc10, 550, 300, 0x02000004},
    {PM_TEST_HWP, "Core", "P1", kFrequency, 2800, 2650, 0x00100002},
    {PM_TEST_HWP, "Core", "Pn", kFrequency, 800, 750, 0x00100002},
    {PM_TEST_PSTATES, "Core", "P0", kFrequency, 4800, 4500, 0x00800002},
    {PM_TEST_PSTATES, "Core", "P1", kFrequency, 2800, 2650, 0x00200002},
    {PM_TEST_PSTATES, "Core", "Pn", kFrequency, 800, 750, 0x00200002},
    {PM_TEST_TSTATES, "Core", "50%", kClkMod, 500, 450, 0x00000480},
    {PM_TEST_GSTATES, "System", "S0ix", kPc10, 865, 850, 0x00800008},
    {PM_TEST_GSTATES, "System", "S4", kStatus, 1000, 900, 0x00200008},
    {PM_TEST_PECI, "System", "Ping", kStatus, 1000, 950, 0x00020080},
    {PM_TEST_IGFX_DVFS, "GT", "P0", kFrequency, 1450, 1300, 0x00501080},
    {PM_TEST_IGFX_DVFS, "GT", "Pn", kFrequency, 300, 280, 0x00501080},
    {PM_TEST_IGFX_RC6, "GT", "RC6", kGtRc6, 870, 700, 0x00901080},
    {PM_TEST_UFS, "Package", "8", kFrequency, 800, 760, 0x00100040},
    {PM_TEST_UFS, "Package", "24", kFrequency, 2400, 2280, 0x00100040},
    {PM_TEST_SAGV, "Package", "Low", kGtBw, 180, 100, 0x00200040},
    {PM_TEST_SAGV, "Package", "High", kGtBw, 760, 600, 0x00200040},
    {PM_TEST_MESH_GV, "Package", "24", kFrequency, 2400, 2280, 0x00100040},
    {PM_TEST_PCIE_LINK, "Device", "L1", kStatus, 980, 900, 0x00102080},
    {PM_TEST_DX_STATES, "Device", "D3", kStatus, 990, 900, 0x00802080},
    {PM_TEST_VPU_DVFS, "Device", "P0", kFrequency, 1400, 1250, 0x00140080},
};

constexpr Request kAnyTest[] = {
    {PM_TEST_VEXOR, "Device", "On", kStatus, 990, 900, 0x00100080},
};

double ToUnit(const Request& request, unsigned value) {
  return request.column == kFrequency ? value : value / 10.0;
}

std::string AddUnit(const Request& request, double value) {
  return RemoveZerosFromNumber(value) + (request.column == kFrequency ? " MHz" : " %");
}

// Returns the value plus a random number from -20 to 20.
unsigned Vary(unsigned value, UserRand& random) {
  constexpr unsigned kMost = 20;
  return std::max(value + random.Next32(0, 2 * kMost + 1), kMost) - kMost;
}

}  // namespace

std::span<const Request> GetRequests(VEXOR_PM_TEST_ID test) {
  const auto is_of_test = [test](const Request& request) { return request.test == test; };
  const auto begin = std::ranges::find_if(kRequests, is_of_test);
  if (begin == std::end(kRequests)) return kAnyTest;
  return {begin, std::find_if_not(begin, std::end(kRequests), is_of_test)};
}

Meter::Meter(std::span<const Request> requests, unsigned seed)
    : requests_(requests), random_(seed) {
  for (_RESIDENCY_NODE& counter : counters_) {
    counter.resNow = random_.NextUint() + std::uint64_t{1};
    counter.refNow = counter.resNow + random_.NextUint();
  }
}

double Meter::Read(const Request& request, Duration time, unsigned health, Cells& cells) {
  const unsigned given = Vary(request.typical * health / 1000, random_);
  for (const Request& other : requests_) {
    if (!IsResidency(other.column) || other.column == request.column) continue;
    ReadResidency(other.column, time, Vary(other.typical / 10, random_), cells);
  }
  if (IsResidency(request.column)) return ReadResidency(request.column, time, given, cells);
  const unsigned most = request.column == kFrequency ? given : std::min(given, 1000U);
  const double reading = ToUnit(request, most);
  cells[request.column] = RemoveZerosFromNumber(reading);
  if (request.column == kStatus) cells[kStatus] += " %";
  return reading;
}

double Meter::ReadResidency(Column column, Duration time, unsigned per_mille, Cells& cells) {
  constexpr std::uint64_t kTicksPerMillisecond = 38400;
  _RESIDENCY_NODE& counter = counters_[column];
  counter.resPrev = counter.resNow;
  counter.refPrev = counter.refNow;
  const std::uint64_t ticks = static_cast<std::uint64_t>(time.count()) * kTicksPerMillisecond;
  counter.refNow += ticks;
  const auto most = static_cast<long>(std::min<std::uint64_t>(ticks / 1000, 1 << 30));
  counter.resNow += ticks / 1000 * per_mille + random_.Next32(0, most);
  cells[column] = std::to_string(GetResRawDelta(counter));
  const double percent = GetResPercent(counter);
  cells[column + 1] = RemoveZerosFromNumber(percent);
  return percent;
}

double GetLeast(const Request& request) { return ToUnit(request, request.least); }

std::string ExplainCode(VEXOR_PM_TEST_ID test, std::uint32_t code) {
  std::array<char, 16> word = {};
  std::snprintf(word.data(), word.size(), "0x%08x", code);
  return word.data() + (" " + Trim(GetErrorCode(test, code)));
}

std::string ExplainFault(const Request& request, double reading) {
  return ExplainCode(request.test, request.code) + " " + std::string(request.name) + " at " +
         AddUnit(request, reading) + ", expected " + AddUnit(request, GetLeast(request)) +
         " or more";
}
