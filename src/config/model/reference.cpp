#include "vexor/config/reference.h"

#include <algorithm>
#include <memory>

#include "config/model/document_model.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/system_setup.h"
#include "config/texts/syntax_table.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;

constexpr std::string_view kIntroduction = R"(# The options of a configuration file

A configuration file is an XML file with the root element `VEXOR`. This reference describes all of
its elements, section by section.

- Elements may be in any order. If an element occurs more than once in the same place, the first one
  counts, unless the table says that the option repeats.
- White space around a text is ignored; element names are case-sensitive.
- An absent section keeps its defaults. An option that is absent from a present section reads as
  **empty**, not as its default, unless the table says otherwise.
- Put comments before an element or after its text: text after a comment is not read.

The tables give for each option the [syntax](#syntaxes) of its text, an example, and the default.
The last column shows whether the option is read from a file (`r`), written to one (`w`), or both.
)";

// Escapes a text for a table cell.
std::string Cell(std::string_view text) {
  std::string cell;
  for (const char c : text) cell.append(c == '|' ? "\\" : "").append(1, c);
  return cell;
}

// Formats a text as code.
std::string Code(std::string_view text) {
  return text.empty() ? std::string() : "`" + Cell(text) + "`";
}

std::string JoinCodes(std::span<const std::string_view> texts) {
  std::string joined;
  for (const std::string_view text : texts)
    joined.append(joined.empty() ? "" : ", ").append(Code(text));
  return joined;
}

// Returns a link to the section of that name; anchors are lower-case.
std::string LinkTo(std::string_view name) {
  std::string link = "[" + Code(name) + "](#";
  for (const char c : name) link += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return link + ")";
}

// Describes an option's text: its syntax, and its words or an example.
std::string ValueOf(const OptionRow& option) {
  const SyntaxRow& syntax = GetSyntax(option.syntax);
  const std::string name(syntax.name);
  std::string value = "[" + name + "](#syntax-" + name + ")";
  if (!option.words.empty()) return value + ": " + JoinCodes(GetWords(option));
  if (option.syntax != Syntax::kFreeText) value += ": " + Code(syntax.example);
  return value;
}

std::string AboutOf(const OptionRow& option) {
  std::string about(option.about);
  if (!option.item.empty()) about += " Each is in an element " + Code(option.item) + ".";
  if (option.list != nullptr && option.item.empty()) about += " Can be repeated.";
  if (!option.fallback.empty()) about += " If absent, it reads as " + Code(option.fallback) + ".";
  if (option.range_attribute) about += " A range is written as `randVal`, which is not read.";
  return about;
}

std::string_view FlowOf(const OptionRow& option) {
  if (option.IsRead() && option.IsWritten()) return "rw";
  return option.IsRead() ? "r" : "w";
}

bool HasOptions(const ElementModel& element) {
  return !element.children.empty() && element.children.front().content == Content::kOption;
}

// Returns the words of a syntax, unless its grammar lists them already.
std::string WordsOf(const SyntaxRow& syntax) {
  const bool lists_words = syntax.grammar.find("%w") != std::string_view::npos;
  return lists_words ? std::string() : JoinCodes(GetWords(syntax.syntax));
}

class ReferenceWriter {
 public:
  std::string Write(const ElementModel& root) &&;

 private:
  void WriteHeading(std::size_t depth, std::string_view name);
  void WriteParagraph(const std::string& text);
  void WriteRow(std::initializer_list<std::string_view> cells);
  void WriteHead(std::initializer_list<std::string_view> names);
  void WriteContents(const ElementModel& root);
  void WriteSection(const ElementModel& section, const ElementModel& parent, std::size_t depth);
  void WriteLeaves(const ElementModel& section);
  void WriteOptions(const ElementModel& section, std::string_view name);
  void WriteRegisters(const ElementModel& container);
  void WriteList(const SystemListRow& list);
  void WriteTraces();
  void WriteSyntaxes();

  // Tests may share one table of options, which is written only once.
  struct Described {
    const OptionRow* first;
    std::string_view name;
  };

  std::string out_;
  std::vector<Described> described_;
};

std::string ReferenceWriter::Write(const ElementModel& root) && {
  out_ = kIntroduction;
  WriteContents(root);
  WriteLeaves(root);
  for (const ElementModel& section : root.children) {
    if (section.HoldsElements()) WriteSection(section, root, 2);
  }
  WriteSyntaxes();
  return std::move(out_);
}

void ReferenceWriter::WriteHeading(std::size_t depth, std::string_view name) {
  out_.append("\n").append(depth, '#').append(" ").append(name).append("\n");
}

void ReferenceWriter::WriteParagraph(const std::string& text) {
  if (!text.empty()) out_.append("\n").append(text).append("\n");
}

void ReferenceWriter::WriteRow(std::initializer_list<std::string_view> cells) {
  for (const std::string_view cell : cells) {
    out_.append("|").append(cell.empty() ? "" : " ").append(cell).append(" ");
  }
  out_ += "|\n";
}

void ReferenceWriter::WriteHead(std::initializer_list<std::string_view> names) {
  out_ += '\n';
  WriteRow(names);
  for (std::size_t i = 0; i < names.size(); ++i) out_ += "|---";
  out_ += "|\n";
}

void ReferenceWriter::WriteContents(const ElementModel& root) {
  out_ += '\n';
  for (const ElementModel& section : root.children) {
    if (section.HoldsElements())
      out_ += "- " + LinkTo(section.name) + ": " + Cell(section.about) + "\n";
  }
  out_ += "- [Syntaxes](#syntaxes) of the options' texts.\n";
}

// An older name is mentioned with the current one.
void ReferenceWriter::WriteSection(const ElementModel& section, const ElementModel& parent,
                                   std::size_t depth) {
  if (section.IsOlder()) return;
  WriteHeading(depth, section.name);
  std::string about(section.about);
  for (const ElementModel& other : parent.children) {
    if (other.StandsFor(section.name)) about += " Older name: " + Code(other.name) + ".";
  }
  WriteParagraph(about);
  if (HasOptions(section)) return WriteOptions(section, section.name);
  if (section.list != nullptr) return WriteList(*section.list);
  if (section.table != nullptr) return WriteRegisters(section);
  if (section.content == Content::kTraces) return WriteTraces();
  WriteLeaves(section);
  for (const ElementModel& child : section.children) {
    if (child.HoldsElements()) WriteSection(child, section, depth + 1);
  }
}

// Writes the elements of a section that hold neither options nor elements.
void ReferenceWriter::WriteLeaves(const ElementModel& section) {
  if (std::ranges::all_of(section.children, &ElementModel::HoldsElements)) return;
  const bool are_switches = section.children.front().content == Content::kSwitch;
  if (are_switches) {
    WriteParagraph("Each element names a test. The test runs if the text is exactly `true`.");
  }
  WriteHead({"Element", "Meaning", are_switches ? "Older name" : "Flow"});
  for (const ElementModel& child : section.children) {
    if (child.IsOlder() || child.HoldsElements()) continue;
    std::string older;
    for (const ElementModel& other : section.children) {
      if (other.StandsFor(child.name)) older += Code(other.name);
    }
    const bool has_section =
        std::ranges::find(PmTests(), child.name, &PmTestRow::name) != PmTests().end();
    const std::string flow = child.is_read ? "rw" : "w";
    WriteRow({has_section ? LinkTo(child.name) : Code(child.name), Cell(child.about),
              are_switches ? older : flow});
  }
}

// `name` is the preceding heading.
void ReferenceWriter::WriteOptions(const ElementModel& section, std::string_view name) {
  const OptionRow* const first = section.children.front().option;
  const auto known = std::ranges::find(described_, first, &Described::first);
  if (known != described_.end()) {
    return WriteParagraph("The same options as for " + LinkTo(known->name) + ".");
  }
  described_.push_back({first, name});
  if (section.content == Content::kArguments) {
    WriteParagraph(R"(The options are in elements `<arg name="..." val="..."/>`.)");
  }
  WriteHead({"Option", "Meaning", "Text", "Default", "Flow"});
  for (const ElementModel& child : section.children) {
    const OptionRow& option = *child.option;
    const std::string_view reset = option.flag != nullptr ? "false" : option.reset;
    WriteRow(
        {Code(option.name), Cell(AboutOf(option)), ValueOf(option), Code(reset), FlowOf(option)});
  }
}

void ReferenceWriter::WriteRegisters(const ElementModel& container) {
  const ElementModel& item = container.children.front();
  WriteParagraph("Each is in an element " + Code(item.name) + ".");
  WriteOptions(item, container.name);
}

void ReferenceWriter::WriteList(const SystemListRow& list) {
  WriteParagraph(list.items != nullptr ? "Each is in an element `ITEM`."
                                       : "Elements of any name, each a named value.");
  std::string hints;
  for (const std::string_view hint : list.hint.texts) {
    if (!hint.empty()) hints += "- " + Code(hint) + "\n";
  }
  for (const OptionRow& option : list.values) {
    hints += "- " + Code(option.name) + ": " + Cell(option.about) + " " + ValueOf(option) + "\n";
  }
  if (!hints.empty()) out_ += "\n" + hints;
}

void ReferenceWriter::WriteTraces() {
  WriteParagraph(
      "An entry such as `CSTATES_Core_Con:10` consists of the name of a test, a target and a code, "
      "joined by `_`; further fields may follow. Entries require a `Version` of four pieces. "
      "Without "
      "one, or with a malformed entry, the file cannot be read.");
}

void ReferenceWriter::WriteSyntaxes() {
  WriteHeading(2, "Syntaxes");
  WriteParagraph("An empty text is valid for every syntax.");
  WriteHead({"Syntax", "Text", "Words", "Example"});
  for (const SyntaxRow& syntax : Syntaxes()) {
    const std::string name(syntax.name);
    std::string anchor = R"(<a id="syntax-)";
    anchor.append(name).append(R"("></a>)").append(name);
    WriteRow({anchor, Cell(GrammarOf(syntax.syntax)), WordsOf(syntax), Code(syntax.example)});
  }
}

}  // namespace

std::string GetOptionReference() {
  const auto records = std::make_unique<FullRecords>();
  const ElementModel root = MakeDocumentModel(*records);
  return ReferenceWriter().Write(root);
}

}  // namespace vexor
