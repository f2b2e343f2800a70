// Questions about files and paths.
//
// Both "/" and "\" separate the pieces of a path, on every platform. Any thread may call; nothing
// here throws for a file that is missing or cannot be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "vexor/export.h"

// Returns whether there is a file or a folder of this path.
VEXOR_EXPORT bool DoesFileExist(const std::string& path);

// Returns whether the file has no byte to read; also true for one that cannot be opened.
VEXOR_EXPORT bool IsFileEmpty(const std::string& path);

// Returns what follows the last separator, the whole text when there is none:
// "C:\logs\run.csv" gives "run.csv".
VEXOR_EXPORT std::string GetFileBaseName(std::string_view path);

// Returns the text up to and including the last separator, nothing when there is none:
// "C:\logs\run.csv" gives "C:\logs\".
VEXOR_EXPORT std::string GetFilePath(std::string_view path);

// Returns whether a line of the file contains the text, and gives the first such line without its
// line end in `line`, which otherwise stays as it is. Prints "can't open" and a line end when the
// file cannot be opened. Case matters.
VEXOR_EXPORT bool FindLineInFile(const std::string& file, std::string_view text, std::string& line);

// Returns the number, from 1, of the first line that contains the text; 0 when there is none and -1
// when the file cannot be opened. Case matters.
VEXOR_EXPORT std::int32_t FindStrInFile(const std::string& file, std::string_view text);

// Returns the bytes of the file, or with `unify_line_ends` its text with every line end as "\n".
// The result is empty when the file cannot be opened.
VEXOR_EXPORT std::string ReadFile(const std::string& file, bool unify_line_ends);

// Returns the names of the regular files in the folder, sorted; none for a missing folder and for
// an empty text. "." is the current folder.
VEXOR_EXPORT std::vector<std::string> GetFilesInFolder(const std::string& folder);

// Returns whether the path is relative: it begins neither with a separator nor with a drive letter,
// ":" and a separator. The answer is the same on every platform.
VEXOR_EXPORT bool IsRelativePath(std::string_view path);

namespace vexor {

// Makes the folder and those above it that are missing. Returns no error when it is there
// afterwards, or was before; an empty path asks for none. The error, that of the first folder that
// cannot be made, compares with std::errc.
VEXOR_EXPORT std::error_code MakeFolders(const std::string& path);

// Gives the file this content and returns no error once the new content is on the disk. After an
// error the old content is there, or the new one, whole. A link is followed and the file's
// permissions stay; what is no regular file, such as a device, is written in place. The error
// compares with std::errc.
VEXOR_EXPORT std::error_code SaveFile(const std::string& path, std::string_view content);

}  // namespace vexor
