// Checks of the settings under "SysConfiguration". The library stores these as they are, and the
// test programs interpret them, so that names unknown here may be valid: a name or value near a
// known one is a warning, any other at most a note.
#pragma once

#include <tinyxml2.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "config/check/findings.h"
#include "config/check/system_names.h"
#include "config/check/unknown_names.h"
#include "config/tables/system_setup.h"

namespace vexor {

class SystemCheck {
 public:
  // Keeps references to both arguments.
  SystemCheck(Findings& findings, UnknownNames& unknown) : findings_(findings), unknown_(unknown) {}

  // Checks an "ITEM" of the list: "Socket; Name; Value".
  void CheckItem(const tinyxml2::XMLElement& item, const SystemListRow& list,
                 const std::string& path);

  // Checks a named value of the list.
  void CheckValue(const tinyxml2::XMLElement& value, const SystemListRow& list,
                  const std::string& path);

 private:
  // What is wrong with one part of a setting: its socket, name or value.
  struct Issue {
    FindingKind kind;
    std::string what;
    std::string expected = {};
    std::string_view meant = {};  // the suggested replacement; may be empty
    bool is_note = false;         // rather than of the kind's severity
  };

  [[nodiscard]] static std::optional<Issue> CheckSocket(std::string_view socket);
  [[nodiscard]] std::optional<Issue> CheckSettingName(const SystemListRow& list,
                                                      std::string_view name);
  [[nodiscard]] std::optional<Issue> CheckSettingValue(const SystemListRow& list,
                                                       std::string_view name,
                                                       std::string_view value);

  void AddMalformed(const tinyxml2::XMLElement& item, const std::string& path,
                    std::string_view text);
  const SettingNames& NamesOf(const SystemListRow& list);
  const SystemListRow* FindListOf(std::string_view name);
  Finding& Add(const tinyxml2::XMLElement& at, const std::string& path, std::string_view text,
               const Issue& issue);

  Findings& findings_;
  UnknownNames& unknown_;
  std::map<const SystemListRow*, SettingNames> names_;  // a cache, filled by NamesOf
};

}  // namespace vexor
