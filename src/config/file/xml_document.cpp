#include "config/file/xml_document.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "config/file/element_walk.h"
#include "config/file/file_kind.h"
#include "config/file/xml_lint.h"

namespace vexor {
namespace {

constexpr auto kEnd = std::string_view::npos;

// Scans the markup as the XML library does, for what costs it more than linear time. It runs before
// the XML library, because that cannot be interrupted. Where the markup is malformed, the scan
// ends: the XML library stops there, too.
class BoundsCheck {
 public:
  explicit BoundsCheck(std::string_view content) : content_(content) {}

  // Returns the first violation of a limit.
  std::optional<XmlRefusal> Find() {
    while (!refusal_ && at_ < content_.size()) {
      const std::size_t tag = std::min(content_.find('<', at_), content_.size());
      CheckText(at_, tag);
      at_ = tag;
      if (at_ < content_.size()) PassMarkup();
    }
    return std::move(refusal_);
  }

 private:
  struct OtherMarkup {
    std::string_view begin, end;
  };

  void PassMarkup() {
    constexpr OtherMarkup kOthers[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<!", ">"}, {"<?", "?>"}};
    for (const auto& [begin, end] : kOthers) {
      if (!content_.substr(at_).starts_with(begin)) continue;
      at_ = std::min(content_.find(end, at_ + begin.size()), content_.size());
      return;
    }
    PassTag();
  }

  // Counts quoted values, one for each attribute.
  void PassTag() {
    const std::size_t tag = at_;
    int attributes = 0;
    for (;;) {
      at_ = content_.find_first_of("\"'>", at_);
      if (at_ == kEnd || content_[at_] == '>') break;
      const std::size_t end = content_.find(content_[at_], at_ + 1);
      if (end == kEnd) break;
      if (++attributes > kMostAttributes) {
        return Refuse(
            tag, "an element with more than " + std::to_string(kMostAttributes) + " attributes");
      }
      CheckText(at_ + 1, end);
      at_ = end + 1;
    }
    if (at_ == kEnd || content_[at_] != '>') at_ = content_.size();
  }

  // Counts the references that are not terminated within the length of a valid one.
  void CheckText(std::size_t at, std::size_t end) {
    constexpr std::size_t kLongestReference = 16;
    for (;; ++at) {
      at = content_.substr(0, end).find("&#", at);
      if (at == kEnd || refusal_) return;
      if (content_.substr(at, kLongestReference).find(';') == kEnd &&
          ++open_references_ > kMostOpenReferences) {
        Refuse(at, "more than " + std::to_string(kMostOpenReferences) +
                       " character references without an end");
      }
    }
  }

  void Refuse(std::size_t at, const std::string& what) {
    const auto lines = std::ranges::count(content_.substr(0, at), '\n');
    refusal_ = {.line = static_cast<int>(lines) + 1,
                .what = "limit exceeded: " + what,
                .expected = {},
                .kind = FindingKind::kXmlLimit};
  }

  std::string_view content_;
  std::size_t at_ = 0;
  int open_references_ = 0;
  std::optional<XmlRefusal> refusal_;
};

std::string_view NameError(tinyxml2::XMLError error) {
  switch (error) {
    case tinyxml2::XML_ERROR_PARSING_ATTRIBUTE:
      return "a malformed attribute";
    case tinyxml2::XML_ERROR_PARSING_TEXT:
      return "text without an end";
    case tinyxml2::XML_ERROR_PARSING_DECLARATION:
      return "a malformed or misplaced declaration";
    case tinyxml2::XML_ERROR_MISMATCHED_ELEMENT:
      return "an element without its closing tag";
    case tinyxml2::XML_ELEMENT_DEPTH_EXCEEDED:
      return "elements nested too deep";
    default:
      return "malformed markup";
  }
}

XmlRefusal ExplainError(std::string_view content, const tinyxml2::XMLDocument& document) {
  XmlRefusal refusal{.line = document.ErrorLineNum(),
                     .what = std::string(NameError(document.ErrorID())),
                     .expected = {}};
  // The XML library names the element that failed; the linter names the cause. Nesting depth is the
  // one limit that the linter does not have.
  if (document.ErrorID() != tinyxml2::XML_ELEMENT_DEPTH_EXCEEDED) {
    if (const auto stop = LintXml(content).stop) {
      refusal = {.line = stop->line,
                 .at = stop->at,
                 .size = stop->size,
                 .what = stop->what,
                 .expected = stop->expected};
    }
  }
  refusal.what.insert(0, "not well-formed XML: ");
  return refusal;
}

}  // namespace

tinyxml2::XMLError ParseXml(std::string_view content, tinyxml2::XMLDocument& document) {
  if (BoundsCheck(content).Find()) {
    document.Clear();
    return tinyxml2::XML_ERROR_FILE_READ_ERROR;
  }
  return document.Parse(content.data(), content.size());
}

tinyxml2::XMLError ParseXmlFile(std::FILE* file, tinyxml2::XMLDocument& document) {
  const bool is_readable = std::fgetc(file) != EOF || std::ferror(file) == 0;  // fails for a folder
  if (!is_readable || std::fseek(file, 0, SEEK_END) != 0) {
    return tinyxml2::XML_ERROR_FILE_READ_ERROR;
  }
  const long end = std::ftell(file);
  if (end < 0 || std::fseek(file, 0, SEEK_SET) != 0) return tinyxml2::XML_ERROR_FILE_READ_ERROR;
  const auto size = static_cast<std::size_t>(end);
  const auto content = std::make_unique_for_overwrite<char[]>(size);
  if (std::fread(content.get(), 1, size, file) != size) return tinyxml2::XML_ERROR_FILE_READ_ERROR;
  return ParseXml({content.get(), size}, document);
}

std::optional<XmlRefusal> ParseXmlOrExplain(std::string_view content,
                                            tinyxml2::XMLDocument& document) {
  const tinyxml2::XMLError error = ParseXml(content, document);
  if (error == tinyxml2::XML_SUCCESS && FindRoot(document) != nullptr) {
    return std::nullopt;
  }
  if (auto beyond = BoundsCheck(content).Find()) return beyond;
  const std::string foreign = NameForeignContent(content);
  if (!foreign.empty()) {
    return XmlRefusal{.line = 0,
                      .what = foreign,
                      .expected = "a configuration in XML (UTF-8)",
                      .kind = FindingKind::kForeignFile};
  }
  if (error == tinyxml2::XML_SUCCESS) return std::nullopt;
  return ExplainError(content, document);
}

}  // namespace vexor
