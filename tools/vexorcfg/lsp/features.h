// What the server says of a document. The library does the work; here it gets the protocol's form.
#pragma once

#include <string_view>
#include <vector>

#include "common/json.h"
#include "protocol.h"

namespace tools::vexorcfg::lsp {

// Makes the parameters of "textDocument/publishDiagnostics".
Json MakeDiagnostics(OpenDocument& document, const Client& client);

// Whether the client wants to see the finding.
bool IsPublished(const vexor::Finding& finding, const Client& client);

// Returns the range of bytes that a finding is about: its line, if it has no column.
vexor::TextRange RangeOf(const vexor::Finding& finding, const TextDocument& text);

Json MakeDiagnostic(const vexor::Finding& finding, const TextDocument& text);

// Each of these makes the result of the request of its name.
Json MakeCompletion(OpenDocument& document, const Client& client, const Json& params);
Json MakeHover(OpenDocument& document, const Client& client, const Json& params);
Json MakeCodeActions(OpenDocument& document, const Client& client, const Json& params);
Json MakeSymbols(OpenDocument& document, const Client& client, const Json& params);
Json MakeFoldingRanges(OpenDocument& document, const Client& client, const Json& params);

// Returns the kinds of all code actions.
std::vector<std::string_view> ListCodeActionKinds();

}  // namespace tools::vexorcfg::lsp
