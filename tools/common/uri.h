// Makes URIs for documents that name a file.
#pragma once

#include <string>
#include <string_view>

namespace tools {

// Returns the URI of a file: relative for a relative path, so that it can be found elsewhere, too.
std::string UriOfPath(std::string_view path);

// Returns the URI that the text is, with characters that no URI has escaped, or the URI of the path
// that it is. A URI begins with its scheme, of two letters or more: "C:" is a drive.
std::string UriOf(std::string_view text);

}  // namespace tools
