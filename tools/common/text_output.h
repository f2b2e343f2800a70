// Makes texts from files safe to print.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/status.h"

namespace tools {

// Returns the text as one line: control characters and bytes that are not UTF-8 become "\n" or
// "\x1b". A text of more than `most` bytes is cut and followed by its length.
std::string OneLine(std::string_view text, std::size_t most = 200);

// Returns the same in double quotes.
std::string Quote(std::string_view text);

// Returns "1 error", "2 errors".
std::string Count(std::size_t count, std::string_view noun);

// Returns the name of a file for messages: on one line, and in quotes if it is empty.
std::string NameFile(std::string_view path);

// Prints "TOOL: FILE: REASON" to standard error, after flushing standard output, and returns the
// status of a command that could not run.
Status Refuse(std::string_view file, std::string_view reason);

}  // namespace tools
