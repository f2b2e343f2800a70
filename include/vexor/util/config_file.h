// Small settings files of key=value lines, kept beside the XML configuration.
//
//   ; what follows a semicolon is a comment
//   rate = 5 ; per second
//   a=b=c                      the value is "b=c"
//
// One entry a line. The key is the text before the first "=", cut at its first blank or tab; the
// value is the text after it, without the blanks and tabs around it. Empty lines and lines of
// blanks are skipped. A line without "=", without key or without value, and a key that occurs
// twice, are fatal: the message goes to standard output, the process waits for the user and then
// ends with exit status 1.
//
// Several threads may read one object; a writer needs it for itself.
#pragma once

#include <map>
#include <string>

#include "vexor/export.h"

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // private members of the standard library's types; see export.h
#endif

class VEXOR_EXPORT ConfigFile {
 public:
  // Reads the file; one that cannot be opened gives no entries and no message. A malformed one ends
  // the process.
  explicit ConfigFile(const std::string& file_name);

  // Returns whether the file has this key. Case matters.
  [[nodiscard]] bool KeyExists(const std::string& key) const;

  // Returns the value of the key, "none" when there is no such key. Case matters.
  [[nodiscard]] std::string GetValueOfKey(const std::string& key) const;

  // Sets the key, new or not, and rewrites the file: every entry as key=value, sorted by key,
  // without the comments and empty lines it had. Returns whether the file has the new content and
  // that is on the disk; otherwise the old content is there, whole. Two things depend on the
  // folder. In one where no file can be made the file is written in place: a failure then may leave
  // a part of it. Of one that cannot be synchronised a power cut may bring back the old content.
  // Key and value must be such that a line of them can be read again: they are written as they are.
  bool WriteKeyValue(const std::string& key, const std::string& value);

 private:
  std::map<std::string, std::string> contents_;
  std::string file_name_;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
