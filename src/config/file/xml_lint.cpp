#include "config/file/xml_lint.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <functional>
#include <iterator>
#include <utility>

#include "config/texts/xml_characters.h"
#include "util/text.h"

namespace vexor {
namespace {

using Kind = FindingKind;

constexpr auto kEnd = std::string_view::npos;
constexpr std::size_t kExcerpt = 40;  // bytes of a text that a message shows
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view TakeBlanks(std::string_view& rest) {
  const std::size_t size = std::min(rest.find_first_not_of(" \t\r\n\v\f"), rest.size());
  const std::string_view blanks = rest.substr(0, size);
  rest.remove_prefix(size);
  return blanks;
}

// The names that the XML library accepts; a strict parser accepts fewer.
bool StartsName(char c) {
  return (ToUpper(c) >= 'A' && ToUpper(c) <= 'Z') || c == '_' || c == ':' ||
         static_cast<unsigned char>(c) > 127;
}

std::string_view TakeName(std::string_view& rest) {
  std::size_t size = 0;
  while (size < rest.size() &&
         (StartsName(rest[size]) ||
          (size > 0 && (IsDecDigit(rest[size]) || rest[size] == '-' || rest[size] == '.')))) {
    ++size;
  }
  const std::string_view name = rest.substr(0, size);
  rest.remove_prefix(size);
  return name;
}

// Returns the beginning of a text for a message, at most to the end of the line.
std::string Excerpt(std::string_view text) {
  text = text.substr(0, kExcerpt + 1);
  text = text.substr(0, text.find_first_of("\r\n"));
  return std::string(text.substr(0, kExcerpt)).append(text.size() > kExcerpt ? "..." : "");
}

std::string Tag(std::string_view opening, std::string_view name) {
  return std::string(opening).append(Excerpt(name)).append(">");
}

// Takes a pseudo-attribute of an XML declaration, such as ` version="1.0"`, and returns its value.
std::optional<std::string_view> TakeSetting(std::string_view& rest, std::string_view name) {
  std::string_view ahead = rest;
  if (TakeBlanks(ahead).empty() || !ahead.starts_with(name)) return std::nullopt;
  ahead.remove_prefix(name.size());
  TakeBlanks(ahead);
  if (!ahead.starts_with('=')) return std::nullopt;
  ahead.remove_prefix(1);
  TakeBlanks(ahead);
  if (!ahead.starts_with('"') && !ahead.starts_with('\'')) return std::nullopt;
  const std::size_t end = ahead.find(ahead.front(), 1);
  if (end == kEnd) return std::nullopt;
  const std::string_view value = ahead.substr(1, end - 1);
  rest = ahead.substr(end + 1);
  return value;
}

bool IsXmlVersion(std::string_view version) {
  return version.starts_with("1.") && version.size() > 2 &&
         std::ranges::all_of(version.substr(2), IsDecDigit);
}

enum class Encoding : std::uint8_t { kUtf8, kAscii, kOther, kUnknown };

Encoding ParseEncoding(std::string_view name) {
  if (EqualsIgnoreCase(name, "UTF-8")) return Encoding::kUtf8;
  if (EqualsIgnoreCase(name, "ASCII") || EqualsIgnoreCase(name, "US-ASCII")) {
    return Encoding::kAscii;
  }
  // Encodings that extend ASCII: markup and names read correctly, other bytes read as they are.
  struct Family {
    std::string_view prefix;
    std::uint64_t first, last;
  };
  constexpr Family kFamilies[] = {{"ISO-8859-", 1, 16}, {"windows-", 1250, 1258}};
  const bool is_known = std::ranges::any_of(kFamilies, [name](const Family& family) {
    if (!StartsWithIgnoreCase(name, family.prefix)) return false;
    const UnsignedText number = ReadDigits<10>(name.substr(family.prefix.size()));
    return number.value >= family.first && number.value <= family.last;
  });
  return is_known ? Encoding::kOther : Encoding::kUnknown;
}

// One pass over the content. at_ never passes the end, and line_ is the line of at_.
class Linter {
 public:
  explicit Linter(std::string_view content)
      : content_(content.substr(0, content.find('\0'))),
        has_zero_(content_.size() < content.size()) {}

  XmlLint Lint() &&;

 private:
  struct OpenElement {
    std::string_view name;
    int line;
  };

  static std::string Name(const OpenElement& open);

  [[nodiscard]] std::string_view Rest() const { return content_.substr(at_); }

  void Pass(std::size_t size);
  void PassTo(std::string_view rest) { Pass(Rest().size() - rest.size()); }

  // The bytes that a fault is about.
  struct Place {
    int line;
    std::size_t at;
    std::size_t size;
  };

  [[nodiscard]] Place PlaceOf(std::string_view text) const;
  void AddAt(FindingKind kind, const Place& place, std::string_view text, std::string what,
             std::string expected = {});
  void Add(FindingKind kind, std::string_view text, std::string what, std::string expected = {});
  void AddDropped(std::string_view text, std::string what);
  void Stop(std::string what, std::string expected = {});
  void LintDeclaration();
  void LintNext();
  void LintText();
  void PassCharacters(std::string_view text, const char* special);
  void LintReference(std::string_view text);
  bool LintCharacterReference(std::string_view text);
  std::optional<std::string_view> FindBody(std::string_view begin, std::string_view end,
                                           std::string_view name);
  void LintComment();
  void LintData();
  void LintInstruction();
  void LintType();
  static bool IsDocumentType(std::string_view rest);
  static bool TakeLiteral(std::string_view& rest);
  void LintTag();
  void Close(std::string_view name);
  std::optional<bool> LintAttributes(std::string_view element, bool is_end);
  bool LintValue(std::string_view name);
  [[nodiscard]] std::string NameEnd() const;
  void LintEnd();
  void LintCharacters();

  std::string_view content_;
  bool has_zero_;
  Encoding encoding_ = Encoding::kUtf8;
  std::size_t at_ = 0;
  int line_ = 1;
  bool has_root_ = false;
  bool has_type_ = false;
  bool is_behind_instructions_ = false;  // past the point where the XML library accepts <?...?>
  std::vector<OpenElement> open_;
  XmlLint lint_;
};

XmlLint Linter::Lint() && {
  if (content_.starts_with(kByteOrderMark)) Pass(kByteOrderMark.size());
  LintDeclaration();
  while (!lint_.stop && !Rest().empty()) LintNext();
  if (!lint_.stop) LintEnd();
  LintCharacters();
  std::ranges::stable_sort(lint_.faults, {}, &XmlFault::line);
  return std::move(lint_);
}

std::string Linter::Name(const OpenElement& open) {
  return Tag("<", open.name) + ", opened on line " + std::to_string(open.line);
}

// Advances by `size` bytes, or to the end.
void Linter::Pass(std::size_t size) {
  const std::string_view passed = Rest().substr(0, size);
  line_ += static_cast<int>(std::ranges::count(passed, '\n'));
  at_ += passed.size();
  assert(at_ <= content_.size());
}

// Returns the bytes of an excerpt of the text if it is a part of the content; else those at the
// current place.
Linter::Place Linter::PlaceOf(std::string_view text) const {
  const std::less_equal<> is_not_behind;
  const bool is_part = is_not_behind(content_.data(), text.data()) &&
                       is_not_behind(text.data() + text.size(), content_.data() + content_.size());
  const std::string_view part = is_part ? text : Rest().substr(0, text.size());
  const auto at = static_cast<std::size_t>(part.data() - content_.data());
  return {line_, at, std::min({part.find_first_of("\r\n"), part.size(), kExcerpt})};
}

// Reports a fault once for each line.
void Linter::AddAt(FindingKind kind, const Place& place, std::string_view text, std::string what,
                   std::string expected) {
  XmlFault fault{place.line,          place.at, place.size, Excerpt(text), std::move(what),
                 std::move(expected), kind};
  if (!lint_.faults.empty()) {
    const XmlFault& last = lint_.faults.back();
    if (last.line == place.line && last.what == fault.what) return;
  }
  lint_.faults.push_back(std::move(fault));
}

void Linter::Add(FindingKind kind, std::string_view text, std::string what, std::string expected) {
  Place place = PlaceOf(text);
  if (kind == Kind::kUnescaped) place.size = text.starts_with("]]>") ? 3 : 1;
  AddAt(kind, place, text, std::move(what), std::move(expected));
}

// Reported each time, unlike other faults: each is a loss of data.
void Linter::AddDropped(std::string_view text, std::string what) {
  const Place place = PlaceOf(text);
  lint_.faults.push_back(
      {place.line, place.at, place.size, Excerpt(text), std::move(what), {}, Kind::kDroppedXml});
}

void Linter::Stop(std::string what, std::string expected) {
  const std::size_t size = std::min<std::size_t>(1, Rest().size());
  lint_.stop = {line_, at_, size, {}, std::move(what), std::move(expected), Kind::kUnreadRest};
}

// Checks "<?xml version="1.0" encoding="UTF-8"?>", which is only valid at the start.
void Linter::LintDeclaration() {
  const std::string_view all = Rest().substr(0, Rest().find("?>"));
  std::string_view rest = all;
  if (!rest.starts_with("<?xml") || rest.size() < 6 || !IsXmlBlank(rest[5])) return;
  rest.remove_prefix(5);
  const auto version = TakeSetting(rest, "version");
  const auto encoding = TakeSetting(rest, "encoding");
  const auto standalone = TakeSetting(rest, "standalone");
  const bool is_alone = standalone.value_or("yes") == "yes" || *standalone == "no";
  TakeBlanks(rest);
  if (!version || !IsXmlVersion(*version) || !is_alone || !rest.empty()) {
    Add(Kind::kLooseXml, all, "malformed XML declaration",
        R"(<?xml version="1.0" encoding="UTF-8"?>)");
  }
  if (encoding) encoding_ = ParseEncoding(*encoding);
  if (encoding_ == Encoding::kUnknown) {
    Add(Kind::kEncoding, *encoding, "unsupported encoding", "UTF-8");
  }
  if (all.size() < Rest().size()) Pass(all.size() + 2);
}

void Linter::LintNext() {
  const std::string_view rest = Rest();
  if (!rest.starts_with('<')) return LintText();
  if (rest.starts_with("<!--")) return LintComment();
  if (rest.starts_with("<![CDATA[")) return LintData();
  if (rest.starts_with("<?")) return LintInstruction();
  is_behind_instructions_ = true;  // a document type and any tag end the prolog
  if (rest.starts_with("<!")) return LintType();
  LintTag();
}

void Linter::LintText() {
  const std::string_view text = Rest().substr(0, Rest().find('<'));
  const bool is_blank = TrimSpace(text).empty();
  if (!is_blank) is_behind_instructions_ = true;
  if (!is_blank && open_.empty()) {
    lint_.has_content_outside_root = true;
    if (text.size() == Rest().size()) {
      return Stop("text outside the root element: \"" + Excerpt(TrimSpace(text)) + "\"");
    }
  }
  PassCharacters(text, "&]");
}

// Advances past a text, and checks it wherever one of the special characters occurs.
void Linter::PassCharacters(std::string_view text, const char* special) {
  for (;;) {
    const std::size_t plain = std::min(text.find_first_of(special), text.size());
    Pass(plain);
    text.remove_prefix(plain);
    if (text.empty()) return;
    if (text.starts_with('&')) {
      LintReference(text);
    } else if (text.starts_with('<')) {
      Add(Kind::kUnescaped, text, "< in an attribute value", "&lt;");
    } else if (text.starts_with("]]>")) {
      Add(Kind::kUnescaped, "]]>", "]]> in a text", "]]&gt;");
    }
    Pass(1);
    text.remove_prefix(1);
  }
}

void Linter::LintReference(std::string_view text) {
  constexpr std::string_view kEntities[] = {"lt", "gt", "amp", "apos", "quot"};
  constexpr std::size_t kLongest = 40;
  if (text.starts_with("&#") && LintCharacterReference(text)) return;
  std::string_view name = text.substr(1, kLongest);
  const std::size_t end = name.find(';');
  name = name.substr(0, std::min(end, name.size()));
  if (end == kEnd || !IsXmlName(name)) return Add(Kind::kUnescaped, text, "bare &", "&amp;");
  if (std::ranges::find(kEntities, name) == std::end(kEntities)) {
    Add(Kind::kUnknownEntity, text.substr(0, end + 2), "unknown entity, read as is",
        "&lt;, &gt;, &amp;, &quot; or &apos;");
  }
}

// Returns whether the text begins with a character reference, such as "&#65;" or "&#x41;", with any
// number. The XML library ends a text at character 0 and drops references of more than 21 bits.
bool Linter::LintCharacterReference(std::string_view text) {
  constexpr auto kNumber = UnsignedText::Kind::kNumber;
  const bool is_hex = text.starts_with("&#x");
  std::string_view digits = text.substr(is_hex ? 3 : 2);
  const char* const all_digits = is_hex ? "0123456789ABCDEFabcdef" : "0123456789";
  const std::size_t size = digits.find_first_not_of(all_digits);
  if (size == kEnd || digits[size] != ';') return false;
  const std::string_view reference = text.substr(0, text.size() - digits.size() + size + 1);
  digits = digits.substr(0, size);
  const UnsignedText number = is_hex ? ReadDigits<16>(digits) : ReadDigits<10>(digits);
  constexpr const char* kForbidden = "reference to a character that XML forbids";
  if (digits.empty() || (number.kind == kNumber && number.value == 0)) {
    AddDropped(text, kForbidden);
  } else if (number.kind != kNumber || number.value > 0x1FFFFF) {
    AddDropped(reference, kForbidden);
  } else if (!IsXmlCharacter(static_cast<char32_t>(number.value))) {
    Add(Kind::kForbiddenCharacter, reference, kForbidden);
  }
  return true;
}

// Returns the text between two delimiters; stops and returns nothing if the second is missing.
std::optional<std::string_view> Linter::FindBody(std::string_view begin, std::string_view end,
                                                 std::string_view name) {
  const std::size_t size = Rest().find(end, begin.size());
  if (size != kEnd) return Rest().substr(begin.size(), size - begin.size());
  Stop(std::string(name).append(" without an end").append(has_zero_ ? " before a zero byte" : ""),
       std::string(end));
  return std::nullopt;
}

void Linter::LintComment() {
  is_behind_instructions_ = true;
  const auto body = FindBody("<!--", "-->", "a comment");
  if (!body) return;
  if (body->ends_with('-') || body->find("--") != kEnd) {
    Add(Kind::kLooseXml, Rest().substr(0, body->size() + 7), "-- in a comment");
  }
  Pass(body->size() + 7);
}

void Linter::LintData() {
  is_behind_instructions_ = true;
  const auto body = FindBody("<![CDATA[", "]]>", "a CDATA section");
  if (!body) return;
  if (open_.empty()) Add(Kind::kLooseXml, Rest(), "CDATA section outside the root element");
  Pass(body->size() + 12);
}

void Linter::LintInstruction() {
  const auto body = FindBody("<?", "?>", "a processing instruction");
  if (!body) return;
  if (is_behind_instructions_) {
    return Stop("a processing instruction (<?...?>) that is not at the beginning of the file",
                "it before all comments and elements");
  }
  std::string_view rest = *body;
  const std::string_view target =
      rest.substr(0, std::min(rest.find_first_of(" \t\r\n"), rest.size()));
  if (EqualsIgnoreCase(target, "xml")) {
    Add(Kind::kLooseXml, Rest(), "XML declaration that is not the first of the file, or malformed",
        R"(<?xml version="1.0"?>)");
  } else if (!IsXmlName(target)) {
    Add(Kind::kLooseXml, Rest(), "malformed processing instruction");
  }
  Pass(body->size() + 4);
}

// Accepts "<!DOCTYPE VEXOR SYSTEM "vexor.dtd">" before the root element, and no other "<!" markup.
void Linter::LintType() {
  const auto body = FindBody("<!", ">", "markup");
  if (!body) return;
  const bool is_in_place = !has_root_ && !has_type_;
  if (!is_in_place || !IsDocumentType(*body)) {
    Add(Kind::kLooseXml, Rest(), "unsupported markup");
  }
  has_type_ = true;
  Pass(body->size() + 3);
}

bool Linter::IsDocumentType(std::string_view rest) {
  if (!rest.starts_with("DOCTYPE")) return false;
  rest.remove_prefix(7);
  if (TakeBlanks(rest).empty() || !IsXmlName(TakeName(rest))) return false;
  const bool has_blank = !TakeBlanks(rest).empty();
  if (rest.empty()) return true;
  const bool is_public = rest.starts_with("PUBLIC");
  if (!has_blank || (!is_public && !rest.starts_with("SYSTEM"))) return false;
  rest.remove_prefix(6);
  if (is_public && !TakeLiteral(rest)) return false;
  if (!TakeLiteral(rest)) return false;
  TakeBlanks(rest);
  return rest.empty();
}

bool Linter::TakeLiteral(std::string_view& rest) {
  if (TakeBlanks(rest).empty() || rest.empty()) return false;
  const std::size_t end = rest.find(rest.front(), 1);
  if ((rest.front() != '"' && rest.front() != '\'') || end == kEnd) return false;
  rest.remove_prefix(end + 1);
  return true;
}

void Linter::LintTag() {
  const std::string_view tag = Rest();
  std::string_view rest = tag.substr(1);
  const bool has_blank = !TakeBlanks(rest).empty();
  if (has_blank) Add(Kind::kLooseXml, tag, "blank before the name of an element");
  const bool is_end = rest.starts_with('/');
  if (is_end) rest.remove_prefix(1);
  const std::string_view name = TakeName(rest);
  const auto stop = [&] {
    Stop("< that does not start a tag: \"" + Excerpt(tag) + "\"", "&lt; for the character");
  };
  if (name.empty()) return stop();
  if (!IsXmlName(name)) Add(Kind::kLooseXml, name, "invalid element name");
  PassTo(rest);
  const auto is_empty = LintAttributes(name, is_end);
  if (!is_empty && has_blank) stop();
  if (!is_empty) return;
  if (is_end && *is_empty)
    Add(Kind::kLooseXml, Tag("</", name), "end tag that ends in />, read as an empty element");
  if (is_end && !*is_empty) return Close(name);
  if (open_.empty()) {
    lint_.has_content_outside_root = lint_.has_content_outside_root || has_root_;
    has_root_ = true;
  }
  if (!*is_empty) open_.push_back({name, line_});
}

void Linter::Close(std::string_view name) {
  const std::string tag = Tag("</", name);
  if (open_.empty()) {
    return Stop(tag + " closes no open element: the rest of the file is not read");
  }
  // The XML library stops at the first mismatch, so there is no resynchronisation.
  const OpenElement& open = open_.back();
  if (open.name != name) {
    return Stop(tag + " does not close " + Name(open), Tag("</", open.name));
  }
  open_.pop_back();
}

// Advances past the attributes and the end of the tag. Returns whether the tag ends in "/>"; stops
// and returns nothing if it has no end.
std::optional<bool> Linter::LintAttributes(std::string_view element, bool is_end) {
  std::vector<std::string_view> names;
  for (;;) {
    std::string_view rest = Rest();
    const bool is_apart = !TakeBlanks(rest).empty();
    PassTo(rest);
    if (rest.starts_with('>') || rest.starts_with("/>")) {
      const bool is_empty = rest.front() == '/';
      Pass(is_empty ? 2 : 1);
      return is_empty;
    }
    const std::string_view name = TakeName(rest);
    if (name.empty()) {
      Stop(rest.empty() ? NameEnd() + " within the tag <" + Excerpt(element)
                        : "\"" + Excerpt(rest) + "\" in the tag <" + Excerpt(element),
           rest.empty() ? ">" : "an attribute, > or />");
      return std::nullopt;
    }
    if (!is_end && !is_apart) {
      Add(Kind::kLooseXml, name, "no blank before an attribute");
    }
    if (!IsXmlName(name)) Add(Kind::kLooseXml, name, "invalid attribute name");
    if (std::ranges::find(names, name) != names.end()) {
      Stop("the attribute " + Excerpt(name) + " stands twice in <" + Excerpt(element) + ">");
      return std::nullopt;
    }
    names.push_back(name);
    const std::string_view attribute = Rest();
    PassTo(rest);
    if (!LintValue(name)) return std::nullopt;
    if (is_end) {
      AddDropped(attribute.substr(0, attribute.size() - Rest().size()), "attribute in an end tag");
    }
  }
}

// Advances past the value of an attribute. Stops and returns false if there is none.
bool Linter::LintValue(std::string_view name) {
  const auto stop = [this, name](const char* what) {
    Stop("the attribute " + Excerpt(name) + what, std::string(Excerpt(name)) + "=\"value\"");
    return false;
  };
  std::string_view rest = Rest();
  TakeBlanks(rest);
  if (!rest.starts_with('=')) return stop(" has no value");
  rest.remove_prefix(1);
  TakeBlanks(rest);
  if (!rest.starts_with('"') && !rest.starts_with('\'')) return stop(" has a value without quotes");
  const std::size_t end = rest.find(rest.front(), 1);
  if (end == kEnd) return stop(" has a value without its second quote");
  PassTo(rest.substr(1));
  PassCharacters(Rest().substr(0, end - 1), "&<");
  Pass(1);
  return true;
}

// The XML library takes a zero byte for the end of the file.
std::string Linter::NameEnd() const {
  return has_zero_ ? "a zero byte ends the file" : "the file ends";
}

void Linter::LintEnd() {
  if (!open_.empty()) {
    const OpenElement& open = open_.back();
    Stop(NameEnd() + " and does not close " + Name(open), Tag("</", open.name));
  } else if (has_zero_) {
    Stop("a zero byte: the rest of the file is not read");
  }
}

// Reports forbidden characters, and bytes that are invalid in the declared encoding. The bytes give
// one finding for the whole file: in a file of another encoding there are many.
void Linter::LintCharacters() {
  int line = 1;
  std::size_t invalid_bytes = 0;
  XmlFault first;
  for (std::string_view rest = content_; !rest.empty();) {
    if (rest.front() == '\n') ++line;
    const auto byte = static_cast<unsigned char>(rest.front());
    Utf8Character c{.value = byte, .size = 1};
    const std::size_t at = content_.size() - rest.size();
    if (byte > 127) {
      const bool is_utf8 = encoding_ == Encoding::kUtf8;
      if (is_utf8) c = DecodeUtf8(rest);
      if (!is_utf8 || c.size == 0) {
        if (++invalid_bytes == 1) {
          first = {line, at, 1, FormatHex("0x", 2, byte), {}, {}, Kind::kEncoding};
        }
        c = {.value = ' ', .size = 1};
      }
    }
    if (!IsXmlCharacter(c.value)) {
      AddAt(Kind::kForbiddenCharacter, {line, at, c.size}, FormatHex("U+", 4, c.value),
            "character that XML forbids");
    }
    assert(c.size > 0);  // invalid UTF-8 was replaced above
    rest.remove_prefix(c.size);
  }
  if (invalid_bytes == 0 || encoding_ == Encoding::kUnknown) return;
  constexpr std::string_view kWhat[] = {
      "byte that is not UTF-8", "byte that is not ASCII, the declared encoding",
      "byte above 0x7F, read as is and not in the declared encoding"};
  assert(static_cast<std::size_t>(encoding_) < std::size(kWhat));
  first.what = kWhat[static_cast<std::size_t>(encoding_)];
  if (invalid_bytes > 1) first.what += ", the first of " + std::to_string(invalid_bytes);
  first.expected = "UTF-8";
  lint_.faults.push_back(std::move(first));
}

}  // namespace

XmlLint LintXml(std::string_view content) { return Linter(content).Lint(); }

}  // namespace vexor
