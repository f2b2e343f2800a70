#include "line_diff.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <vector>

#include "sequence_match.h"

namespace tools::vexorcfg {
namespace {

constexpr std::size_t kContext = 3;

using Lines = std::vector<std::string_view>;

Lines SplitLines(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    if (lines.back().ends_with('\r')) lines.back().remove_suffix(1);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string_view Trimmed(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(" \t") + 1 - first);
}

// Lines that differ only in white space at their ends match.
std::vector<std::size_t> MatchLines(const Lines& a, const Lines& b) {
  Lines trimmed_a;
  Lines trimmed_b;
  std::ranges::transform(a, std::back_inserter(trimmed_a), Trimmed);
  std::ranges::transform(b, std::back_inserter(trimmed_b), Trimmed);
  return MatchSequences(trimmed_a, trimmed_b);
}

struct DiffLine {
  char mark;  // ' ', '-' or '+'
  std::string_view text;
};

std::vector<DiffLine> MarkLines(const Lines& a, const Lines& b) {
  const std::vector<std::size_t> partners = MatchLines(a, b);
  std::vector<DiffLine> lines;
  std::size_t next = 0;  // in b
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (partners[i] == kNoPartner) {
      lines.push_back({'-', a[i]});
      continue;
    }
    while (next < partners[i]) lines.push_back({'+', b[next++]});
    lines.push_back({' ', b[next++]});
  }
  while (next < b.size()) lines.push_back({'+', b[next++]});
  return lines;
}

// Two changes are in separate hunks if more unchanged lines lie between them than both contexts
// show.
std::size_t FindEndOfHunk(std::span<const DiffLine> lines, std::size_t start) {
  std::size_t last_change = start;
  for (std::size_t i = start; i < lines.size() && i <= last_change + 2 * kContext; ++i) {
    if (lines[i].mark != ' ') last_change = i;
  }
  return std::min(last_change + 1 + kContext, lines.size());
}

std::string FormatRange(std::size_t before, std::size_t count) {
  // For an empty range, the format has the number of the line before it.
  return std::to_string(count == 0 ? before : before + 1) + "," + std::to_string(count);
}

}  // namespace

std::string DiffLines(std::string_view name_a, std::string_view a, std::string_view name_b,
                      std::string_view b) {
  const Lines lines_of_a = SplitLines(a);
  const Lines lines_of_b = SplitLines(b);
  const std::vector<DiffLine> lines = MarkLines(lines_of_a, lines_of_b);
  std::string hunks;
  std::size_t a_before = 0;  // lines of each text before `done`
  std::size_t b_before = 0;
  std::size_t done = 0;
  const auto is_change = [](const DiffLine& line) { return line.mark != ' '; };
  for (auto change = std::ranges::find_if(lines, is_change); change != lines.end();) {
    const auto at = static_cast<std::size_t>(change - lines.begin());
    const std::size_t start = std::max(done, at - std::min(at, kContext));
    const std::size_t end = FindEndOfHunk(lines, at);
    a_before += start - done;
    b_before += start - done;
    std::string body;
    std::size_t a_count = 0;
    std::size_t b_count = 0;
    for (std::size_t i = start; i < end; ++i) {
      body.append(1, lines[i].mark).append(lines[i].text).append("\n");
      if (lines[i].mark != '+') ++a_count;
      if (lines[i].mark != '-') ++b_count;
    }
    hunks += "@@ -" + FormatRange(a_before, a_count) + " +" + FormatRange(b_before, b_count) +
             " @@\n" + body;
    a_before += a_count;
    b_before += b_count;
    done = end;
    change = std::find_if(lines.begin() + static_cast<std::ptrdiff_t>(end), lines.end(), is_change);
  }
  if (hunks.empty()) return {};
  return std::string("--- ").append(name_a).append("\n+++ ").append(name_b).append("\n") + hunks;
}

}  // namespace tools::vexorcfg
