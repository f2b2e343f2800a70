#include "protocol.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tools::vexorcfg::lsp {
namespace {

using vexor::TextRange;

bool IsTrueAt(const Json& json, const char* path) {
  const Json& member = MemberAt(json, path);
  return member.is_boolean() && member.get<bool>();
}

bool Lists(const Json& list, std::string_view word) {
  return list.is_array() && std::ranges::any_of(list, [word](const Json& item) {
           return item.is_string() && item.get_ref<const std::string&>() == word;
         });
}

std::size_t ReadCount(const Json& json) {
  if (json.is_number_unsigned()) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(std::min(json.get<std::uint64_t>(), kMost));
  }
  if (json.is_number_integer()) return 0;  // a negative one
  throw RequestError(kInvalidParams, "a position is not a whole number");
}

}  // namespace

const Json& MemberAt(const Json& json, const char* path) {
  static const Json null;
  const Json::json_pointer pointer(path);
  return json.contains(pointer) ? json.at(pointer) : null;
}

Client ReadClient(const Json& params) {
  const auto has = [&params](const char* path) {
    return IsTrueAt(MemberAt(params, "/capabilities"), path);
  };
  const auto lists = [&params](const char* path, std::string_view word) {
    return Lists(MemberAt(MemberAt(params, "/capabilities"), path), word);
  };
  const bool takes_utf8 = lists("/general/positionEncodings", "utf-8");
  return {
      .encoding = takes_utf8 ? PositionEncoding::kUtf8 : PositionEncoding::kUtf16,
      .wants_notes = IsTrueAt(params, "/initializationOptions/notes"),
      .takes_snippets = has("/textDocument/completion/completionItem/snippetSupport"),
      .takes_symbol_trees = has("/textDocument/documentSymbol/hierarchicalDocumentSymbolSupport"),
      .takes_versions = has("/workspace/workspaceEdit/documentChanges"),
      .takes_markdown_hover = lists("/textDocument/hover/contentFormat", "markdown"),
      .takes_markdown_completion =
          lists("/textDocument/completion/completionItem/documentationFormat", "markdown"),
  };
}

const std::vector<vexor::Finding>& FindingsOf(OpenDocument& document) {
  if (!document.findings) {
    const std::string& content = document.text.text();
    document.findings.emplace();
    if (vexor::MayBeConfiguration(content)) document.findings = vexor::CheckTypedText(content);
  }
  return *document.findings;
}

Position ReadPosition(const Json& json) {
  return {.line = ReadCount(json.at("line")), .character = ReadCount(json.at("character"))};
}

TextRange ReadRange(const Json& json, const TextDocument& text) {
  const std::size_t begin = text.OffsetOf(ReadPosition(json.at("start")));
  const std::size_t end = text.OffsetOf(ReadPosition(json.at("end")));
  return {.begin = std::min(begin, end), .end = std::max(begin, end)};
}

Json MakePosition(const TextDocument& text, std::size_t offset) {
  const Position position = text.PositionOf(offset);
  return {{"line", position.line}, {"character", position.character}};
}

Json MakeRange(const TextDocument& text, TextRange range) {
  return {{"start", MakePosition(text, range.begin)}, {"end", MakePosition(text, range.end)}};
}

}  // namespace tools::vexorcfg::lsp
