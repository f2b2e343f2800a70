#include "config/check/trace_check.h"

#include <optional>
#include <stdexcept>
#include <vector>

#include "config/check/content_check.h"
#include "config/file/element_walk.h"
#include "config/file/trace_entries.h"
#include "config/model/element_path.h"
#include "config/tables/sections.h"
#include "config/texts/word_list.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

// Returns the current form of the entry. For a malformed one, adds a finding and returns nothing.
std::vector<std::string> BringUpToDate(const XMLElement& element, const std::string& entry,
                                       const TraceMigration& migration, const std::string& path,
                                       Findings& findings) {
  std::vector<std::string> current;
  try {
    migration.Append(entry, current);
  } catch (const std::out_of_range&) {
    findings
        .Add(FindingKind::kMalformedTrace, element, path, entry,
             "the file cannot be read: malformed trace entry")
        .expected = "test_target_code, such as CSTATES_Core_Con:10";
  }
  return current;
}

// For a version with which no entry can be read, adds a finding and returns nothing.
std::optional<TraceMigration> MakeMigration(const XMLElement& element, const std::string& path,
                                            const std::string& version, Findings& findings) {
  try {
    return TraceMigration(version);
  } catch (const std::out_of_range&) {
    findings
        .Add(FindingKind::kTraceVersion, element, path, version,
             "the file cannot be read: trace entries need a version of four pieces")
        .expected = GetVersionText();
    return std::nullopt;
  }
}

}  // namespace

void CheckTraces(const XMLElement& element, const std::string& path, const std::string& version,
                 Findings& findings, UnknownNames& unknown) {
  CheckStrayText(element, path, findings);
  const auto migration = MakeMigration(element, path, version, findings);
  std::size_t count = 0;
  for (const XMLElement& child : ChildElements(element)) {
    const std::string child_path = EntryPath(JoinPath(path, kTraceEntry), ++count);
    CheckAttributes(child, child_path, findings);
    if (!CheckLeaf(child, child_path, findings)) continue;
    const std::string entry(TextOf(child));
    if (entry.empty() || !migration) continue;
    const auto current = BringUpToDate(child, entry, *migration, child_path, findings);
    if (current.empty()) continue;
    if (current.front() == entry) {
      unknown.CheckTestOfTrace(child, entry, child_path);
    } else {
      Finding& finding = findings.Add(FindingKind::kOlderTrace, child, child_path, entry,
                                      "older form of a trace entry");
      finding.expected = JoinWithAnd(Words(current.begin(), current.end()));
      if (current.size() == 1) finding.suggestion = current.front();
      finding.is_older_form = true;
    }
  }
}

}  // namespace vexor
