// The tables that say all about the options of a configuration file. One row is one option; reset,
// reader, writer, checker, schema and reference are loops over the same rows.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/config_record.h"

namespace vexor {

// The grammar of an option's text; syntax_table.h says more of each.
enum class Syntax : std::uint8_t {
  kFreeText,
  kBoolean,
  kWord,
  kWordList,
  kCount,
  kMask,
  kNumbers,
  kAddress,
  kIpv4,
  kLogLevel,
  kTestMode,
  kDuration,
  kExeCycles,
  kTimeout,
  kScope,
  kPkgAffinity,
  kUnitAffinity,
  kThreadAffinity,
  kCstates,
  kPerStateCounts,
  kPerStateLists,
  kPerStateCondition,
  kIceState,
  kExeIceStates,
  kPstates,
  kRatios,
  kExitRatios,
  kSagvRatios,
  kLowHighRatios,
  kRatioBytes,
  kSleepStates,
  kS0ixState,
  kPowerScheme,
  kPowerSource,
  kWakeEvents,
  kPeciCommands,
  kPeciServices,
  kPeciParameters,
  kPeciData,
  kPeciRegisters,
  kPeciPci,
  kKnobs,
};

// Where an option passes: through the reader, the writer, both, or neither.
enum class Flow : std::uint8_t { kReadWrite, kReadOnly, kWriteOnly, kResetOnly };

// When a text that was read replaces the member's text.
enum class Take : std::uint8_t {
  kAlways,     // also by the fallback when the element is missing
  kWhenGiven,  // only by a text that is not empty: a second name that overrides
  kWhenEmpty,  // only while the member is empty: an older name
};

// The comments that the writer puts above an element.
struct Hint {
  enum class Kind : std::uint8_t {
    kNone,
    kOptions,  // "Valid options for tag NAME:TEXT"
    kSingle,   // "Valid single option for tag NAME:TEXT"
    kPlain,    // each text a comment of its own
    kRecord,   // as kOptions, with the record's KnobHint
  };
  Kind kind = Kind::kNone;
  std::array<std::string_view, 4> texts = {};
};

// An element that has no row of its own, and its hint.
struct HintedName {
  std::string_view name;
  Hint hint;
};

// Code that an option runs after its text was taken, for values that follow from other options.
using Settle = void (*)(ConfigRecord&);

// One option. Exactly one of text, flag and list is its home in the record; none of them is that of
// a named value, which stands among others.
struct OptionRow {
  std::string_view name;
  std::string ConfigRecord::*text = nullptr;
  bool ConfigRecord::*flag = nullptr;
  std::vector<std::string> ConfigRecord::*list = nullptr;
  std::string_view item = {};  // list: the entries' element in this one; empty: this one repeats
  Syntax syntax = Syntax::kFreeText;
  std::string_view reset = {};     // text after a reset
  std::string_view fallback = {};  // text when the element is missing
  // The known words, joined by ";": those that kWord and kWordList take, and those that kKnobs
  // knows besides the knobs of command lines.
  std::string_view words = {};
  std::string_view about = {};  // one sentence
  Hint hint = {};
  Flow flow = Flow::kReadWrite;
  Take take = Take::kAlways;
  Settle settle = nullptr;
  bool range_attribute = false;   // argument lists: a value with "-" is written as "randVal"
  std::string_view keyword = {};  // of a command line, where it is not the name

  [[nodiscard]] constexpr std::string_view Keyword() const {
    return keyword.empty() ? name : keyword;
  }
  [[nodiscard]] constexpr bool IsRead() const {
    return flow == Flow::kReadWrite || flow == Flow::kReadOnly;
  }
  [[nodiscard]] constexpr bool IsWritten() const {
    return flow == Flow::kReadWrite || flow == Flow::kWriteOnly;
  }
};

// A row as the tables spell it, typed by the record: a member of another record does not compile.
template <class Record>
struct OptionOf {
  std::string_view name;
  std::string Record::*text = nullptr;
  bool Record::*flag = nullptr;
  std::vector<std::string> Record::*list = nullptr;
  std::string_view item = {};
  Syntax syntax = Syntax::kFreeText;
  std::string_view reset = {};
  std::string_view fallback = {};
  std::string_view words = {};
  std::string_view about = {};
  Hint hint = {};
  Flow flow = Flow::kReadWrite;
  Take take = Take::kAlways;
  Settle settle = nullptr;
  bool range_attribute = false;
  std::string_view keyword = {};

  // The same option as another test has it.
  [[nodiscard]] constexpr OptionOf ResetTo(std::string_view value) const {
    OptionOf copy = *this;
    copy.reset = value;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf FallingBackTo(std::string_view value) const {
    OptionOf copy = *this;
    copy.fallback = value;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf In(Syntax grammar) const {
    OptionOf copy = *this;
    copy.syntax = grammar;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf Flowing(Flow value) const {
    OptionOf copy = *this;
    copy.flow = value;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf ReadOnly() const { return Flowing(Flow::kReadOnly); }
  [[nodiscard]] constexpr OptionOf SettledBy(Settle function) const {
    OptionOf copy = *this;
    copy.settle = function;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf HintedBy(Hint value) const {
    OptionOf copy = *this;
    copy.hint = value;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf OfWords(std::string_view value) const {
    OptionOf copy = *this;
    copy.words = value;
    return copy;
  }
  [[nodiscard]] constexpr OptionOf Meaning(std::string_view value) const {
    OptionOf copy = *this;
    copy.about = value;
    return copy;
  }
  // A name of a test's own; the command line keeps the common one.
  [[nodiscard]] constexpr OptionOf Named(std::string_view value) const {
    OptionOf copy = *this;
    copy.name = value;
    copy.keyword = name;
    return copy;
  }

  // The row of a base record serves every record derived from it.
  template <class Derived>
  [[nodiscard]] constexpr OptionOf<Derived> For() const {
    return {name,  text,  flag, list, item, syntax, reset,           fallback,
            words, about, hint, flow, take, settle, range_attribute, keyword};
  }
};

// More rows than any element has.
inline constexpr std::size_t kMaxOptions = 48;

consteval OptionRow EraseRecord(const auto& row) {
  return {.name = row.name,
          .text = static_cast<std::string ConfigRecord::*>(row.text),
          .flag = static_cast<bool ConfigRecord::*>(row.flag),
          .list = static_cast<std::vector<std::string> ConfigRecord::*>(row.list),
          .item = row.item,
          .syntax = row.syntax,
          .reset = row.reset,
          .fallback = row.fallback,
          .words = row.words,
          .about = row.about,
          .hint = row.hint,
          .flow = row.flow,
          .take = row.take,
          .settle = row.settle,
          .range_attribute = row.range_attribute,
          .keyword = row.keyword};
}

// Whether the grammar is nothing but the words of the option's row.
constexpr bool TakesOwnWords(Syntax syntax) {
  return syntax == Syntax::kWord || syntax == Syntax::kWordList;
}

// A row has a name, one home, and one sentence about it; words stand where its grammar needs them.
// Flags are those of workloads, which nobody writes.
consteval bool IsWellFormed(const OptionRow& row) {
  const int homes =
      (row.text != nullptr ? 1 : 0) + (row.flag != nullptr ? 1 : 0) + (row.list != nullptr ? 1 : 0);
  const bool has_right_words =
      row.syntax == Syntax::kKnobs || TakesOwnWords(row.syntax) == !row.words.empty();
  return !row.name.empty() && homes == 1 && row.about.ends_with('.') && has_right_words &&
         (row.item.empty() || row.list != nullptr) &&
         (row.flag == nullptr || row.flow == Flow::kReadOnly);
}

// Every row well formed, no name twice.
consteval bool AreWellFormed(std::span<const OptionRow> rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!IsWellFormed(rows[i])) return false;
    for (std::size_t j = 0; j < i; ++j) {
      if (rows[i].name == rows[j].name) return false;
    }
  }
  return rows.size() <= kMaxOptions;
}

template <class Record, std::size_t kCount>
using OptionTable = std::array<OptionOf<Record>, kCount>;

// Rows of `Record`, in the order in which they are written.
template <class Record, std::size_t kCount>
consteval OptionTable<Record, kCount> Options(const OptionOf<Record> (&rows)[kCount]) {
  return std::to_array(rows);
}

template <class Record, std::size_t... kCounts>
consteval auto Join(const OptionTable<Record, kCounts>&... tables) {
  OptionTable<Record, (kCounts + ... + 0)> all;
  auto out = all.begin();
  ((out = std::copy(tables.begin(), tables.end(), out)), ...);
  return all;
}

// The finished table, its rows freed of the record's type.
template <class Record, std::size_t kCount>
consteval std::array<OptionRow, kCount> Finish(const OptionTable<Record, kCount>& rows) {
  std::array<OptionRow, kCount> erased;
  for (std::size_t i = 0; i < kCount; ++i) erased[i] = EraseRecord(rows[i]);
  if (!AreWellFormed(erased)) throw "a row is incomplete or its name stands twice";
  return erased;
}

// An element whose children are options, and where its record stands in the parent record.
template <class Parent>
struct SectionRow {
  std::string_view group;  // element above it
  std::string_view name;
  std::string_view older;  // read where `name` is absent
  std::string_view about;  // one sentence
  std::span<const OptionRow> options;
  ConfigRecord& (*record)(Parent&) = nullptr;
  const ConfigRecord& (*look)(const Parent&) = nullptr;
};

// Returns the rows from the front of a table that stand under the same group element.
template <class Row>
std::span<const Row> FirstGroup(std::span<const Row> rows) {
  std::size_t count = 0;
  while (count < rows.size() && rows[count].group == rows.front().group) ++count;
  return rows.first(count);
}

template <class Member>
struct MemberOf;
template <class Object, class Value>
struct MemberOf<Value Object::*> {
  using Parent = Object;
  using Type = Value;
};

// The two ways to a member record, for SectionRow.
template <auto kMember>
ConfigRecord& RecordAt(typename MemberOf<decltype(kMember)>::Parent& parent) {
  return parent.*kMember;
}
template <auto kMember>
const ConfigRecord& LookAt(const typename MemberOf<decltype(kMember)>::Parent& parent) {
  return parent.*kMember;
}

}  // namespace vexor
