#include <algorithm>
#include <iterator>
#include <utility>

#include "config/assist/typed_document.h"
#include "config/check/allowances.h"
#include "config/check/shared_model.h"
#include "config/model/element_path.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/sections.h"
#include "config/tables/system_setup.h"
#include "config/texts/syntax_table.h"
#include "config/texts/word_list.h"
#include "config/texts/xml_characters.h"
#include "syntax/time_units.h"
#include "util/text.h"
#include "vexor/config/assist.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using Kind = MarkupPiece::Kind;

// Characters of an item of a text, between the separators of its grammar.
constexpr std::string_view kItemEnds = ":=, \t\r\n;";

bool Holds(std::string_view characters, char c) {
  return characters.find(c) != std::string_view::npos;
}

// Returns whether a list has the item. Without separators, the text is no list.
bool HasItem(std::string_view list, std::string_view separators, std::string_view item) {
  while (!separators.empty() && !list.empty()) {
    const std::size_t size = std::min(list.find_first_of(separators), list.size());
    if (TrimSpace(list.substr(0, size)) == item) return true;
    list.remove_prefix(std::min(size + 1, list.size()));
  }
  return false;
}

std::string EndTagOf(std::string_view name) { return std::string("</").append(name).append(">"); }

Completion MakeCompletion(CompletionKind kind, std::string label, std::string text,
                          std::string about = {}) {
  Completion completion;
  completion.kind = kind;
  completion.cursor = text.size();
  completion.label = std::move(label);
  completion.text = std::move(text);
  completion.about = std::move(about);
  return completion;
}

// Collects the completions of one place.
class Completer {
 public:
  Completer(std::string_view content, std::size_t at)
      : document_(content), at_(std::min(at, content.size())) {}

  Completions Complete() &&;

 private:
  void CompleteContent(std::size_t element, SourceRange text);
  void CompleteTag(const MarkupPiece& tag, std::size_t index);
  void CompleteAttribute(const MarkupPiece& tag, std::size_t parent);
  void CompleteAllowance(const MarkupPiece& comment);

  void AddElements(std::size_t parent, bool only_names);
  void AddElement(const ElementModel& parent, std::string_view name, const ElementModel* model,
                  const std::string& path, bool only_name);
  void AddEndTag(std::size_t element);
  void AddTexts(std::size_t element, SourceRange text);
  void AddWords(const OptionInfo& option, SourceRange text);
  void AddExamples(const OptionInfo& option);
  void AddTestNames(SourceRange text);

  [[nodiscard]] std::size_t InsideOf(std::size_t piece) const {
    return piece == document_.pieces().size() ? 0 : document_.pieces()[piece].inside;
  }
  [[nodiscard]] std::size_t FindHolder(std::size_t element) const;
  [[nodiscard]] bool IsPresent(std::size_t parent, const ElementModel& child) const;
  [[nodiscard]] std::size_t PrecedingChild(std::size_t parent, const ElementModel& model) const;

  // Returns the range around the place in `text` whose characters are not in `ends`.
  [[nodiscard]] SourceRange WordAround(SourceRange text, std::string_view ends) const;

  TypedDocument document_;
  std::size_t at_;
  std::vector<OptionInfo> options_ = GetOptions();
  Completions result_;
};

Completions Completer::Complete() && {
  const std::size_t index = document_.PieceBefore(at_);
  result_.range = {at_, at_};
  if (index == document_.pieces().size()) {
    CompleteContent(0, {at_, at_});
    return std::move(result_);
  }
  const MarkupPiece& markup = document_.pieces()[index].markup;
  const bool is_behind = markup.is_complete && at_ >= markup.range.end;
  if (markup.kind == Kind::kText) {
    CompleteContent(InsideOf(index), markup.range);
  } else if (is_behind) {
    const bool is_text = index + 1 < document_.pieces().size() &&
                         document_.pieces()[index + 1].markup.kind == Kind::kText;
    CompleteContent(InsideOf(index),
                    is_text ? document_.pieces()[index + 1].markup.range : SourceRange{at_, at_});
  } else if (markup.IsTag()) {
    CompleteTag(markup, index);
  } else if (markup.kind == Kind::kComment) {
    CompleteAllowance(markup);
  }
  return std::move(result_);
}

SourceRange Completer::WordAround(SourceRange text, std::string_view ends) const {
  const std::string_view content = document_.content();
  SourceRange word{at_, at_};
  while (word.begin > text.begin && !Holds(ends, content[word.begin - 1])) --word.begin;
  while (word.end < text.end && !Holds(ends, content[word.end])) ++word.end;
  return word;
}

void Completer::CompleteContent(std::size_t element, SourceRange text) {
  const ElementModel* const model = document_[element].model;
  const bool is_any = model == nullptr && element != 0 && document_.ParentModel(element) != nullptr;
  if ((model != nullptr && !model->HoldsElements()) || is_any) {
    AddTexts(element, text);
    return;
  }
  const SourceRange word = WordAround(text, " \t\r\n<>");
  result_.range = {word.begin, word.end};
  AddElements(element, false);
  if (!document_[element].is_closed) AddEndTag(element);
}

void Completer::CompleteTag(const MarkupPiece& tag, std::size_t index) {
  const std::size_t element = document_.pieces()[index].node;
  if (tag.kind == Kind::kEndTag) {
    result_.range = {tag.range.begin, tag.is_complete ? tag.range.end : at_};
    const std::size_t open = element != 0 ? element : InsideOf(index);
    if (open != 0) AddEndTag(open);
    return;
  }
  const std::size_t inside = element != 0 ? document_[element].parent : InsideOf(index);
  const bool is_name = at_ <= tag.name.end;
  if (is_name && element != 0 && !document_.IsArgument(element)) {
    result_.range = {tag.name.begin, tag.name.end};
    if (at_ >= tag.name.begin) AddElements(inside, true);
    return;
  }
  if (!is_name || element != 0) {
    CompleteAttribute(tag, inside);
    if (element != 0 || !result_.items.empty()) return;
  }
  result_.range = {tag.range.begin, std::max(at_, tag.name.end)};
  if (inside != 0 && !document_[inside].is_closed) AddEndTag(inside);
  AddElements(FindHolder(inside), false);
}

// Returns the innermost element that holds elements, if the elements in it are not closed: the text
// in front of a tag may have lost its end tag.
std::size_t Completer::FindHolder(std::size_t element) const {
  while (element != 0 && !document_[element].is_closed) {
    const ElementModel* const model = document_[element].model;
    if (model != nullptr && model->HoldsElements()) break;
    element = document_[element].parent;
  }
  return element;
}

void Completer::CompleteAttribute(const MarkupPiece& tag, std::size_t parent) {
  const ElementModel* const model = document_[parent].model;
  if (model == nullptr || model->content != Content::kArguments) return;
  std::string_view argument;
  for (const MarkupAttribute& attribute : ScanAttributes(document_.content(), tag)) {
    const std::string_view name = document_.TextOf(attribute.name);
    if (name == "name") argument = document_.TextOf(attribute.value);
    const bool is_here =
        attribute.has_value && attribute.value.begin <= at_ && at_ <= attribute.value.end;
    if (!is_here) continue;
    result_.range = {attribute.value.begin, attribute.value.end};
    if (name == "name") {
      for (const ElementModel& child : model->children) {
        if (child.IsOlder()) continue;
        const std::string child_name(child.name);
        result_.items.push_back(MakeCompletion(CompletionKind::kOption, child_name, child_name,
                                               std::string(child.about)));
      }
      return;
    }
    const std::string path = JoinPath(document_.PathOf(parent), argument);
    const auto option = std::ranges::find(options_, path, &OptionInfo::path);
    if (name == "val" && option != options_.end()) AddWords(*option, attribute.value);
    return;
  }
}

// Completes the codes in a comment such as <!-- vexorcfg: allow VX019 -->.
void Completer::CompleteAllowance(const MarkupPiece& comment) {
  const std::string_view typed =
      document_.content().substr(comment.range.begin, at_ - comment.range.begin);
  if (!IsAllowance(typed)) return;
  const SourceRange word = WordAround(comment.range, ", \t\r\n<!->");
  result_.range = {word.begin, word.end};
  for (const FindingCode& code : GetFindingCodes()) {
    if (!code.can_be_allowed) continue;
    Completion& item =
        result_.items.emplace_back(MakeCompletion(CompletionKind::kCode, std::string(code.code),
                                                  std::string(code.code), std::string(code.about)));
    item.detail = code.title;
  }
}

// Returns whether the parent has a child of that name, other than one that is being typed.
bool Completer::IsPresent(std::size_t parent, const ElementModel& child) const {
  return std::ranges::any_of(document_.nodes(), [&](const TypedNode& node) {
    const bool is_here = node.piece.range.begin < at_ && at_ <= node.piece.range.end;
    return node.depth > 0 && node.parent == parent && node.model == &child && !is_here;
  });
}

// Returns the index in the model of the last child in front of the place that it knows, plus one.
std::size_t Completer::PrecedingChild(std::size_t parent, const ElementModel& model) const {
  std::size_t preceding = 0;
  for (const TypedNode& node : document_.nodes()) {
    if (node.range.begin >= at_) break;
    if (node.depth <= 0 || node.parent != parent || node.model == nullptr) continue;
    if (at_ <= node.piece.range.end) continue;
    preceding = static_cast<std::size_t>(node.model - model.children.data()) + 1;
  }
  return preceding;
}

// Lists first what a written file has behind the elements in front of the place.
void Completer::AddElements(std::size_t parent, bool only_names) {
  if (parent == 0) {
    const bool has_root = std::ranges::any_of(document_.nodes(), [this](const TypedNode& node) {
      return node.depth == 0 && node.IsElement() && at_ > node.piece.range.end;
    });
    if (!has_root) {
      AddElement({}, NameOf(Section::kRoot), &GetSharedModel().root, {}, only_names);
    }
    return;
  }
  const ElementModel* const model = document_[parent].model;
  if (model == nullptr) return;
  const std::string path = document_.PathOf(parent);
  if (model->content == Content::kTraces) {
    AddElement(*model, kTraceEntry, nullptr, path, only_names);
  } else if (model->content == Content::kPairs) {
    for (const OptionRow& option : model->list->values) {
      AddElement(*model, option.name, nullptr, path, only_names);
    }
  }
  const std::size_t count = model->children.size();
  const std::size_t first = PrecedingChild(parent, *model);
  for (std::size_t i = 0; i < count; ++i) {
    const ElementModel& child = model->children[(first + i) % count];
    if (child.IsOlder() || (!child.repeats && IsPresent(parent, child))) continue;
    AddElement(*model, child.name, &child, path, only_names);
  }
}

void Completer::AddElement(const ElementModel& parent, std::string_view name,
                           const ElementModel* model, const std::string& path, bool only_name) {
  const bool is_section = model != nullptr && model->HoldsElements();
  std::string text(name);
  std::size_t cursor = text.size();
  if (parent.content == Content::kArguments) {
    text = R"(<arg name=")" + text + R"(" val=""/>)";
    cursor = text.size() - 3;  // between the last quotes
  } else if (!only_name) {
    text = "<" + text + ">";
    cursor = text.size();
    text += EndTagOf(name);
  }
  Completion& item = result_.items.emplace_back(
      MakeCompletion(is_section ? CompletionKind::kSection : CompletionKind::kOption,
                     std::string(name), std::move(text)));
  item.cursor = cursor;
  if (model != nullptr) item.about = model->about;
  const auto option = std::ranges::find(options_, JoinPath(path, name), &OptionInfo::path);
  if (is_section || option == options_.end()) return;
  item.about = option->about;
  item.detail =
      option->preset.empty() ? std::string(option->syntax.name) : "default " + option->preset;
}

void Completer::AddEndTag(std::size_t element) {
  const std::string tag = EndTagOf(document_.TextOf(document_[element].piece.name));
  result_.items.push_back(MakeCompletion(CompletionKind::kEndTag, tag, tag));
}

// Completes the text of an element.
void Completer::AddTexts(std::size_t element, SourceRange text) {
  // White space around the text stays.
  const std::string_view content = document_.content();
  while (text.begin < at_ && IsXmlBlank(content[text.begin])) ++text.begin;
  while (text.end > at_ && IsXmlBlank(content[text.end - 1])) --text.end;
  const ElementModel* const model = document_[element].model;
  const ElementModel* const parent = document_.ParentModel(element);
  if (model == nullptr && parent->content == Content::kTraces) return AddTestNames(text);
  const std::string path = document_.PathOf(element);
  const auto option = std::ranges::find(options_, path, &OptionInfo::path);
  if (option != options_.end()) AddWords(*option, text);
  if (!document_[element].is_closed) AddEndTag(element);
}

// Completes the word at the place. It is the first part of an item: what follows a ":" or "=" is
// not a word.
void Completer::AddWords(const OptionInfo& option, SourceRange text) {
  const std::string_view content = document_.content();
  const SyntaxRow* const row = FindSyntax(option.syntax.name);
  const std::string separators(row == nullptr ? "" : row->separators);
  result_.range = {text.begin, text.end};
  if (text.IsEmpty()) AddExamples(option);
  SourceRange item = WordAround(text, separators);
  while (item.begin < at_ && IsXmlBlank(content[item.begin])) ++item.begin;
  const SourceRange word = WordAround(item, kItemEnds);
  if (word.begin != item.begin) return;
  Words words = option.words.empty() ? Words() : SplitWords(option.words);
  if (words.empty()) words = GetSyntaxWords(option.syntax.name);
  const bool has_colon = content.substr(word.end).starts_with(':') && word.end < text.end;
  if (!words.empty() && !text.IsEmpty()) {
    result_.range = {word.begin, word.end + (has_colon ? 1 : 0)};
  }
  const std::string_view whole = document_.TextOf(text);
  for (const std::string_view known : words) {
    const bool is_unit = std::ranges::find(kDurationUnits, known) != kDurationUnits.end() &&
                         row != nullptr && row->pattern.find("%u") != std::string_view::npos;
    std::string inserted(known);
    if ((is_unit || has_colon) && !known.ends_with(':')) inserted += ':';
    const bool is_listed = std::ranges::any_of(
        result_.items, [&](const Completion& other) { return other.label == known; });
    // In a list, a word that is there already is of no use again.
    const bool is_taken = document_.TextOf(word) != known && HasItem(whole, separators, known);
    if (is_listed || is_taken) continue;
    result_.items.push_back(MakeCompletion(CompletionKind::kWord, std::string(known),
                                           std::move(inserted),
                                           DescribeText(option.syntax.name, known)));
  }
}

// Offers whole texts where there is none yet.
void Completer::AddExamples(const OptionInfo& option) {
  const std::pair<std::string_view, const char*> examples[] = {
      {option.preset, "the default"}, {option.syntax.example, "an example"}};
  for (const auto& [example, detail] : examples) {
    const bool is_listed = std::ranges::any_of(
        result_.items, [text = example](const Completion& item) { return item.text == text; });
    const bool is_word = option.syntax.name == "boolean" || option.syntax.name == "text";
    if (example.empty() || is_listed || (is_word && example != option.preset)) continue;
    Completion& item = result_.items.emplace_back(
        MakeCompletion(CompletionKind::kExample, std::string(example), std::string(example),
                       DescribeText(option.syntax.name, example)));
    item.detail = detail;
  }
}

// A trace entry begins with the name of a test: "CSTATES_Core_Con:10".
void Completer::AddTestNames(SourceRange text) {
  const SourceRange word = WordAround(text, "_");
  if (word.begin != text.begin) return;
  result_.range = {word.begin, word.end};
  const bool has_rest = word.end < text.end;
  for (const PmTestRow& test : PmTests()) {
    const std::string name(test.name);
    result_.items.push_back(MakeCompletion(CompletionKind::kWord, name,
                                           has_rest ? name : name + "_", std::string(test.about)));
  }
}

}  // namespace

Completions CompleteText(std::string_view content, std::size_t at) {
  return Completer(content, at).Complete();
}

}  // namespace vexor
