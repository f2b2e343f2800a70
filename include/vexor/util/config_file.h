// Small settings files of key=value lines, which programs use beside the XML configuration.
//
//   ; a semicolon begins a comment
//   rate = 5 ; per second
//   a=b=c                      the value is "b=c"
//
// There is one entry per line. The key is the text before the first "=", up to its first blank or
// tab; the value is the text after it, without the blanks and tabs around it. Empty and blank lines
// are skipped. A line without "=", key or value, and a key that occurs twice, are fatal: prints a
// message on standard output, waits for the user and ends the process with exit status 1.
//
// Several threads may read one object at the same time, but not while one writes.
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
  // Reads the file. A file that cannot be opened counts as empty, without a message. A malformed
  // file ends the process.
  explicit ConfigFile(const std::string& file_name);

  // Returns whether the file has this key. Case matters.
  [[nodiscard]] bool KeyExists(const std::string& key) const;

  // Returns the value of the key, "none" if there is no such key. Case matters.
  [[nodiscard]] std::string GetValueOfKey(const std::string& key) const;

  // Adds or changes the key and rewrites the file: all entries as key=value, sorted by key, without
  // comments and empty lines. Returns whether the new content is on the disk; otherwise the file
  // has its old content. Two exceptions depend on the folder. If no file can be created in it, the
  // file is written in place, and a failure may leave a part of it. If it cannot be synchronised, a
  // power cut may bring back the old content. Key and value are written unchanged: the caller makes
  // sure that the line can be read again.
  bool WriteKeyValue(const std::string& key, const std::string& value);

 private:
  std::map<std::string, std::string> contents_;
  std::string file_name_;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
