// Texts from files, made fit for a line of output.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/status.h"

namespace tools {

// Returns the text on one line whatever it holds: control characters and bytes that are not UTF-8
// are shown as "\n" or "\x1b", and of a text of more than `most` bytes the beginning and its
// length.
std::string OneLine(std::string_view text, std::size_t most = 200);

// Returns the same in double quotes.
std::string Quote(std::string_view text);

// Appends the text as a JSON string. Bytes that are no UTF-8 become U+FFFD.
void AppendJson(std::string& out, std::string_view text);

// Returns "1 error", "2 errors".
std::string Count(std::size_t count, std::string_view noun);

// Returns a file's name as messages call it: on one line, in quotes when there would be nothing to
// see.
std::string NameFile(std::string_view path);

// Prints "TOOL: FILE: REASON" to standard error, behind what was printed so far, and returns
// the status of a command that could not run.
Status Refuse(std::string_view file, std::string_view reason);

}  // namespace tools
