#include "config/texts/text_meaning.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "util/text.h"
#include "vexor/syntax/affinity.h"
#include "vexor/syntax/cstates.h"
#include "vexor/syntax/ice_states.h"
#include "vexor/syntax/number_tuples.h"
#include "vexor/syntax/peci.h"
#include "vexor/syntax/ratios.h"
#include "vexor/syntax/sleep_states.h"
#include "vexor/syntax/time.h"
#include "vexor/syntax/wake_events.h"
#include "vexor/util/numbers.h"
#include "vexor/util/strings.h"

namespace vexor {
namespace {

// Returns the items' texts joined by ", ".
template <class Items, class Describe>
std::string Joined(const Items& items, Describe describe) {
  std::string joined;
  for (const auto& item : items) {
    if (!joined.empty()) joined += ", ";
    joined += describe(item);
  }
  return joined;
}

// Returns numbers with consecutive ones joined to ranges: "0-3, 8".
std::string DescribeNumbers(std::span<const int> numbers) {
  std::string text;
  while (!numbers.empty()) {
    std::size_t run = 1;
    // Subtract instead of add: the previous number may be INT_MAX.
    while (run < numbers.size() && numbers[run] - 1 == numbers[run - 1]) ++run;
    text += (text.empty() ? "" : ", ") + std::to_string(numbers.front());
    if (run > 1) text += "-" + std::to_string(numbers[run - 1]);
    numbers = numbers.subspan(run);
  }
  return text;
}

std::string ToHex(std::uint64_t value) {
  std::string digits;
  do {
    digits.insert(digits.begin(), "0123456789ABCDEF"[value % 16]);
    value /= 16;
  } while (value != 0);
  return "0x" + digits;
}

// Returns "1 cycle" or "2 cycles".
std::string Count(std::size_t count, std::string_view noun) {
  return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

struct Scale {
  std::uint64_t factor;
  std::string_view unit;
};

// Converts a value in the smallest unit to the largest unit of which it is a multiple.
std::string Scaled(std::uint64_t value, std::span<const Scale> scales) {
  for (const Scale& scale : scales) {
    if (value != 0 && value % scale.factor == 0) {
      return std::to_string(value / scale.factor).append(" ").append(scale.unit);
    }
  }
  return std::to_string(value).append(" ").append(scales.back().unit);
}

std::string Milliseconds(std::uint64_t ms) {
  static constexpr Scale kScales[] = {{3600000, "h"}, {60000, "min"}, {1000, "s"}, {1, "ms"}};
  return Scaled(ms, kScales);
}

std::string Microseconds(std::uint64_t us) {
  static constexpr Scale kScales[] = {{1000000, "s"}, {1000, "ms"}, {1, "us"}};
  return Scaled(us, kScales);
}

std::string DescribeTime(const ONTIME_TYPE& time) {
  if (!time.isSet) return "no time";
  const bool is_micro = time.minUs != 0 || time.maxUs != 0;
  const std::string low = is_micro ? Microseconds(time.minUs) : Milliseconds(time.minMs);
  const std::string high = is_micro ? Microseconds(time.maxUs) : Milliseconds(time.maxMs);
  return low == high ? low : low + " to " + high;
}

std::string DescribeAffinity(const std::vector<int>& list) {
  assert(!list.empty());  // the parsers always return the mode first
  const int mode = list.front();
  std::string name = GetAffinityString(mode);
  if (mode == kAffinityEvenCores) name = "EvenCores";
  if (mode == kAffinityOddCores) name = "OddCores";
  std::span<const int> numbers = list;
  while (!numbers.empty() && numbers.front() == mode) numbers = numbers.subspan(1);
  return numbers.empty() ? name : name + ": " + DescribeNumbers(numbers);
}

// `describe` returns the text of a state's setting, or empty text to skip the state.
template <class Settings, class Describe>
std::string DescribeStates(const Settings& settings, Describe describe) {
  std::string text;
  for (std::size_t state = 0; state < settings.size(); ++state) {
    const std::string setting = describe(settings[state]);
    if (setting.empty()) continue;
    text += (text.empty() ? "C" : ", C") + std::to_string(state) + ": " + setting;
  }
  return text.empty() ? "none of the C-states" : text;
}

std::string DescribeDeviceState(int state) {
  constexpr std::array<std::string_view, 6> kNames = {"none", "power off", "power on",
                                                      "D0",   "D3",        "D0I3"};
  return std::string(kNames.at(static_cast<std::size_t>(state)));
}

std::string DescribeRatio(const Ratio& ratio) {
  constexpr std::array<std::string_view, 13> kNames = {
      "",         "P0",  "P1",  "Pe",       "Pn",       "one below Pn", "one above P0",
      "any pair", "any", "all", "P0 to Pn", "P0 to P1", "P1 to Pn"};
  if (ratio.name != RatioName::kNumber) {
    return std::string(kNames.at(static_cast<std::size_t>(ratio.name)));
  }
  const std::string first = std::to_string(ratio.first);
  return ratio.first == ratio.last ? first : first + " to " + std::to_string(ratio.last);
}

}  // namespace

std::string DescribeDuration(std::string_view text) { return DescribeTime(ParseOnTimeType(text)); }

std::string DescribeCycles(std::string_view text) {
  constexpr float kOneMillisecond = 1;
  // Parsing for a set of one and of two entries shows whether the count is per entry.
  const _EXECYCLETIME one = ParseExeCycleTimeType(text, 1, kOneMillisecond, 0);
  const _EXECYCLETIME two = ParseExeCycleTimeType(text, 2, kOneMillisecond, 0);
  if (!one.isValid) return "nothing is executed";
  if (!one.isCycleCount) return Milliseconds(one.cycles);
  const std::string count = Count(one.cycles, "cycle");
  return two.cycles == one.cycles ? count : count + " for each entry of the test's set";
}

std::string DescribeTimeout(std::string_view text) {
  const auto timeout = ParseTimeout(text);
  if (!timeout) return {};
  return Count(timeout->seconds, "second") + ", " + Count(timeout->times, "time");
}

std::string DescribeScope(std::string_view text) {
  const auto scope = ParseScope(text);
  if (!scope) return {};
  const auto share = [](std::uint8_t percent) { return std::to_string(percent) + "% of the "; };
  return share(scope->packages) + "packages, " + share(scope->modules) + "modules, " +
         share(scope->cores) + "cores, " + share(scope->threads) + "threads";
}

std::string DescribeSpread(std::string_view text) {
  const auto spread = ParseRatioSpread(text);
  if (!spread) return {};
  return "low " + ToHex(spread->low) + ", medium " + ToHex(spread->medium) + ", high " +
         ToHex(spread->high);
}

std::string DescribePackages(std::string_view text) {
  return DescribeAffinity(ParsePkgAffinity(text));
}

std::string DescribeUnits(std::string_view text) {
  return DescribeAffinity(ParseUnitAffinity(text, 1));
}

std::string DescribeThreads(std::string_view text) {
  return DescribeAffinity(ParseThreadAffinity(text));
}

std::string DescribeCstates(std::string_view text) {
  constexpr std::array<std::string_view, 8> kNames = {"C0", "C1", "C3", "C6",
                                                      "C7", "C8", "C9", "C10"};
  const std::string states = Joined(ParseExeCstates(text), [&](CSTATE_MASK state) {
    return std::string(kNames.at(BitScanForwardUtil(static_cast<std::uint32_t>(state))));
  });
  return states.empty() ? "all C-states" : states;
}

std::string DescribeCounts(std::string_view text) {
  std::vector<int> values;
  ParsePerCStateSetting(text, values);
  return DescribeStates(values, [](int value) { return value == 0 ? "" : std::to_string(value); });
}

std::string DescribeLists(std::string_view text) {
  std::vector<std::vector<int>> lists;
  ParsePerCStateSetting(text, lists, false);
  return DescribeStates(lists, DescribeNumbers);
}

std::string DescribeMask(std::string_view text) {
  const std::uint64_t mask = String2Integer(text, 0);
  if (mask == 0) return "no bit";
  return ToHex(mask) + ", bits " + BitsMaskConvert(mask);
}

std::string DescribeCount(std::string_view text) { return std::to_string(String2Integer(text, 0)); }

std::string DescribeAddress(std::string_view text) {
  return text == "Default" ? "the detected one" : ToHex(String2Integer(text, 0));
}

std::string DescribeIceState(std::string_view text) {
  return DescribeDeviceState(ParseIceState(text));
}

std::string DescribeIceStates(std::string_view text) {
  return Joined(ParseExeIceSleepStates(text), DescribeDeviceState);
}

std::string DescribeRatios(std::string_view text) {
  const std::string ratios = Joined(ParseTrendRatios(text), DescribeRatio);
  return ratios.empty() ? "all ratios" : ratios;
}

std::string DescribeExitRatios(std::string_view text) {
  return StringCompare(text, "ALL", true) ? "all ratios" : DescribeRatios(text);
}

std::string DescribePstates(std::string_view text) {
  const PstateSelection selection = ParseExePstates(text);
  switch (selection.range) {
    case PstateRange::kAll:
      return "all P-states, from P0 to Pn";
    case PstateRange::kGuaranteed:
      return "the guaranteed P-states, from P1 to Pn";
    case PstateRange::kTurbo:
      return "the turbo P-states, from P0 to P1";
    case PstateRange::kSpecific:
      break;
  }
  return Joined(selection.ratios, DescribeRatio);
}

std::string DescribePoints(std::string_view text) {
  constexpr std::array<std::string_view, 4> kNames = {"low", "medium", "high", "dynamic"};
  const std::string points = Joined(ParseSagvRatios(text), [&](RatioPoint point) {
    return std::string(kNames.at(static_cast<std::size_t>(point)));
  });
  return points.empty() ? "all points" : points;
}

std::string DescribeSleepStates(std::string_view text) {
  return Joined(Split(text, ';', true), [](const std::string& item) {
    std::string description = Trim(std::string_view(item).substr(0, item.find('=')));
    for (const SleepState& state : ParseSleepStates(item)) {
      description += " (" + ToHex(state.flow) + ")";
      if (state.time.isSet) description += " for " + DescribeTime(state.time);
    }
    return description;
  });
}

std::string DescribeWakeEvents(std::string_view text) {
  constexpr std::array<std::string_view, 13> kNames = {"the operating system's own",
                                                       "timed MWAIT",
                                                       "real-time clock",
                                                       "WADT",
                                                       "hardware real-time clock",
                                                       "random",
                                                       "external",
                                                       "USB",
                                                       "audio",
                                                       "NFC",
                                                       "ISH",
                                                       "fingerprint sensor",
                                                       "home button"};
  return Joined(ParseWakeEvents(text), [&](WAKE_EVENT event) {
    return std::string(kNames.at(static_cast<std::size_t>(event)));
  });
}

std::string DescribePci(std::string_view text) {
  return Joined(ParsePECIPciCfgCmdsList(text), [](const PeciPciConfig& command) {
    std::string place = std::to_string(command.segment);
    for (const unsigned int part : {command.bus + 0U, command.device + 0U, command.function + 0U}) {
      place += ":" + std::to_string(part);
    }
    return place + " offset " + ToHex(command.offset) + " (& " + ToHex(command.and_mask) + " | " +
           ToHex(command.or_mask) + ")";
  });
}

std::string DescribeRegisters(std::string_view text) {
  return Joined(ParsePECIRdMSRCmdsList(text), [](const PeciMsr& read) {
    return read.name + " of thread " + std::to_string(read.thread);
  });
}

}  // namespace vexor
