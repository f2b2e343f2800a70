// Functions on files and paths.
//
// Both "/" and "\" separate the parts of a path, on every system. Any thread may call. No function
// throws because a file is missing or cannot be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "vexor/export.h"

// Returns whether a file or folder with this path exists.
VEXOR_EXPORT bool DoesFileExist(const std::string& path);

// Returns whether the file is empty; true if it cannot be opened.
VEXOR_EXPORT bool IsFileEmpty(const std::string& path);

// Returns the text after the last separator, or the whole text if there is none:
// "C:\logs\run.csv" gives "run.csv".
VEXOR_EXPORT std::string GetFileBaseName(std::string_view path);

// Returns the text up to and including the last separator, empty text if there is none:
// "C:\logs\run.csv" gives "C:\logs\".
VEXOR_EXPORT std::string GetFilePath(std::string_view path);

// Returns whether a line of the file contains the text. Stores the first such line, without its
// line end, in `line`; leaves `line` unchanged if there is none. Prints "can't open" and a line end
// if the file cannot be opened. Case matters.
VEXOR_EXPORT bool FindLineInFile(const std::string& file, std::string_view text, std::string& line);

// Returns the number, from 1, of the first line that contains the text; 0 if there is none, -1 if
// the file cannot be opened. Case matters.
VEXOR_EXPORT std::int32_t FindStrInFile(const std::string& file, std::string_view text);

// Returns the bytes of the file or, with `unify_line_ends`, its text with every line end as "\n".
// Empty if the file cannot be opened.
VEXOR_EXPORT std::string ReadFile(const std::string& file, bool unify_line_ends);

// Returns the sorted names of the regular files in the folder; none for a missing folder and for
// empty text. "." is the current folder.
VEXOR_EXPORT std::vector<std::string> GetFilesInFolder(const std::string& folder);

// Returns whether the path is relative, that is, begins neither with a separator nor with a drive
// letter, ":" and a separator. The result is the same on every system.
VEXOR_EXPORT bool IsRelativePath(std::string_view path);

namespace vexor {

// Creates the folder and missing folders above it. Returns no error if the folder exists
// afterwards, and for an empty path; otherwise the error of the first folder that could not be
// created. The error compares with std::errc.
VEXOR_EXPORT std::error_code MakeFolders(const std::string& path);

// Replaces the content of the file. Returns no error once the new content is on the disk; after an
// error, the file has its complete old or new content. Links are followed, and the file keeps its
// permissions. A device or a pipe is written in place. The error compares with std::errc.
VEXOR_EXPORT std::error_code SaveFile(const std::string& path, std::string_view content);

}  // namespace vexor
