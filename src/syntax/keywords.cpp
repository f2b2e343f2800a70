#include "vexor/syntax/keywords.h"

#include <algorithm>
#include <array>
#include <set>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/keyword_table.h"
#include "syntax/nearest.h"
#include "syntax/words.h"
#include "util/table_checks.h"
#include "util/text.h"

namespace vexor {

namespace {

constexpr KeywordKind kSwitch = KeywordKind::kSwitch;
constexpr KeywordKind kKnob = KeywordKind::kKnob;

// Scripts rely on two oddities: "ExePstates" is "gvpoints" although it lists states, and the ratio
// keywords begin with a "-" that their short names do not have.
constexpr auto kKeywords = std::to_array<Keyword>({
    {.name = "ActiveTime", .short_name = "at", .unit = "msec:"},
    {.name = "ExeCycles", .short_name = "c"},
    {.name = "CoreAffinity", .short_name = "core"},
    {.name = "StartDelayTime", .short_name = "dt", .unit = "msec:"},
    {.name = "ExitOnFail", .short_name = "eof", .kind = kKnob},
    {.name = "SanityEarlyExit", .short_name = "eop"},
    {.name = "FailTolerance", .short_name = "ftol"},
    {.name = "InStateTime", .short_name = "it", .unit = "msec:"},
    {.name = "Log_Level", .short_name = "log"},
    {.name = "TestMode", .short_name = "mode"},
    {.name = "ModuleAffinity", .short_name = "mod"},
    {.name = "PkgAffinity", .short_name = "pkg"},
    {.name = "PxMxCxScope", .short_name = "scope"},
    {.name = "Random", .short_name = "r", .kind = kKnob},
    {.name = "SwitchTime", .short_name = "st", .unit = "msec:"},
    {.name = "ControlPoint", .short_name = "ctrlpoint"},
    {.name = "CoreExclusion", .short_name = "coreexcl"},
    {.name = "autoEnable", .short_name = "autoEnable", .kind = kKnob},
    {.name = "D3", .short_name = "d3", .kind = kKnob},
    {.name = "D0I3", .short_name = "d0i3", .kind = kKnob},
    {.name = "HwpDesiredValid", .short_name = "desv", .kind = kSwitch},
    {.name = "Device", .short_name = "dev"},
    {.name = "DutyCycles", .short_name = "duty"},
    {.name = "HwpEppValid", .short_name = "eppv", .kind = kSwitch},
    {.name = "ExitOnPassRatios", .short_name = "eopratio"},
    {.name = "ForceIdleDelay", .short_name = "fid", .unit = "usec:"},
    {.name = "FailOnLimitReason", .short_name = "flr", .kind = kKnob},
    {.name = "FreqTolerance", .short_name = "fql"},
    {.name = "IceState", .short_name = "ice"},
    {.name = "ICeIDAffinity", .short_name = "idaff"},
    {.name = "AllPerICEIDScope", .short_name = "idscope"},
    {.name = "AllMwaitReq", .short_name = "invmwait", .kind = kKnob},
    {.name = "LimitReasonMask", .short_name = "lrm"},
    {.name = "HwpMaxValid", .short_name = "maxv", .kind = kSwitch},
    {.name = "HwpMinValid", .short_name = "minv", .kind = kSwitch},
    {.name = "NoErrOnDemotion", .short_name = "neodem", .kind = kKnob},
    {.name = "NoErrOnPromotion", .short_name = "neoprom", .kind = kKnob},
    {.name = "DisableRandPkgVoting", .short_name = "norpv", .kind = kKnob},
    {.name = "PassOnMinTurbo", .short_name = "passpOn", .kind = kKnob},
    {.name = "PassOnPromotion", .short_name = "passOnPro", .kind = kKnob},
    {.name = "M=M=D", .short_name = "mmd", .kind = kKnob},
    {.name = "PCxDispOn", .short_name = "pcxon", .kind = kKnob},
    {.name = "PassOnRaplPerfStatus", .short_name = "raplstat", .kind = kKnob},
    {.name = "VerifyPerfStatusOnly", .short_name = "perfstat", .kind = kKnob},
    {.name = "HwpPkgMode", .short_name = "pkgmode", .kind = kSwitch},
    {.name = "Power-Off", .short_name = "poweroff", .kind = kKnob},
    {.name = "ExePstates", .short_name = "gvpoints"},
    {.name = "QclkCheck", .short_name = "qclk", .kind = kKnob},
    {.name = "RandomPkgVoting", .short_name = "rpv", .kind = kSwitch},
    {.name = "-ratioPUnit0", .short_name = "ratioPUnit0"},
    {.name = "-ratioPUnit1", .short_name = "ratioPUnit1"},
    {.name = "-ratioPUnit2", .short_name = "ratioPUnit2"},
    {.name = "-ratioPUnit3", .short_name = "ratioPUnit3"},
    {.name = "-ratioPUnit4", .short_name = "ratioPUnit4"},
    {.name = "RC0Time", .short_name = "rc0t", .unit = "msec:"},
    {.name = "RC6Time", .short_name = "rc6t", .unit = "msec:"},
    {.name = "Rc0Method", .short_name = "rc0m"},
    {.name = "ExeCstates", .short_name = "states"},
    {.name = "ConfigState", .short_name = "states"},
    {.name = "SubStates", .short_name = "substates"},
    {.name = "TurboLimitCores", .short_name = "tlc"},
    {.name = "Tile", .short_name = "tile"},
    {.name = "ExeValueSet", .short_name = "value"},
    {.name = "GfxWorkLoad", .short_name = "workload"},
    {.name = "WakeEvent", .short_name = "wakeevent"},
    {.name = "SleepStates", .short_name = "ss"},
    {.name = "S0ixFailureLevel", .short_name = "sxfl"},
    {.name = "LoopEachSx", .short_name = "sxloop"},
    {.name = "PreRequisiteSync", .short_name = "sync", .kind = kKnob},
    {.name = "LPM_EN", .short_name = "lpm"},
    {.name = "YellowBangCheck", .short_name = "chkyellow", .kind = kKnob},
    {.name = "MemoryCheck", .short_name = "chkmem", .kind = kKnob},
    {.name = "MCACheck", .short_name = "chkmca", .kind = kKnob},
    {.name = "Kavrit", .short_name = "chksoc", .kind = kKnob},
});

static_assert(AreDistinct(kKeywords, &Keyword::name, EqualsIgnoreCase));

// Two keywords deliberately share this short name; every other one is unique.
constexpr std::string_view kSharedShortName = "states";

static_assert(NoTwo(kKeywords, [](const Keyword& upper, const Keyword& lower) {
  return EqualsIgnoreCase(upper.short_name, lower.short_name) &&
         lower.short_name != kSharedShortName;
}));

// Suggestions compare names in full.
static_assert(std::ranges::all_of(kKeywords, [](const Keyword& keyword) {
  return std::max(keyword.name.size(), keyword.short_name.size()) <= kLongestCompared;
}));

constexpr bool IsKnob(const Keyword& keyword) { return keyword.kind == KeywordKind::kKnob; }

constexpr auto kKnobs = [] {
  std::array<std::string_view, static_cast<std::size_t>(std::ranges::count_if(kKeywords, IsKnob))>
      knobs;
  auto* next = knobs.data();
  for (const Keyword& keyword : kKeywords) {
    if (IsKnob(keyword)) *next++ = keyword.name;
  }
  return knobs;
}();

// Returns whether the item is a keyword, alone or followed by a value after "=" or ":". "M=M=D" is
// found only as a whole.
bool IsKnownItem(std::string_view item) {
  const std::string_view name = item.substr(0, item.find_first_of("=:"));
  return std::ranges::find(kKnobs, item) != kKnobs.end() || FindKeyword(name) != nullptr;
}

}  // namespace

constinit const Expectation kKnobWords = kOneOf<kKnobs>;

std::span<const Keyword> Keywords() { return kKeywords; }

std::optional<Fault> DoubtKnobs(std::string_view text, std::span<const std::string_view> own) {
  FaultNote note(text);
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ';', item);) {
    const std::string_view knob = TrimBlanks(item);
    const bool is_own = std::ranges::find(own, knob) != own.end();
    if (!knob.empty() && !is_own && !IsKnownItem(knob))
      note.At(knob, "unknown knob", kOneOf<kKnobs>);
  }
  return note.First();
}

std::optional<Fault> DoubtKnobs(std::string_view text) { return DoubtKnobs(text, {}); }

std::optional<Fault> DoubtRepeatedWord(std::string_view text) {
  FaultNote note(text);
  std::set<std::string_view> seen;
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ';', item);) {
    const std::string_view word = TrimBlanks(item);
    if (!word.empty() && !seen.insert(word).second) {
      note.At(word, "word that stands twice", "each word once", FaultKind::kRepeatedItem);
    }
  }
  return note.First();
}

const Keyword* FindKeyword(std::string_view name) {
  for (const Keyword& keyword : kKeywords) {
    if (keyword.name == name) return &keyword;
  }
  return nullptr;
}

const Keyword* FindShortName(std::string_view short_name) {
  for (const Keyword& keyword : kKeywords) {
    if (EqualsIgnoreCase(keyword.short_name, short_name)) return &keyword;
  }
  return nullptr;
}

}  // namespace vexor

using namespace vexor;

std::string GetKeywordShortName(std::string_view keyword) {
  const Keyword* const row = FindKeyword(keyword);
  if (row == nullptr) return {};
  return std::string(row->short_name);
}

bool IsOverwriteOption(std::string_view keyword, std::string_view option) {
  const Keyword* const row = FindKeyword(keyword);
  return row != nullptr && EqualsIgnoreCase(row->short_name, option);
}

bool UpdateknobsOptions(std::string& knobs, std::string_view knob, std::string_view option,
                        std::string_view value) {
  if (!IsOverwriteOption(knob, option)) return false;
  const bool is_on = EqualsIgnoreCase(value, "true");
  std::string kept;
  bool was_on = false;
  std::string_view rest = knobs;
  for (std::string_view item; TakeItem(rest, ';', item);) {
    const bool is_knob = EqualsIgnoreCase(TrimBlanks(item), knob);
    was_on = was_on || is_knob;
    if (!is_knob) kept.append(kept.empty() ? "" : ";").append(item);
  }
  if (is_on && !was_on) kept.append(kept.empty() ? "" : ";").append(knob);
  if (is_on != was_on) knobs = std::move(kept);
  return true;
}

std::string PrependtoRange(std::string_view prefix, std::string_view text) {
  const bool is_bare = !text.empty() && IsDecDigit(text.front());
  return std::string(is_bare ? prefix : std::string_view{}).append(text);
}
