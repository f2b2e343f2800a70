#include "vexor/syntax/power_scheme.h"

#include <array>

#include "syntax/checks.h"
#include "syntax/words.h"
#include "util/table_checks.h"

namespace vexor {

namespace {

constexpr auto kSchemes = std::to_array<Word<OS_POWER_SCHEME>>({
    {"Default", POWER_SCHEME_USER_DEFINED},
    {"Balanced", POWER_SCHEME_BALANCED},
    {"Power-Saver", POWER_SCHEME_POWER_SAVER},
    {"High-Performance", POWER_SCHEME_HIGH_PERFORMANCE},
    {"Random", POWER_SCHEME_RANDOM},
    {"All", POWER_SCHEME_ALL},
});
static_assert(AreInOrder(kSchemes, &Word<OS_POWER_SCHEME>::value));

constexpr auto kSources = std::to_array<Word<OS_BATTERY_SIMLATION>>({
    {"Default", BATTERY_SIM_DEFAULT},
    {"AC", BATTERY_SIM_AC},
    {"DC", BATTERY_SIM_DC},
});
static_assert(AreInOrder(kSources, &Word<OS_BATTERY_SIMLATION>::value));

constexpr const char* kUserDefined = "User Defined";

}  // namespace

constinit const Expectation kPowerSchemeWords = kOneOf<kSchemes>;
constinit const Expectation kPowerSourceWords = kOneOf<kSources>;

std::optional<Fault> CheckPowerScheme(std::string_view text) {
  if (text.empty() || FindWord(kSchemes, text) != nullptr) return std::nullopt;
  return Fault{.what = "unknown power scheme", .expected = kOneOf<kSchemes>};
}

std::optional<Fault> CheckBatteryOption(std::string_view text) {
  if (text.empty() || FindWord(kSources, text) != nullptr) return std::nullopt;
  return Fault{.what = "unknown power source", .expected = kOneOf<kSources>};
}

}  // namespace vexor

using namespace vexor;

OS_POWER_SCHEME ParsePowerScheme(std::string_view text) {
  const auto* const word = FindWord(kSchemes, text);
  return word == nullptr ? POWER_SCHEME_USER_DEFINED : word->value;
}

// "Random" and "All" select among the plans and have no name of their own.
const char* PowerSchemeName(int value) {
  const bool is_plan = value >= POWER_SCHEME_BALANCED && value <= POWER_SCHEME_HIGH_PERFORMANCE;
  return is_plan ? kSchemes[static_cast<std::size_t>(value)].text.data() : kUserDefined;
}

OS_BATTERY_SIMLATION ParseBatteryOptions(std::string_view text) {
  const auto* const word = FindWord(kSources, text);
  return word == nullptr ? BATTERY_SIM_DEFAULT : word->value;
}

const char* BatterySimName(int value) {
  const bool is_known = value >= BATTERY_SIM_DEFAULT && value <= BATTERY_SIM_DC;
  return is_known ? kSources[static_cast<std::size_t>(value)].text.data() : kUserDefined;
}
