// Finds the files for an argument of a command: files, folders and wildcards.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tools {

struct FoundFile {
  std::string path;
  std::string failure;  // why nothing can be read there; empty for a file
};

// Returns the files for an argument; at least one entry, which may say what is wrong:
//
//   a file, or "-"   the argument itself, whether it can be read or not
//   a folder         all files with the extension (".xml", in any case) in it and in the folders
//                    below it, sorted by name; hidden folders and links to folders are skipped
//   a wildcard       a name with "*" or "?" that no file has: the files for all matching names, in
//                    order; case matters if it does for file names
std::vector<FoundFile> FindFiles(const std::string& argument, std::string_view extension);

// Returns the sorted paths that match a wildcard; the argument itself if it is not a wildcard or
// nothing matches.
std::vector<std::string> ExpandWildcard(const std::string& argument);

}  // namespace tools
