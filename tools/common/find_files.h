// The files that an argument of a command stands for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tools {

struct FoundFile {
  std::string path;
  std::string failure;  // why nothing can be read there; empty for a file to read
};

// Returns the files that the argument stands for, at least one, or what is wrong with it:
//
//   a file, or "-"   itself, whether it can be read or not
//   a folder         every file of the extension (".xml", in any case) in it and in the folders
//                    below, in the order of their names; hidden folders and links to folders are
//                    not entered
//   a wildcard       "*" and "?" in a name that is no file's: what the names that match stand for,
//                    in their order; case counts where it does for files
std::vector<FoundFile> FindFiles(const std::string& argument, std::string_view extension);

// Returns the paths that a wildcard ("*" and "?" in a name that is no file's) stands for, in their
// order; the argument itself when it is none, or nothing matches.
std::vector<std::string> ExpandWildcard(const std::string& argument);

}  // namespace tools
