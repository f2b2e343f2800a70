// What the server knows of a document. Each function makes the result of one request, or the
// parameters of a notification; the library does the work.
#pragma once

#include <cstddef>

#include "common/json.h"
#include "protocol.h"

namespace tools::vexorcfg::lsp {

// Makes the parameters of "textDocument/publishDiagnostics".
Json MakeDiagnostics(OpenDocument& document, const Client& client);

// Returns the range of bytes that a finding is about: its line, if it has no column.
Span SpanOf(const vexor::Finding& finding, const TextDocument& text);

Json MakeDiagnostic(const vexor::Finding& finding, const TextDocument& text);

}  // namespace tools::vexorcfg::lsp
