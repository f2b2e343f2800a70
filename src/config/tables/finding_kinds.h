// The kinds of findings. Each has a code that users write into files and scripts, so a code keeps
// its meaning for ever: new kinds are added at the end, and the row of a kind that is no longer
// reported stays.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "util/table_checks.h"
#include "vexor/config/check.h"

namespace vexor {

// In the order of kFindingKinds.
enum class FindingKind : std::uint8_t {
  // The file.
  kUnreadableFile,
  kLargeFile,
  kForeignFile,
  kMalformedXml,
  kXmlLimit,
  kUnreadRest,
  kDroppedXml,
  kUnescaped,
  kUnknownEntity,
  kForbiddenCharacter,
  kEncoding,
  kLooseXml,
  // The document.
  kNoRoot,
  kWrongRoot,
  kBesideRoot,
  kNoVersion,
  kIncompatibleVersion,
  kOtherVersion,
  // Elements.
  kUnknownElement,
  kMisplacedElement,
  kRepeatedElement,
  kOlderName,
  kIdleOlderName,
  kUnreadOption,
  kUnknownAttribute,
  kStrayText,
  kElementInOption,
  kSplitText,
  // Argument lists.
  kNoArgument,
  kNamelessArgument,
  kUnknownArgument,
  kValuelessArgument,
  // Tests.
  kDefaultsOnly,
  kMissingOptions,
  kMissingTimes,
  // Trace entries.
  kTraceVersion,
  kMalformedTrace,
  kOlderTrace,
  kUnknownTraceTest,
  // Settings under "SysConfiguration".
  kMalformedSetting,
  kUnknownSocket,
  kUnknownSetting,
  kSettingOfOtherList,
  kOlderSetting,
  kUnknownSettingValue,
  // Texts of options.
  kInvalidText,
  kUnknownWord,
  kLargeNumber,
  kReversedRange,
  kSurplusText,
  kWrongSeparator,
  kReadsAsFalse,
  kFalseForm,
  kListAlone,
  kUnknownKnob,
  // Comments that allow findings.
  kWrongAllowance,
  kIdleAllowance,
  // Texts that are read, but mean little.
  kNothing,
  kRepeatedItem,
  kReplacedItem,
  kOneOfSeveral,
};

struct FindingRow {
  FindingKind kind;
  std::string_view code;
  std::string_view title;  // a few words, for lists
  std::string_view about;  // what the reader does, and what to do about it
  Severity severity = Severity::kError;
  Mend mend = Mend::kNone;
  bool ends_reading = false;  // the reader rejects the file here, so that it cannot be allowed
};

// clang-format off
inline constexpr auto kFindingKinds = std::to_array<FindingRow>({
    {.kind = FindingKind::kUnreadableFile, .code = "VX001", .title = "file cannot be read",
     .about = "The file does not exist, is a folder, or the system refuses access to it.",
     .ends_reading = true},
    {.kind = FindingKind::kLargeFile, .code = "VX002", .title = "file larger than the limit",
     .about = "The file is larger than the limit of the check, so it was not checked. Raise the "
              "limit if it is a configuration.",
     .ends_reading = true},
    {.kind = FindingKind::kForeignFile, .code = "VX003", .title = "not a configuration file",
     .about = "The file is empty or of another kind, such as UTF-16 text, JSON or an archive. The "
              "reader rejects it. Save it as XML in UTF-8.",
     .ends_reading = true},
    {.kind = FindingKind::kMalformedXml, .code = "VX004", .title = "not well-formed XML",
     .about = "The structure of the XML is broken at this place. The reader rejects the whole "
              "file.",
     .ends_reading = true},
    {.kind = FindingKind::kXmlLimit, .code = "VX005", .title = "XML beyond a limit",
     .about = "The file has more attributes in one element, or more unterminated character "
              "references, than the reader accepts. It rejects the whole file.",
     .ends_reading = true},
    {.kind = FindingKind::kUnreadRest, .code = "VX006", .title = "rest of the file not read",
     .about = "A closing tag without an opening tag, or a zero byte, ends the file for the reader. "
              "Everything behind it is ignored.",
     .ends_reading = true},
    {.kind = FindingKind::kDroppedXml, .code = "VX007", .title = "XML that is dropped",
     .about = "The reader drops this piece without an error: a character reference that has no "
              "character, or an attribute in a closing tag."},
    {.kind = FindingKind::kUnescaped, .code = "VX008", .title = "unescaped character",
     .about = "A bare &, a < in an attribute, or ]]> in a text. It is read as written, but other "
              "XML programs refuse the file. Escape the character.",
     .severity = Severity::kWarning, .mend = Mend::kXml},
    {.kind = FindingKind::kUnknownEntity, .code = "VX009", .title = "unknown entity",
     .about = "Only &lt;, &gt;, &amp;, &quot; and &apos; are replaced. Any other entity is read as "
              "its own text, and other XML programs refuse the file.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kForbiddenCharacter, .code = "VX010",
     .title = "character that XML forbids",
     .about = "The character, or a reference to it, is read, but other XML programs refuse the "
              "file. Remove it.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kEncoding, .code = "VX011", .title = "wrong encoding",
     .about = "The file has bytes that are not in its declared encoding, or declares one that is "
              "not supported. The bytes are read as they are. Save the file as UTF-8.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kLooseXml, .code = "VX012", .title = "XML that other programs refuse",
     .about = "The reader accepts this markup, but a strict XML parser does not: for example -- in "
              "a comment, or an attribute without a blank in front of it.",
     .severity = Severity::kWarning},

    {.kind = FindingKind::kNoRoot, .code = "VX013", .title = "no root element",
     .about = "The file holds no element. The root element is VEXOR."},
    {.kind = FindingKind::kWrongRoot, .code = "VX014", .title = "wrong root element",
     .about = "Only a root element with the name VEXOR is read, in exactly these letters. Nothing "
              "of this file is read.",
     .mend = Mend::kName},
    {.kind = FindingKind::kBesideRoot, .code = "VX015", .title = "element beside the root",
     .about = "A file has one root element, VEXOR. Elements beside it are not read.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kNoVersion, .code = "VX016", .title = "no version",
     .about = "The file has no element Version below the root. Programs that verify the version "
              "refuse it."},
    {.kind = FindingKind::kIncompatibleVersion, .code = "VX017", .title = "incompatible version",
     .about = "Programs that verify the version refuse the file. Check whether the file is meant "
              "for this version of the tests."},
    {.kind = FindingKind::kOtherVersion, .code = "VX018", .title = "another version",
     .about = "The file was written for an older or newer, but compatible version. It is read, with "
              "its older names and forms.",
     .severity = Severity::kWarning, .mend = Mend::kText},

    {.kind = FindingKind::kUnknownElement, .code = "VX019", .title = "unknown element",
     .about = "No element of this name may stand here, so it is not read, nor is anything in it. "
              "Names are compared in exactly their letters.",
     .mend = Mend::kName},
    {.kind = FindingKind::kMisplacedElement, .code = "VX020", .title = "misplaced element",
     .about = "The element is known, but is not read here. Move it to where it belongs.",
     .mend = Mend::kMove},
    {.kind = FindingKind::kRepeatedElement, .code = "VX021", .title = "repeated element",
     .about = "The first element of a name counts, and this one is not read. Keep only the one that "
              "is meant."},
    {.kind = FindingKind::kOlderName, .code = "VX022", .title = "older name",
     .about = "The element has a name of an older version. It is read under its current name.",
     .severity = Severity::kWarning, .mend = Mend::kName},
    {.kind = FindingKind::kIdleOlderName, .code = "VX023", .title = "older name without effect",
     .about = "The file also has the element with the current name, and that one counts. Remove the "
              "older one.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kUnreadOption, .code = "VX024", .title = "option that is never read",
     .about = "The library writes this element, but never reads it. A text in it has no effect.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kUnknownAttribute, .code = "VX025", .title = "attribute that is not read",
     .about = "Elements have no attributes, except name and val in argument lists. The attribute "
              "has no effect.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kStrayText, .code = "VX026", .title = "stray text",
     .about = "Text where only elements are read: between elements, outside the root, or within an "
              "argument. It is not read."},
    {.kind = FindingKind::kElementInOption, .code = "VX027", .title = "element in an option",
     .about = "The option takes a text. An element within it is not read."},
    {.kind = FindingKind::kSplitText, .code = "VX028", .title = "divided text",
     .about = "Only the first piece of a text is read. What follows a comment, an element or a CDATA "
              "section is not. Write the text in one piece, and the comment above the element."},

    {.kind = FindingKind::kNoArgument, .code = "VX029", .title = "not an argument",
     .about = "In this element, options are arg elements with the attributes name and val. Other "
              "elements are not read."},
    {.kind = FindingKind::kNamelessArgument, .code = "VX030", .title = "argument without a name",
     .about = "The attribute name says which option an arg element sets. Without it, the argument "
              "is not read."},
    {.kind = FindingKind::kUnknownArgument, .code = "VX031", .title = "unknown argument",
     .about = "The test has no option of this name, so the argument is not read. Names are compared "
              "in exactly their letters.",
     .mend = Mend::kName},
    {.kind = FindingKind::kValuelessArgument, .code = "VX032", .title = "argument without a value",
     .about = "The value of an argument is the attribute val; randVal is never read. Without val, "
              "the option is empty.",
     .severity = Severity::kWarning},

    {.kind = FindingKind::kDefaultsOnly, .code = "VX033", .title = "test without options",
     .about = "The test is switched on, but the file has no section for it. It runs with its default "
              "options.",
     .severity = Severity::kNote},
    {.kind = FindingKind::kMissingOptions, .code = "VX034", .title = "absent options",
     .about = "The section does not have these options. They are empty, because defaults apply only "
              "if the whole section is absent.",
     .severity = Severity::kNote},
    {.kind = FindingKind::kMissingTimes, .code = "VX035", .title = "test without times",
     .about = "The test is switched on, but these times are absent or empty, so it goes through its "
              "states without pause. Set the times, or switch the test off.",
     .severity = Severity::kWarning},

    {.kind = FindingKind::kTraceVersion, .code = "VX036", .title = "version without four pieces",
     .about = "The version decides in which form trace entries are read. With this one, reading the "
              "file fails."},
    {.kind = FindingKind::kMalformedTrace, .code = "VX037", .title = "malformed trace entry",
     .about = "A trace entry is test_target_code. With this one, reading the file fails."},
    {.kind = FindingKind::kOlderTrace, .code = "VX038", .title = "older trace entry",
     .about = "The entry has a form of an older version. It is read in its current form.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kUnknownTraceTest, .code = "VX039",
     .title = "trace entry of an unknown test",
     .about = "The entry does not begin with the name of a test, so no test uses it.",
     .severity = Severity::kWarning, .mend = Mend::kText},

    {.kind = FindingKind::kMalformedSetting, .code = "VX040", .title = "malformed setting",
     .about = "An item of the list has three parts: Socket; Name; Value. The text is kept as it is, "
              "and the test programs may ignore it.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kUnknownSocket, .code = "VX041", .title = "unknown socket",
     .about = "The socket of a setting is a number or All.", .severity = Severity::kWarning},
    {.kind = FindingKind::kUnknownSetting, .code = "VX042", .title = "unknown setting",
     .about = "No setting of this name is known. A warning if a known name is similar, otherwise a "
              "note, because it may be one of your own.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kSettingOfOtherList, .code = "VX043", .title = "setting of another list",
     .about = "A setting of this name belongs in another list. Move it there.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kOlderSetting, .code = "VX044", .title = "older name of a setting",
     .about = "The setting has a name of an older version. Use its current name.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kUnknownSettingValue, .code = "VX045",
     .title = "unknown value of a setting",
     .about = "The setting is not known to have this value. The text is kept as it is, and the test "
              "programs may ignore it.",
     .severity = Severity::kWarning, .mend = Mend::kText},

    {.kind = FindingKind::kInvalidText, .code = "VX046", .title = "invalid text",
     .about = "The text does not follow the syntax of its option, so it is not read, or not as it is "
              "written. vexorcfg explain shows the syntax of an option.",
     .mend = Mend::kText},
    {.kind = FindingKind::kUnknownWord, .code = "VX047", .title = "unknown word",
     .about = "The option takes one of a list of words, most of them in exactly their letters. Any "
              "other word is not read.",
     .mend = Mend::kText},
    {.kind = FindingKind::kLargeNumber, .code = "VX048", .title = "number out of range",
     .about = "The number is larger than the option can take, or there are too many numbers. The "
              "text is not read as it is written.",
     .mend = Mend::kText},
    {.kind = FindingKind::kReversedRange, .code = "VX049", .title = "reversed range",
     .about = "The first value of a range is the lower one. A reversed range is not read as it is "
              "written.",
     .mend = Mend::kText},
    {.kind = FindingKind::kSurplusText, .code = "VX050", .title = "surplus text",
     .about = "The text is complete before its end, and the rest is not read.",
     .mend = Mend::kText},
    {.kind = FindingKind::kWrongSeparator, .code = "VX051", .title = "wrong separator",
     .about = "The items of the list are joined by the wrong character, so they read as one item.",
     .mend = Mend::kText},
    {.kind = FindingKind::kReadsAsFalse, .code = "VX052", .title = "reads as false",
     .about = "A switch is on only if its text is exactly true. Any other text, such as True or 1, "
              "switches it off.",
     .mend = Mend::kText},
    {.kind = FindingKind::kFalseForm, .code = "VX053", .title = "another way to write false",
     .about = "Every text except true switches off, so this works. Write false.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kListAlone, .code = "VX054", .title = "list without Specific:",
     .about = "Numbers alone select all. Write Specific: in front of them to select only these.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kUnknownKnob, .code = "VX055", .title = "unknown knob",
     .about = "The test is not known to have this knob. A warning if a known one is similar, "
              "otherwise a note, because it may be one of your own.",
     .severity = Severity::kNote, .mend = Mend::kText},

    {.kind = FindingKind::kWrongAllowance, .code = "VX056", .title = "wrong allow comment",
     .about = "A comment for this tool is <!-- vexorcfg: allow VX019 -->, with one or more codes "
              "separated by blanks or commas. What stands here is not followed.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kIdleAllowance, .code = "VX057",
     .title = "allow comment without effect",
     .about = "There is no finding of this code in the element that follows the comment, so the code "
              "can be removed from it.",
     .severity = Severity::kNote},

    {.kind = FindingKind::kNothing, .code = "VX058", .title = "text that means nothing",
     .about = "The text is read, but amounts to nothing: zero cycles, or a scope in which nothing "
              "takes part. To leave a test out, switch it off in AutoRunCfg.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kRepeatedItem, .code = "VX059", .title = "item that stands twice",
     .about = "An item stands twice in a list in which the second has no effect. Another one was "
              "probably meant.",
     .severity = Severity::kWarning, .mend = Mend::kText},
    {.kind = FindingKind::kReplacedItem, .code = "VX060", .title = "item without effect",
     .about = "Later items give all states of this item another value, so it has no effect. An item "
              "without a state is for all states: write it first.",
     .severity = Severity::kWarning},
    {.kind = FindingKind::kOneOfSeveral, .code = "VX061", .title = "one of several",
     .about = "The option takes one state. Of several, only one is read: vexorcfg explain ice shows "
              "which.",
     .severity = Severity::kWarning},
});
// clang-format on

// Returns whether the codes are VX001, VX002, ...
constexpr bool AreNumbered() {
  std::size_t number = 0;
  for (const FindingRow& row : kFindingKinds) {
    ++number;
    const auto digit = [number](std::size_t unit) {
      return static_cast<char>('0' + number / unit % 10);
    };
    const char code[] = {'V', 'X', digit(100), digit(10), digit(1)};
    if (row.code != std::string_view(code, sizeof code)) return false;
  }
  return true;
}

static_assert(AreInOrder(kFindingKinds, &FindingRow::kind));
static_assert(static_cast<std::size_t>(FindingKind::kOneOfSeveral) + 1 == kFindingKinds.size());
static_assert(AreNumbered());

constexpr const FindingRow& GetFindingRow(FindingKind kind) {
  return kFindingKinds[static_cast<std::size_t>(kind)];
}

// Returns null for an unknown code.
constexpr const FindingRow* FindFindingRow(std::string_view code) {
  for (const FindingRow& row : kFindingKinds) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

}  // namespace vexor
