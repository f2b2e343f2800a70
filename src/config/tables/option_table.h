// The types of the option tables. One row describes one option of a configuration file; reset,
// reader, writer, checker, schema and reference are loops over the same rows.
//
// To add an option to a test:
//   1. Add a member in include/vexor/config/pm_tests.h.
//   2. Add a row to the test's table in src/config/tables/*_tests.h. The writer writes options in
//      the order of their rows.
//   3. Run scripts/renew.sh to regenerate schema, reference and default configuration.
// A member without a row fails a test (OptionTables); a row without a description does not compile.
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

// The grammar of an option's text. syntax_table.cpp has one row for each, in the same order.
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

// Whether an option is read, written, both, or neither: kResetOnly members only get a default.
enum class Flow : std::uint8_t { kReadWrite, kReadOnly, kWriteOnly, kResetOnly };

// When a text from the file replaces the member's text. Two rows may share a member; they are
// stored in row order, so the second row needs one of the conditional modes.
enum class Overwrite : std::uint8_t {
  kAlways,   // always; a missing element stores the fallback
  kIfGiven,  // only if the text is not empty: a second name that takes precedence
  kIfEmpty,  // only if the member is still empty: an older name
};

// The comments that the writer puts above an element. Their text is fixed, mistakes included:
// FindHintCorrection maps listed words that no parser accepts to valid ones.
struct Hint {
  enum class Kind : std::uint8_t {
    kNone,
    kOptions,  // "Valid options for tag NAME:TEXT"
    kSingle,   // "Valid single option for tag NAME:TEXT"
    kPlain,    // one comment for each text
    kRecord,   // as kOptions, with the text of the record's KnobHint
  };
  Kind kind = Kind::kNone;
  std::array<std::string_view, 4> texts = {};
};

// The hint of an element that has no row of its own.
struct HintedName {
  std::string_view name;
  Hint hint;
};

// Code that runs after an option's text was set, for values that depend on other options. `run`
// casts its argument to Record without a check. This is safe because an Adjustment<Record> only
// converts to rows of records derived from Record, and to ConfigRecord, the type of the finished
// tables.
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

// Wraps a function that takes its own record type, such as DeriveSwitchTime(_PM_TEST_NODE&).
template <auto kFunction, class Record = typename ArgumentOf<decltype(kFunction)>::Type>
inline constexpr Adjustment<Record> kAdjustment = {
    [](ConfigRecord& record) { kFunction(static_cast<Record&>(record)); }};

// One option of a record. Set exactly one of text, flag, list; rows of named values set none.
// Tables are written with the type of their own record, so that a member of another record does not
// compile. The finished tables hold OptionOf<ConfigRecord>, so that one loop serves all records.
template <class Record>
struct OptionOf {
  std::string_view name;
  std::string Record::*text = nullptr;
  bool Record::*flag = nullptr;
  std::vector<std::string> Record::*list = nullptr;
  std::string_view item = {};  // list: name of the entries' elements; empty: this element repeats
  Syntax syntax = Syntax::kFreeText;
  std::string_view reset = {};     // text after a reset
  std::string_view fallback = {};  // text when the element is missing
  // Words joined by ";": all valid ones for kWord and kWordList; for kKnobs, the test's own knobs,
  // which are valid in addition to those of command lines.
  std::string_view words = {};
  std::string_view about = {};  // one sentence
  Hint hint = {};
  Flow flow = Flow::kReadWrite;
  Overwrite overwrite = Overwrite::kAlways;
  Adjustment<Record> adjust = {};
  bool range_attribute = false;   // argument lists: a value with "-" is written as "randVal"
  std::string_view keyword = {};  // command-line keyword; empty if it is the name

  [[nodiscard]] constexpr std::string_view Keyword() const {
    return keyword.empty() ? name : keyword;
  }
  [[nodiscard]] constexpr bool IsRead() const {
    return flow == Flow::kReadWrite || flow == Flow::kReadOnly;
  }
  [[nodiscard]] constexpr bool IsWritten() const {
    return flow == Flow::kReadWrite || flow == Flow::kWriteOnly;
  }

  // Rows of a base record can stand in the tables of derived records, and all rows become rows of
  // ConfigRecord. That second cast goes from derived to base: dereferencing the pointer is only
  // valid on an object of the derived type, which is why rows are always passed along with their
  // record.
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

  // Variants of a shared row. Each returns a copy with one field changed.
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
  // Another element name; the command-line keyword stays the original name.
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

// At least as many as the longest table has rows; AreWellFormed enforces it. The reader keeps an
// array of this size on the stack.
inline constexpr std::size_t kMaxOptions = 48;

// Whether the option's row, and not the grammar, lists the valid words.
constexpr bool HasOwnWords(Syntax syntax) {
  return syntax == Syntax::kWord || syntax == Syntax::kWordList;
}

// Returns whether the row has a name, exactly one member, a description that is a sentence, and
// words if its grammar needs them. Flags must be read-only, because the writer cannot write them:
// only workloads have flags, and no file is written with workloads.
consteval bool IsWellFormed(const OptionRow& row) {
  const int homes =
      (row.text != nullptr ? 1 : 0) + (row.flag != nullptr ? 1 : 0) + (row.list != nullptr ? 1 : 0);
  const bool has_right_words =
      row.syntax == Syntax::kKnobs || HasOwnWords(row.syntax) == !row.words.empty();
  return !row.name.empty() && homes == 1 && row.about.ends_with('.') && has_right_words &&
         (row.item.empty() || row.list != nullptr) &&
         (row.flag == nullptr || row.flow == Flow::kReadOnly);
}

// Returns whether all rows are well-formed and their names unique.
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

// Makes a table of rows of `Record`, in the order of a written file.
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

// Checks a table at compile time and converts its rows to rows of ConfigRecord.
template <class Record, std::size_t kCount>
consteval std::array<OptionRow, kCount> Finish(const OptionTable<Record, kCount>& rows) {
  std::array<OptionRow, kCount> finished;
  std::ranges::copy(rows, finished.begin());
  if (!AreWellFormed(finished)) throw "a row is incomplete or its name is not unique";
  return finished;
}

// An element whose children are the options of one record, and the accessors of that record within
// the record of its section.
template <class Parent, class Record = ConfigRecord>
struct RecordRow {
  std::string_view group;  // name of the parent element; empty: directly in the section
  std::string_view name;
  std::string_view older;  // former name, read if `name` is absent
  std::string_view about;  // one sentence
  std::span<const OptionRow> options;
  Record& (*record)(Parent&) = nullptr;
  const Record& (*const_record)(const Parent&) = nullptr;
};

// Returns the leading rows that share one group element.
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

// Accessors of a member record, for RecordRow.
template <auto kMember, class Record = ConfigRecord>
Record& RecordAt(typename MemberOf<decltype(kMember)>::Parent& parent) {
  return parent.*kMember;
}
template <auto kMember, class Record = ConfigRecord>
const Record& ConstRecordAt(const typename MemberOf<decltype(kMember)>::Parent& parent) {
  return parent.*kMember;
}

}  // namespace vexor
