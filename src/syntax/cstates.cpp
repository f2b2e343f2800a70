#include "vexor/syntax/cstates.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/number_list.h"
#include "syntax/words.h"
#include "util/table_checks.h"
#include "util/text.h"
#include "vexor/util/numbers.h"

namespace vexor {

namespace {

struct CstateRow {
  std::string_view name;
  CSTATE_MASK mask;
  MWAIT_HINT hint;
  int number;  // index of the state's own entry in a list of settings; 0 if it has none
};

constexpr std::string_view WordOf(const CstateRow& row) { return row.name; }

constexpr auto kCstates = std::to_array<CstateRow>({
    {"C0", CSTATE_MASK_C0, MWAIT_HINT_NONE, 0},
    {"C1", CSTATE_MASK_C1, MWAIT_HINT_C1, 1},
    {"C3", CSTATE_MASK_C3, MWAIT_HINT_C3, 3},
    {"C6", CSTATE_MASK_C6, MWAIT_HINT_C6, 6},
    {"C6r", CSTATE_MASK_C6, MWAIT_HINT_C6, 0},
    {"C7", CSTATE_MASK_C7, MWAIT_HINT_C7, 7},
    {"C7s", CSTATE_MASK_C7, MWAIT_HINT_C7, 0},
    {"C8", CSTATE_MASK_C8, MWAIT_HINT_C8, 8},
    {"C9", CSTATE_MASK_C9, MWAIT_HINT_C9, 9},
    {"C10", CSTATE_MASK_C10, MWAIT_HINT_C10, 10},
});

constexpr CstateRow kNoCstate = {{}, CSTATE_MASK_NONE, MWAIT_HINT_NONE, 0};

constexpr std::size_t kSettings = 11;  // one entry a number, up to C10

static_assert(std::ranges::all_of(kCstates, [](const CstateRow& row) {
  return row.number >= 0 && static_cast<std::size_t>(row.number) < kSettings;
}));
static_assert(NoTwo(kCstates, [](const CstateRow& upper, const CstateRow& lower) {
  return lower.number != 0 && lower.number == upper.number;
}));

// The states with an entry of their own.
constexpr auto kNumberedStates = [] {
  constexpr auto kCount = std::ranges::count_if(kCstates, &CstateRow::number);
  std::array<std::string_view, kCount> names;
  auto out = names.begin();
  for (const CstateRow& row : kCstates) {
    if (row.number != 0) *out++ = row.name;
  }
  return names;
}();

const CstateRow& FindCstate(std::string_view name) {
  for (const CstateRow& row : kCstates) {
    if (row.name == name) return row;
  }
  return kNoCstate;
}

// Returns 0 for a state without an entry of its own and for an unknown name.
int FindNumber(std::string_view name) { return FindCstate(name).number; }

std::vector<CSTATE_MASK> ReadExeCstates(std::string_view list, FaultNote& note) {
  std::vector<CSTATE_MASK> masks;
  for (std::string_view item; TakeItem(list, ';', item);) {
    const CSTATE_MASK mask = FindCstate(item).mask;
    if (mask == CSTATE_MASK_NONE) {
      note.At(item, "unknown C-state", kOneOf<kCstates>);
      return {};
    }
    masks.push_back(mask);
  }
  return masks;
}

// Deliberately ORs the numbers of the states and not their bits: the limit registers take the
// number of a single state.
int ReadLimitCstates(std::string_view list, FaultNote& note) {
  int limit = 0;
  for (std::string_view item; TakeItem(list, ',', item);) {
    const int number = FindNumber(item);
    if (number == 0) note.At(item, "unknown C-state", kOneOf<kNumberedStates>);
    limit |= number;
  }
  return limit;
}

std::optional<std::uint32_t> ReadConditionBits(std::string_view text, FaultNote& note) {
  if (text.empty()) return 0;
  const std::uint64_t number = ParseUnsigned(text).value_or(kNoNumber32);
  const auto word = static_cast<std::uint32_t>(number);
  if (word == kNoNumber32) {
    note.At(text, "not a number", "a 32-bit number such as 0x00000F00");
    return std::nullopt;
  }
  if (number != word) {
    note.At(text, "number too large", "a 32-bit number such as 0x00000F00",
            FaultKind::kLargeNumber);
  }
  return word;
}

struct SettingItem {
  std::optional<std::string_view> name;  // without one, the value applies to every state
  std::string_view value;
};

SettingItem SplitSetting(std::string_view item) {
  const std::size_t colon = item.find(':');
  if (colon == std::string_view::npos) return {std::nullopt, TrimBlanks(item)};
  return {TrimBlanks(item.substr(0, colon)), TrimBlanks(item.substr(colon + 1))};
}

// Calls `read` with the value of each item. If that returns true, calls `store` with the number of
// each state that the value applies to.
template <class Read, class Store>
void ReadSettings(std::string_view text, FaultNote& note, Read read, Store store) {
  for (std::string_view item; TakeFilledItem(text, ';', item);) {
    const SettingItem setting = SplitSetting(item);
    if (setting.name && FindNumber(*setting.name) == 0) {
      note.At(*setting.name, "unknown C-state", kOneOf<kNumberedStates>);
    } else if (read(setting.value)) {
      for (const CstateRow& row : kCstates) {
        const bool applies = !setting.name || row.name == *setting.name;
        if (row.number != 0 && applies) store(static_cast<std::size_t>(row.number));
      }
    }
  }
}

void ReadNumbers(std::string_view text, std::vector<int>* values, FaultNote& note) {
  int value = 0;
  const auto read = [&](std::string_view number) {
    const std::uint64_t parsed = ParseUnsigned(number).value_or(kNoNumber64);
    if (parsed > std::numeric_limits<int>::max()) {
      note.At(number, "not a number", "a number from 0 to 2147483647");
      return false;
    }
    value = static_cast<int>(parsed);
    return true;
  };
  ReadSettings(text, note, read, [&](std::size_t number) {
    if (values != nullptr) (*values)[number] = value;
  });
}

void ReadLists(std::string_view text, std::vector<std::vector<int>>* lists, NumberBase base,
               FaultNote& note) {
  std::string_view list;
  std::vector<int> numbers;
  std::uint64_t size = 0;
  std::uint64_t total = 0;  // of all lists, including those that a later one replaces
  const auto count = [&] {
    total += size;
    if (total <= kMaxRangeValues) return;
    if (lists != nullptr) throw std::length_error("more than 16777216 values in the lists");
    note.At(list, "too many numbers", "at most 16777216 in all lists", FaultKind::kLargeNumber);
  };
  const auto read = [&](std::string_view value) {
    list = value;
    if (!list.starts_with('[') || !list.ends_with(']')) {
      note.At(list, "not a list", "numbers in brackets, such as [0,2-4] or []");
      return false;
    }
    FaultNote list_note(list);
    numbers.clear();
    size = ReadNumberList(list, lists != nullptr ? &numbers : nullptr, list_note, base);
    if (!list_note.First()) return true;
    note.Within(list, *list_note.First());
    count();  // discarded numbers take time as well
    return false;
  };
  ReadSettings(text, note, read, [&](std::size_t number) {
    count();
    if (lists != nullptr) (*lists)[number] = numbers;
  });
}

}  // namespace

constinit const Expectation kCstateWords = kOneOf<kCstates>;

std::optional<Fault> CheckExeCstates(std::string_view text) {
  FaultNote note(text);
  ReadExeCstates(text, note);
  return note.First();
}

std::optional<Fault> CheckLimitCstates(std::string_view text) {
  FaultNote note(text);
  ReadLimitCstates(text, note);
  return note.First();
}

std::optional<Fault> CheckPerStateConditions(std::string_view text) {
  FaultNote note(text);
  ReadConditionBits(text, note);
  return note.First();
}

std::optional<Fault> CheckPerCStateNumbers(std::string_view text) {
  FaultNote note(text);
  ReadNumbers(text, nullptr, note);
  return note.First();
}

std::optional<Fault> CheckPerCStateLists(std::string_view text) {
  FaultNote note(text);
  ReadLists(text, nullptr, NumberBase::kDecimal, note);
  return note.First();
}

std::optional<Fault> DoubtPerCStateItems(std::string_view text) {
  FaultNote note(text);
  std::vector<std::string_view> items;
  std::array<const char*, kCstates.size()> winners{};  // the item that counts, by the state's row
  std::string_view rest = text;
  for (std::string_view item; TakeFilledItem(rest, ';', item);) {
    items.push_back(item);
    const auto name = SplitSetting(item).name;
    for (std::size_t i = 0; i < kCstates.size(); ++i) {
      const bool applies = !name || kCstates[i].name == *name;
      if (kCstates[i].number != 0 && applies) winners[i] = item.data();
    }
  }
  for (const std::string_view item : items) {
    if (std::ranges::find(winners, item.data()) != winners.end()) continue;
    note.At(item, "replaced by a later item", "one item for each state", FaultKind::kReplacedItem);
  }
  return note.First();
}

}  // namespace vexor

using namespace vexor;

CSTATE_MASK ParseCstate(std::string_view name) { return FindCstate(name).mask; }

MWAIT_HINT ParseCstateToHint(std::string_view name) { return FindCstate(name).hint; }

MWAIT_HINT ParseCstateToHint(CX_STATES bit) {
  for (const CstateRow& row : kCstates) {
    if (row.mask == bit) return row.hint;
  }
  return MWAIT_HINT_NONE;
}

bool ParsePerCtateTolerance(std::vector<int>& tolerances, MWAIT_HINT hint, int value) {
  tolerances.resize(kSettings);
  for (const CstateRow& row : kCstates) {
    if (row.number == 0 || row.hint != hint) continue;
    tolerances[static_cast<std::size_t>(row.number)] = value;
    return true;
  }
  return false;
}

bool ParsePerStateConditions(std::string_view word, std::vector<CSTATE_PER_STATE_CFG>& slots,
                             bool& flag_a, bool& flag_b, bool& flag_c, bool& flag_d) {
  constexpr std::size_t kSlots = 8;
  constexpr std::size_t kFirstUsedSlot = 2;
  slots.assign(kSlots, {});
  FaultNote unused(word);
  const std::optional<std::uint32_t> bits = ReadConditionBits(word, unused);
  if (!bits) return false;
  const auto field = [&](std::size_t at, std::uint32_t mask) {
    return static_cast<std::uint8_t>((*bits >> at) & mask);
  };
  flag_d = field(0, 1) != 0;
  if (field(3, 1) != 0) flag_a = true;
  for (std::size_t slot = kFirstUsedSlot; slot < kSlots; ++slot) {
    const std::size_t own = 4 * slot;  // slot 2 has bits 8 to 11
    slots[slot] = {
        .cond0 = field(own, 1),
        .cond1 = field(own + 1, 1),
        .cond2 = flag_c ? std::uint8_t{1} : field(own + 2, 1),
        .cond3 = flag_b ? std::uint8_t{1} : field(own + 3, 1),
        .noConditions = static_cast<std::uint8_t>(*bits == 0 ? 1 : 0),
        .globalBit1 = field(1, 1),
        .globalBit2 = field(2, 1),
        .field2BitA = field(4, 3),
        .field2BitB = field(6, 3),
    };
  }
  return true;
}

int ParseLimitCstates(std::string_view list) {
  FaultNote unused(list);
  return ReadLimitCstates(list, unused);
}

std::vector<CSTATE_MASK> ParseExeCstates(std::string_view list) {
  FaultNote unused(list);
  return ReadExeCstates(list, unused);
}

bool ParsePerCStateSetting(std::string_view text, std::vector<int>& values) {
  values.resize(kSettings);
  FaultNote note(text);
  ReadNumbers(text, &values, note);
  return !note.First();
}

bool ParsePerCStateSetting(std::string_view text, std::vector<std::vector<int>>& lists,
                           bool hexadecimal) {
  lists.resize(kSettings);
  FaultNote note(text);
  ReadLists(text, &lists, hexadecimal ? NumberBase::kHexadecimal : NumberBase::kDecimal, note);
  return !note.First();
}

int ParseNum(std::string_view hex_text) {
  if (hex_text.empty()) return -1;
  std::string_view digits = hex_text.substr(2, 8);
  const bool is_negative = TakeSign(digits);
  // A second "0x" is a prefix only before a digit; otherwise its zero is the number.
  if (HasHexPrefix(digits) && digits.size() > 2 && IsHexDigit(digits[2])) digits.remove_prefix(2);
  std::uint32_t number = 0;
  const auto [stop, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  if (error != std::errc{}) throw std::invalid_argument("invalid stoi argument");
  // A sign leaves room for only seven digits, so no negative number is out of range.
  if (!std::in_range<int>(number)) throw std::out_of_range("stoi argument out of range");
  return is_negative ? -static_cast<int>(number) : static_cast<int>(number);
}
