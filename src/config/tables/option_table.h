// The tables that say all about the options of a configuration file. One row is one option; reset,
// reader, writer, checker, schema and reference are loops over the same rows.
//
// To add an option to a test:
//   1. a member in include/vexor/config/pm_tests.h
//   2. a row in the test's table, src/config/tables/*_tests.h, where it is to stand in a written
//   file
//   3. scripts/renew.sh, which writes schema, reference and default configuration anew
// A member without a row fails a test (OptionTables); a row without a sentence does not compile.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
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
enum class Overwrite : std::uint8_t {
  kAlways,   // also by the fallback when the element is missing
  kIfGiven,  // only by a text that is not empty: a second name that overrides
  kIfEmpty,  // only while the member is empty: an older name
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

// Code that runs after an option's text was set, for values that depend on other options. The
// record is that of the option's row: it serves every record derived from it, and no other.
template <class Record>
struct Adjustment {
  void (*run)(ConfigRecord&) = nullptr;

  template <class Other>
  requires std::derived_from<Other, Record> || std::same_as<Other, ConfigRecord>
  [[nodiscard]] constexpr operator Adjustment<Other>() const { return {run}; }
};

template <class Function>
struct ArgumentOf;
template <class Record>
struct ArgumentOf<void (*)(Record&)> {
  using Type = Record;
};

// The adjustment that a function of one record makes.
template <auto kFunction, class Record = typename ArgumentOf<decltype(kFunction)>::Type>
inline constexpr Adjustment<Record> kAdjustment = {
    [](ConfigRecord& record) { kFunction(static_cast<Record&>(record)); }};

// One option of a record. Set exactly one of text, flag and list; rows of named values set none.
// The tables spell rows by their own record, so that a member of another record does not compile;
// the finished tables hold rows of ConfigRecord.
template <class Record>
struct OptionOf {
  std::string_view name;
  std::string Record::*text = nullptr;
  bool Record::*flag = nullptr;
  std::vector<std::string> Record::*list = nullptr;
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
  Overwrite overwrite = Overwrite::kAlways;
  Adjustment<Record> adjust = {};
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

  // A row of a base record serves every derived record, and each row serves the finished tables.
  template <class Other>
  requires std::derived_from<Other, Record> || std::same_as<Other, ConfigRecord>
  [[nodiscard]] constexpr operator OptionOf<Other>() const {
    return {name,
            static_cast<std::string Other::*>(text),
            static_cast<bool Other::*>(flag),
            static_cast<std::vector<std::string> Other::*>(list),
            item,
            syntax,
            reset,
            fallback,
            words,
            about,
            hint,
            flow,
            overwrite,
            adjust,
            range_attribute,
            keyword};
  }

  // The same option as another test has it.
  [[nodiscard]] constexpr OptionOf ResetTo(std::string_view value) const {
    return With(&OptionOf::reset, value);
  }
  [[nodiscard]] constexpr OptionOf FallingBackTo(std::string_view value) const {
    return With(&OptionOf::fallback, value);
  }
  [[nodiscard]] constexpr OptionOf In(Syntax value) const { return With(&OptionOf::syntax, value); }
  [[nodiscard]] constexpr OptionOf Flowing(Flow value) const {
    return With(&OptionOf::flow, value);
  }
  [[nodiscard]] constexpr OptionOf ReadOnly() const { return Flowing(Flow::kReadOnly); }
  [[nodiscard]] constexpr OptionOf AdjustedBy(Adjustment<Record> value) const {
    return With(&OptionOf::adjust, value);
  }
  [[nodiscard]] constexpr OptionOf HintedBy(Hint value) const {
    return With(&OptionOf::hint, value);
  }
  [[nodiscard]] constexpr OptionOf OfWords(std::string_view value) const {
    return With(&OptionOf::words, value);
  }
  [[nodiscard]] constexpr OptionOf Meaning(std::string_view value) const {
    return With(&OptionOf::about, value);
  }
  // A name of a test's own; the command line keeps the common one.
  [[nodiscard]] constexpr OptionOf Named(std::string_view value) const {
    return With(&OptionOf::name, value).With(&OptionOf::keyword, name);
  }

 private:
  template <class Value>
  [[nodiscard]] constexpr OptionOf With(Value OptionOf::*field, Value value) const {
    OptionOf copy = *this;
    copy.*field = value;
    return copy;
  }
};

using OptionRow = OptionOf<ConfigRecord>;

// More rows than any element has.
inline constexpr std::size_t kMaxOptions = 48;

// Whether the grammar is nothing but the words of the option's row.
constexpr bool HasOwnWords(Syntax syntax) {
  return syntax == Syntax::kWord || syntax == Syntax::kWordList;
}

// A row has a name, one home, and one sentence about it; words stand where its grammar needs them.
// Flags are those of workloads, which nobody writes.
consteval bool IsWellFormed(const OptionRow& row) {
  const int homes =
      (row.text != nullptr ? 1 : 0) + (row.flag != nullptr ? 1 : 0) + (row.list != nullptr ? 1 : 0);
  const bool has_right_words =
      row.syntax == Syntax::kKnobs || HasOwnWords(row.syntax) == !row.words.empty();
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
consteval auto Concatenate(const OptionTable<Record, kCounts>&... tables) {
  OptionTable<Record, (kCounts + ... + 0)> all;
  auto out = all.begin();
  ((out = std::copy(tables.begin(), tables.end(), out)), ...);
  return all;
}

// The finished table: rows of ConfigRecord, and checked.
template <class Record, std::size_t kCount>
consteval std::array<OptionRow, kCount> Finish(const OptionTable<Record, kCount>& rows) {
  std::array<OptionRow, kCount> finished;
  std::ranges::copy(rows, finished.begin());
  if (!AreWellFormed(finished)) throw "a row is incomplete or its name stands twice";
  return finished;
}

// An element whose children are the options of one record, and where that record stands in the
// record of its section.
template <class Parent, class Record = ConfigRecord>
struct RecordRow {
  std::string_view group;  // element above it; empty: the section itself
  std::string_view name;
  std::string_view older;  // read where `name` is absent
  std::string_view about;  // one sentence
  std::span<const OptionRow> options;
  Record& (*record)(Parent&) = nullptr;
  const Record& (*const_record)(const Parent&) = nullptr;
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

// The two ways to a member record, for RecordRow.
template <auto kMember, class Record = ConfigRecord>
Record& RecordAt(typename MemberOf<decltype(kMember)>::Parent& parent) {
  return parent.*kMember;
}
template <auto kMember, class Record = ConfigRecord>
const Record& ConstRecordAt(const typename MemberOf<decltype(kMember)>::Parent& parent) {
  return parent.*kMember;
}

}  // namespace vexor
