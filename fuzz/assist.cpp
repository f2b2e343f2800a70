// Asks at a place of any bytes what an editor would ask. The first two bytes select the place, the
// rest is the document.
#include "vexor/config/assist.h"

#include <algorithm>

#include "fuzz.h"
#include "vexor/config/edit.h"

namespace {

void RequireInside(vexor::TextRange range, std::string_view content) {
  Require(range.begin <= range.end && range.end <= content.size(), "a range is inside", content);
}

std::string Apply(std::string content, const std::vector<vexor::TextReplacement>& replacements) {
  std::size_t behind = content.size();
  for (auto change = replacements.rbegin(); change != replacements.rend(); ++change) {
    RequireInside(change->range, content);
    Require(change->range.end <= behind, "replacements are in order", content);
    behind = change->range.begin;
    content.replace(change->range.begin, change->range.end - change->range.begin, change->text);
  }
  return content;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view content = AsText(data, size).substr(2);
  const std::size_t at = (data[0] * std::size_t{256} + data[1]) % (content.size() + 1);
  const vexor::Completions completions = vexor::CompleteText(content, at);
  RequireInside(completions.range, content);
  for (const vexor::Completion& item : completions.items) {
    Require(item.cursor <= item.text.size() && !item.label.empty(), "an item is whole", item.text);
  }
  if (const auto info = vexor::FindElementAt(content, at)) RequireInside(info->range, content);
  std::size_t begin = 0;
  for (const vexor::OutlineItem& item : vexor::OutlineText(content)) {
    RequireInside(item.range, content);
    Require(begin <= item.range.begin && item.range.begin <= item.name_range.begin &&
                item.name_range.end <= item.range.end,
            "the outline is in order", content);
    begin = item.range.begin;
  }
  vexor::MayBeConfiguration(content);
  const std::vector<vexor::Finding> findings = vexor::CheckTypedText(content);
  if (!findings.empty()) {
    for (const auto& repair : vexor::FindRepairs(content, findings[at % findings.size()])) {
      Require(Apply(std::string(content), repair.replacements) != content, "a repair changes",
              repair.title);
    }
  }
  const std::string mended = vexor::FixText(content).content;
  Require(Apply(std::string(content), vexor::FindReplacements(content, mended)) == mended,
          "replacements give the other text", content);
  return 0;
}
