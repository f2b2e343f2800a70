// Edits any bytes as a configuration: sets and removes options, mends, migrates.
#include "vexor/config/edit.h"

#include <algorithm>

#include "fuzz.h"
#include "vexor/config/check.h"
#include "vexor/config/describe.h"

namespace {

using vexor::EditedText;

std::size_t CountFaults(std::string_view content) {
  return static_cast<std::size_t>(std::ranges::count_if(
      vexor::CheckXMLConfigText(content),
      [](const vexor::Finding& finding) { return finding.severity == vexor::Severity::kError; }));
}

void RequireUnchanged(const EditedText& edited, std::string_view content) {
  if (!edited.error.empty()) Require(edited.content == content, "a failed edit changes nothing");
}

// Sets an option to a value that another one has.
void Set(std::string_view content, const vexor::Description& description, std::size_t choice) {
  const auto& settings = description.settings;
  const std::string& path = settings[choice % settings.size()].path;
  const std::string& value = settings[choice / 7 % settings.size()].value;
  const EditedText edited = vexor::SetOptionInText(content, path, value, {.force = true});
  RequireUnchanged(edited, content);
  if (!edited.error.empty()) return;
  const vexor::Description after = vexor::DescribeXMLConfigText(edited.content);
  Require(after.error.empty(), "what was edited can be read", after.error);
  const vexor::FoundSettings found = vexor::FindSettings(after, path);
  Require(found.error.empty() && !found.settings.empty(), "what was set is there", path);
  RequireUnchanged(vexor::UnsetOptionInText(content, path), content);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content = AsText(data, size);
  const vexor::Description description = vexor::DescribeXMLConfigText(content);
  if (!description.settings.empty()) {
    const std::size_t choice = std::hash<std::string_view>()(content);
    Set(content, description, choice);
    Set(content, description, choice / 1009);
  }
  const EditedText migrated = vexor::MigrateText(content);
  RequireUnchanged(migrated, content);
  const EditedText fixed = vexor::FixText(content);
  Require(fixed.error.empty(), "mending never fails");
  // What was not read before may have mistakes of its own.
  const bool reads_more = std::ranges::any_of(fixed.changes, [](const vexor::TextChange& change) {
    return change.what == "renamed" || change.what.starts_with("moved") || change.what == "escaped";
  });
  Require(reads_more || CountFaults(fixed.content) <= CountFaults(content),
          "mending makes nothing worse");
  Require(vexor::FixText(fixed.content).content == fixed.content, "mending twice is mending once");
  for (const vexor::Finding& finding : vexor::CheckXMLConfigText(content)) {
    Require(finding.at + finding.size <= content.size(), "findings are in the content");
  }
  return 0;
}
