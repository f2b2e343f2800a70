#include "sequence_match.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace tools::vexorcfg {
namespace {

using Sequence = std::vector<std::string_view>;

// How deep ranges are divided. Bounds the time for sequences that are made to take long.
constexpr int kMostDivisions = 32;

// A range of items of each sequence.
struct Ranges {
  std::size_t a, a_end, b, b_end;
  int divisions;
};

// Pairs the common items of two sequences in order (Bram Cohen's patience diff): first those at
// both ends, then the items that occur once in each. The ranges between these are divided in the
// same way.
class Matcher {
 public:
  Matcher(const Sequence& a, const Sequence& b) : a_(a), b_(b) {}

  std::vector<std::size_t> Match() {
    partners_.assign(a_.size(), kNoPartner);
    std::vector<Ranges> open = {{0, a_.size(), 0, b_.size(), 0}};
    while (!open.empty()) {
      Ranges ranges = open.back();
      open.pop_back();
      MatchEnds(ranges);
      if (ranges.divisions < kMostDivisions) Divide(ranges, open);
    }
    return std::move(partners_);
  }

 private:
  using Pair = std::pair<std::size_t, std::size_t>;

  [[nodiscard]] bool AreEqual(std::size_t a, std::size_t b) const { return a_[a] == b_[b]; }

  void MatchEnds(Ranges& r) {
    while (r.a < r.a_end && r.b < r.b_end && AreEqual(r.a, r.b)) partners_[r.a++] = r.b++;
    while (r.a < r.a_end && r.b < r.b_end && AreEqual(r.a_end - 1, r.b_end - 1)) {
      partners_[--r.a_end] = --r.b_end;
    }
  }

  void Divide(const Ranges& r, std::vector<Ranges>& open) {
    Ranges part = r;
    ++part.divisions;
    for (const auto& [a, b] : LongestRise(UniqueItems(r))) {
      partners_[a] = b;
      open.push_back({part.a, a, part.b, b, part.divisions});
      part.a = a + 1;
      part.b = b + 1;
    }
    if (part.a != r.a) open.push_back(part);
  }

  // The items that occur exactly once in each range, in the order of `a`.
  [[nodiscard]] std::vector<Pair> UniqueItems(const Ranges& r) const {
    struct Places {
      std::size_t in_a = 0, in_b = 0, b = 0;
    };
    std::unordered_map<std::string_view, Places> places;
    for (std::size_t i = r.a; i < r.a_end; ++i) ++places[a_[i]].in_a;
    for (std::size_t i = r.b; i < r.b_end; ++i) {
      Places& place = places[b_[i]];
      ++place.in_b;
      place.b = i;
    }
    std::vector<Pair> unique;
    for (std::size_t i = r.a; i < r.a_end; ++i) {
      const Places& place = places[a_[i]];
      if (place.in_a == 1 && place.in_b == 1) unique.emplace_back(i, place.b);
    }
    return unique;
  }

  // The longest subsequence of the pairs with ascending second numbers, by patience sorting.
  static std::vector<Pair> LongestRise(const std::vector<Pair>& pairs) {
    std::vector<std::size_t> tops;  // of the piles: indices of pairs
    std::vector<std::size_t> before(pairs.size(), kNoPartner);
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
    for (std::size_t i = tops.empty() ? kNoPartner : tops.back(); i != kNoPartner; i = before[i]) {
      rise.push_back(pairs[i]);
    }
    std::ranges::reverse(rise);
    return rise;
  }

  const Sequence& a_;
  const Sequence& b_;
  std::vector<std::size_t> partners_;
};

}  // namespace

std::vector<std::size_t> MatchSequences(const Sequence& a, const Sequence& b) {
  return Matcher(a, b).Match();
}

}  // namespace tools::vexorcfg
