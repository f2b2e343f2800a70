#include "line_diff.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

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

// How deep ranges are divided. Bounds the time for texts that are made to take long.
constexpr int kMostDivisions = 32;

// A range of lines of each text.
struct Ranges {
  std::size_t a, a_end, b, b_end;
  int divisions;
};

// Pairs the common lines of two texts in order (Bram Cohen's patience diff): first those at both
// ends, then the lines that occur once in each text. The ranges between these are divided in the
// same way.
class Matcher {
 public:
  Matcher(const Lines& a, const Lines& b) : a_(a), b_(b) {}

  // Returns for each line of `a` its partner in `b`, or kNone.
  std::vector<std::size_t> Match() {
    partners_.assign(a_.size(), kNone);
    std::vector<Ranges> open = {{0, a_.size(), 0, b_.size(), 0}};
    while (!open.empty()) {
      Ranges ranges = open.back();
      open.pop_back();
      MatchEnds(ranges);
      if (ranges.divisions < kMostDivisions) Divide(ranges, open);
    }
    return std::move(partners_);
  }

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

 private:
  using Pair = std::pair<std::size_t, std::size_t>;

  [[nodiscard]] bool AreEqual(std::size_t a, std::size_t b) const {
    return Trimmed(a_[a]) == Trimmed(b_[b]);
  }

  void MatchEnds(Ranges& r) {
    while (r.a < r.a_end && r.b < r.b_end && AreEqual(r.a, r.b)) partners_[r.a++] = r.b++;
    while (r.a < r.a_end && r.b < r.b_end && AreEqual(r.a_end - 1, r.b_end - 1)) {
      partners_[--r.a_end] = --r.b_end;
    }
  }

  void Divide(const Ranges& r, std::vector<Ranges>& open) {
    Ranges part = r;
    ++part.divisions;
    for (const auto& [a, b] : LongestRise(UniqueLines(r))) {
      partners_[a] = b;
      open.push_back({part.a, a, part.b, b, part.divisions});
      part.a = a + 1;
      part.b = b + 1;
    }
    if (part.a != r.a) open.push_back(part);
  }

  // The lines that occur exactly once in each range, in the order of `a`.
  [[nodiscard]] std::vector<Pair> UniqueLines(const Ranges& r) const {
    struct Places {
      std::size_t in_a = 0, in_b = 0, b = 0;
    };
    std::unordered_map<std::string_view, Places> places;
    for (std::size_t i = r.a; i < r.a_end; ++i) ++places[Trimmed(a_[i])].in_a;
    for (std::size_t i = r.b; i < r.b_end; ++i) {
      Places& place = places[Trimmed(b_[i])];
      ++place.in_b;
      place.b = i;
    }
    std::vector<Pair> unique;
    for (std::size_t i = r.a; i < r.a_end; ++i) {
      const Places& place = places[Trimmed(a_[i])];
      if (place.in_a == 1 && place.in_b == 1) unique.emplace_back(i, place.b);
    }
    return unique;
  }

  // The longest subsequence of the pairs with ascending second numbers, by patience sorting.
  static std::vector<Pair> LongestRise(const std::vector<Pair>& pairs) {
    std::vector<std::size_t> tops;  // of the piles: indices of pairs
    std::vector<std::size_t> before(pairs.size(), kNone);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      const auto pile = std::ranges::lower_bound(
          tops, pairs[i].second, {}, [&pairs](std::size_t top) { return pairs[top].second; });
      if (pile != tops.begin()) before[i] = *std::prev(pile);
      if (pile == tops.end()) {
        tops.push_back(i);
      } else {
        *pile = i;
      }
    }
    std::vector<Pair> rise;
    for (std::size_t i = tops.empty() ? kNone : tops.back(); i != kNone; i = before[i]) {
      rise.push_back(pairs[i]);
    }
    std::ranges::reverse(rise);
    return rise;
  }

  const Lines& a_;
  const Lines& b_;
  std::vector<std::size_t> partners_;
};

struct DiffLine {
  char mark;  // ' ', '-' or '+'
  std::string_view text;
};

std::vector<DiffLine> MarkLines(const Lines& a, const Lines& b) {
  const std::vector<std::size_t> partners = Matcher(a, b).Match();
  std::vector<DiffLine> lines;
  std::size_t next = 0;  // in b
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (partners[i] == Matcher::kNone) {
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
