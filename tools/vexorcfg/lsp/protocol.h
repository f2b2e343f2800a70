// What the requests of the protocol have in common: errors, the client's abilities, places and
// edits in documents.
#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "common/json.h"
#include "text_document.h"
#include "vexor/config/assist.h"
#include "vexor/config/check.h"

namespace tools::vexorcfg::lsp {

enum ErrorCode : int {
  kParseError = -32700,
  kInvalidRequest = -32600,
  kMethodNotFound = -32601,
  kInvalidParams = -32602,
  kInternalError = -32603,
  kServerNotInitialized = -32002,
  kRequestCancelled = -32800,
};

// A request that is answered with an error.
class RequestError : public std::runtime_error {
 public:
  RequestError(ErrorCode code, const std::string& message)
      : std::runtime_error(message), code_(code) {}
  [[nodiscard]] ErrorCode code() const { return code_; }

 private:
  ErrorCode code_;
};

// What the client can do, and how it wants to be served.
struct Client {
  PositionEncoding encoding = PositionEncoding::kUtf16;
  bool wants_notes = false;  // findings of this severity, too
  bool takes_snippets = false;
  bool takes_symbol_trees = false;
  bool takes_versions = false;  // in edits of a workspace
  bool takes_markdown_hover = false;
  bool takes_markdown_completion = false;
};

// Reads the parameters of "initialize". What has an unexpected type counts as absent.
Client ReadClient(const Json& params);

struct OpenDocument {
  std::string uri;  // as the client writes it
  Json version;
  TextDocument text;
  bool is_published = false;  // whether the client has the findings of this text
  std::optional<std::vector<vexor::Finding>> findings = {};  // of this text, once it was checked
};

// Returns the findings of the document, which is checked if its text changed.
const std::vector<vexor::Finding>& FindingsOf(OpenDocument& document);

// Returns a member at a path such as "/context/only", or null. Members may be of any type.
const Json& MemberAt(const Json& json, const char* path);

// Read parameters. They throw an exception of the JSON library for a wrong type, which is answered
// with kInvalidParams. The end of a range is not in front of its begin.
Position ReadPosition(const Json& json);

vexor::TextRange ReadRange(const Json& json, const TextDocument& text);

Json MakePosition(const TextDocument& text, std::size_t offset);
Json MakeRange(const TextDocument& text, vexor::TextRange range);

}  // namespace tools::vexorcfg::lsp
