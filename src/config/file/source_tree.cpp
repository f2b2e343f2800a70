#include "config/file/source_tree.h"

#include <expat.h>

#include <algorithm>
#include <cassert>
#include <exception>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "config/texts/xml_characters.h"
#include "util/text.h"

namespace vexor {

using Kind = SourceNode::Kind;

namespace {

bool IsUtf8Text(std::string_view text) {
  while (!text.empty()) {
    const std::size_t size = DecodeUtf8(text).size;
    if (size == 0) return false;
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace

// Fills a tree from the parser's events. Each event gives the range of a tag, of another piece of
// markup, or of a piece of text.
class SourceTreeBuilder {
 public:
  explicit SourceTreeBuilder(SourceTree& tree);

  void Build();

 private:
  struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  // Handles an event with a member function. An exception must not pass through the parser, which
  // is written in C: it stops the parser, and Build throws it again.
  template <class Function>
  static void Run(void* builder, const Function& function) {
    auto& self = *static_cast<SourceTreeBuilder*>(builder);
    if (self.failure_) return;  // the parser may report one more event after it was stopped
    try {
      function(self);
    } catch (...) {
      self.failure_ = std::current_exception();
      XML_StopParser(self.parser_.get(), XML_FALSE);
    }
  }

  // Does the same for events whose arguments do not matter.
  template <auto function, class... Arguments>
  static void XMLCALL Handle(void* builder, Arguments... /*arguments*/) {
    Run(builder, [](SourceTreeBuilder& self) { (self.*function)(); });
  }
  static void XMLCALL HandleDeclaration(void* builder, const char* version, const char* encoding,
                                        int standalone);
  static void XMLCALL HandleType(void* builder, const char* name, const char* system,
                                 const char* public_id, int has_declarations);

  [[nodiscard]] SourceRange EventRange() const;
  std::size_t Add(Kind kind, SourceRange range);
  void EndText();
  void OpenElement();
  void CloseElement();
  void AddText();
  void AddComment() { Add(Kind::kComment, EventRange()); }
  void AddOther() { Add(Kind::kOther, EventRange()); }
  void OpenData();
  void CloseData();
  void CloseType();
  void CloseAll();

  SourceTree& tree_;
  std::unique_ptr<XML_ParserStruct, ParserDeleter> parser_;
  std::vector<std::size_t> open_;  // the document and the open elements
  SourceRange text_;               // the parser reports a text in pieces
  std::size_t data_ = 0;           // the open CDATA section, or 0
  std::exception_ptr failure_;
};

// In a file that is not UTF-8, the bytes are taken as one character each, whatever the declaration
// says: only the markup matters, and its bytes are the same in all encodings that the reader knows.
SourceTreeBuilder::SourceTreeBuilder(SourceTree& tree)
    : tree_(tree), parser_(XML_ParserCreate(tree.is_utf8_ ? "UTF-8" : "ISO-8859-1")) {
  using Self = SourceTreeBuilder;
  if (parser_ == nullptr) throw std::bad_alloc();
  auto* const parser = parser_.get();
  XML_SetUserData(parser, this);
  XML_SetElementHandler(parser, Handle<&Self::OpenElement>, Handle<&Self::CloseElement>);
  XML_SetCharacterDataHandler(parser, Handle<&Self::AddText>);
  XML_SetCommentHandler(parser, Handle<&Self::AddComment>);
  XML_SetCdataSectionHandler(parser, Handle<&Self::OpenData>, Handle<&Self::CloseData>);
  XML_SetXmlDeclHandler(parser, HandleDeclaration);
  XML_SetProcessingInstructionHandler(parser, Handle<&Self::AddOther>);
  XML_SetDoctypeDeclHandler(parser, HandleType, Handle<&Self::CloseType>);
}

void SourceTreeBuilder::Build() {
  open_ = {Add(Kind::kDocument, {0, tree_.content_.size()})};
  // The parser's positions are of the type long, which has 32 bits on Windows.
  if (tree_.content_.size() > std::numeric_limits<std::int32_t>::max()) return;
  // The parser takes sizes of the type int.
  constexpr std::size_t kPiece = std::size_t{1} << 30U;
  std::string_view rest = tree_.content_;
  bool is_good = true;
  do {
    const std::string_view piece = rest.substr(0, kPiece);
    rest.remove_prefix(piece.size());
    is_good = XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()),
                        rest.empty() ? 1 : 0) == XML_STATUS_OK;
  } while (is_good && !rest.empty());
  if (failure_) std::rethrow_exception(failure_);
  if (XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  tree_.is_whole_ = is_good;
  CloseAll();
}

void SourceTreeBuilder::HandleDeclaration(void* builder, const char* /*version*/,
                                          const char* encoding, int /*standalone*/) {
  Run(builder, [encoding](SourceTreeBuilder& self) {
    self.AddOther();
    if (encoding != nullptr && !EqualsIgnoreCase(encoding, "UTF-8")) self.tree_.is_utf8_ = false;
  });
}

// Entities declared in the file would be read by the parser and not by the XML library.
void SourceTreeBuilder::HandleType(void* builder, const char* /*name*/, const char* /*system*/,
                                   const char* /*public_id*/, int has_declarations) {
  Run(builder, [has_declarations](SourceTreeBuilder& self) {
    self.AddOther();
    if (has_declarations != 0) XML_StopParser(self.parser_.get(), XML_FALSE);
  });
}

SourceRange SourceTreeBuilder::EventRange() const {
  const auto begin = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
  const auto size = static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
  assert(begin + size <= tree_.content_.size());
  return {begin, begin + size};
}

std::size_t SourceTreeBuilder::Add(Kind kind, SourceRange range) {
  EndText();
  const std::size_t node = tree_.nodes_.size();
  const std::size_t parent = open_.empty() ? 0 : open_.back();
  tree_.nodes_.push_back(
      {.kind = kind, .range = range, .content = {}, .parent = parent, .next = node + 1});
  return node;
}

void SourceTreeBuilder::EndText() {
  const SourceRange text = std::exchange(text_, {});
  if (!TrimSpace(tree_.TextOf(text)).empty()) Add(Kind::kText, text);
}

void SourceTreeBuilder::OpenElement() {
  const SourceRange tag = EventRange();
  const std::size_t element = Add(Kind::kElement, tag);
  tree_.nodes_[element].content = {tag.end, tag.end};
  open_.push_back(element);
}

// For "<A/>" the parser reports the end of the element as an empty range behind it.
void SourceTreeBuilder::CloseElement() {
  EndText();
  const SourceRange tag = EventRange();
  SourceNode& element = tree_.nodes_[open_.back()];
  if (!tag.IsEmpty()) element.content.end = tag.begin;
  element.range.end = std::max(element.range.end, tag.end);
  element.next = tree_.nodes_.size();
  open_.pop_back();
}

void SourceTreeBuilder::AddText() {
  if (data_ != 0) return;
  const SourceRange piece = EventRange();
  if (text_.end != piece.begin) text_.begin = piece.begin;
  text_.end = piece.end;
}

void SourceTreeBuilder::OpenData() { data_ = Add(Kind::kData, EventRange()); }

void SourceTreeBuilder::CloseData() {
  tree_.nodes_[std::exchange(data_, 0)].range.end = EventRange().end;
}

void SourceTreeBuilder::CloseType() { tree_.nodes_.back().range.end = EventRange().end; }

// Closes what the parser left open, at the place where it stopped.
void SourceTreeBuilder::CloseAll() {
  EndText();
  const std::size_t end = tree_.nodes_.size();
  for (const std::size_t node : open_) {
    SourceNode& element = tree_.nodes_[node];
    element.next = end;
    if (node == 0) continue;
    element.range.end = element.content.end = tree_.nodes_.back().range.end;
  }
}

SourceTree::SourceTree(std::string_view content)
    : content_(content), is_utf8_(IsUtf8Text(content)) {
  SourceTreeBuilder(*this).Build();
}

std::size_t SourceTree::FirstChild(std::size_t node) const {
  return nodes_[node].next > node + 1 ? node + 1 : 0;
}

std::size_t SourceTree::NextSibling(std::size_t node) const {
  const SourceNode& parent = nodes_[nodes_[node].parent];
  return node != 0 && nodes_[node].next < parent.next ? nodes_[node].next : 0;
}

SourceRange SourceTree::NameOf(std::size_t element) const {
  assert(nodes_[element].kind == Kind::kElement);
  const std::size_t begin = nodes_[element].range.begin + 1;
  return {begin, std::min(content_.find_first_of(" \t\r\n/>", begin), content_.size())};
}

bool SourceTree::HasEndTag(std::size_t element) const {
  return nodes_[element].content.end < nodes_[element].range.end;
}

SourceRange SourceTree::EndNameOf(std::size_t element) const {
  assert(HasEndTag(element));
  const std::size_t begin = nodes_[element].content.end + 2;
  return {begin, begin + NameOf(element).size()};
}

// The parser has accepted the tag, so each attribute is a name, "=" and a value in quotes.
std::vector<SourceAttribute> SourceTree::AttributesOf(std::size_t element) const {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::vector<SourceAttribute> attributes;
  for (std::size_t at = NameOf(element).end; at < nodes_[element].content.begin;) {
    const std::size_t begin = content_.find_first_not_of(kBlanks, at);
    if (content_[begin] == '/' || content_[begin] == '>') break;
    const std::size_t quote = content_.find_first_of("\"'", begin);
    assert(content_.find('=', begin) < quote && quote < content_.size());
    const std::size_t end = content_.find(content_[quote], quote + 1);
    const std::size_t name_end = content_.find_first_of(" \t\r\n=", begin);
    attributes.push_back({.name = content_.substr(begin, name_end - begin),
                          .range = {at, end + 1},
                          .value = {quote + 1, end}});
    at = end + 1;
  }
  return attributes;
}

std::optional<SourceAttribute> SourceTree::FindAttribute(std::size_t element,
                                                         std::string_view name) const {
  for (const SourceAttribute& attribute : AttributesOf(element)) {
    if (attribute.name == name) return attribute;
  }
  return std::nullopt;
}

std::size_t SourceTree::TextNodeOf(std::size_t element) const {
  const std::size_t child = FirstChild(element);
  const bool is_text = nodes_[child].kind == Kind::kText || nodes_[child].kind == Kind::kData;
  return is_text ? child : 0;
}

namespace {

Kind KindOf(const tinyxml2::XMLNode& node) {
  if (node.ToElement() != nullptr) return Kind::kElement;
  if (const tinyxml2::XMLText* const text = node.ToText()) {
    return text->CData() ? Kind::kData : Kind::kText;
  }
  return node.ToComment() != nullptr ? Kind::kComment : Kind::kOther;
}

// Returns the node after `node` in the order of the document; null after the last.
const tinyxml2::XMLNode* FollowingNode(const tinyxml2::XMLNode* node) {
  if (node->FirstChild() != nullptr) return node->FirstChild();
  while (node != nullptr && node->NextSibling() == nullptr) node = node->Parent();
  return node == nullptr ? nullptr : node->NextSibling();
}

}  // namespace

// Both are walked in the order of the file. Where a strict parser stopped, or the two differ, the
// rest has no positions.
SourceNodes::SourceNodes(const tinyxml2::XMLDocument& document, const SourceTree& tree) {
  std::size_t number = 1;
  for (const tinyxml2::XMLNode* node = document.FirstChild();
       node != nullptr && number < tree.size(); node = FollowingNode(node), ++number) {
    if (KindOf(*node) != tree[number].kind) return;
    const bool is_element = tree[number].kind == Kind::kElement;
    if (is_element && tree.TextOf(tree.NameOf(number)) != node->Value()) return;
    numbers_.emplace(node, number);
  }
}

}  // namespace vexor
