// Checks of the settings under "SysConfiguration". The library keeps them as they are written and
// the programs that use it give them their meaning: a name or a value that is near a known one is a
// warning, one that is like none may be the user's own and is a note at most.
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
  // Keeps references to both.
  SystemCheck(Findings& findings, UnknownNames& unknown) : findings_(findings), unknown_(unknown) {}

  // Checks an "ITEM" of the list: "Socket; Name; Value".
  void CheckItem(const tinyxml2::XMLElement& item, const SystemListRow& list,
                 const std::string& path);

  // Checks a named value of the list.
  void CheckValue(const tinyxml2::XMLElement& value, const SystemListRow& list,
                  const std::string& path);

 private:
  // What is doubtful about a part of a setting.
  struct Doubt {
    Severity severity = Severity::kWarning;
    std::string what;
    std::string expected = {};
    std::string_view meant = {};  // what to write in its place
  };

  [[nodiscard]] static std::optional<Doubt> JudgeSocket(std::string_view socket);
  [[nodiscard]] std::optional<Doubt> JudgeName(const SystemListRow& list, std::string_view name);
  [[nodiscard]] std::optional<Doubt> JudgeValue(const SystemListRow& list, std::string_view name,
                                                std::string_view value);

  void AddMalformed(const tinyxml2::XMLElement& item, const std::string& path,
                    std::string_view text);
  const SettingNames& NamesOf(const SystemListRow& list);
  const SystemListRow* FindListOf(std::string_view name);
  Finding& Add(const tinyxml2::XMLElement& at, const std::string& path, std::string_view text,
               const Doubt& doubt);

  Findings& findings_;
  UnknownNames& unknown_;
  std::map<const SystemListRow*, SettingNames> names_;  // of the lists that were asked for
};

}  // namespace vexor
