#include "comparison.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>

#include "sequence_match.h"
#include "vexor/config/syntaxes.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Setting;

// Finds the syntax of a setting by its path.
class Syntaxes {
 public:
  Syntaxes() {
    for (const vexor::OptionInfo& option : vexor::GetOptions()) {
      names_.emplace(option.path, option.syntax.name);
    }
  }

  // The paths of list entries end with their number; those of registers contain it.
  [[nodiscard]] std::string_view Find(std::string path) const {
    for (std::size_t open = path.find('['); open != std::string::npos; open = path.find('[')) {
      const std::size_t close = path.find(']', open);
      if (close == std::string::npos) return {};
      path.erase(open, close + 1 - open);
    }
    const auto found = names_.find(path);
    return found == names_.end() ? std::string_view() : found->second;
  }

 private:
  std::unordered_map<std::string, std::string_view> names_;
};

// The settings of one entry of a list; otherwise one setting.
using Entry = std::span<const Setting>;

// The entries of one list. A setting that is not in a list is a list of one entry, and one whose
// name stands several times, as names of values may, one of several.
struct List {
  std::string_view path;  // without the numbers of the entries
  std::vector<Entry> entries;
};

// Returns the path of the entry that the setting belongs to: "X/PCIE[2]" for "X/PCIE[2]/Bus".
std::string_view EntryPathOf(const Setting& setting) {
  const std::string_view path = setting.path;
  const std::size_t close = path.find(']');
  return close == std::string_view::npos ? path : path.substr(0, close + 1);
}

std::string_view ListPathOf(const Setting& setting) {
  return std::string_view(setting.path).substr(0, setting.path.find('['));
}

// The lists of a description, in the order in which they begin.
class Lists {
 public:
  explicit Lists(const Description& description) {
    Entry rest = description.settings;
    while (!rest.empty()) {
      const Setting& first = rest.front();
      const bool is_numbered = first.path.find('[') != std::string::npos;
      std::size_t size = 1;
      while (is_numbered && size < rest.size() && EntryPathOf(rest[size]) == EntryPathOf(first)) {
        ++size;
      }
      Of(ListPathOf(first)).entries.push_back(rest.first(size));
      rest = rest.subspan(size);
    }
  }

  [[nodiscard]] const std::vector<List>& all() const { return lists_; }

  [[nodiscard]] const List* Find(std::string_view path) const {
    const auto found = indices_.find(path);
    return found == indices_.end() ? nullptr : &lists_[found->second];
  }

 private:
  List& Of(std::string_view path) {
    const auto [found, is_new] = indices_.emplace(path, lists_.size());
    if (is_new) lists_.push_back({.path = path, .entries = {}});
    return lists_[found->second];
  }

  std::vector<List> lists_;
  std::unordered_map<std::string_view, std::size_t> indices_;
};

class Comparer {
 public:
  void CompareLists(const List& a, const List& b) {
    const std::vector<std::size_t> partners = Align(a, b);
    std::size_t next = 0;  // in b
    for (std::size_t i = 0; i < a.entries.size(); ++i) {
      if (partners[i] == kNoPartner) {
        AddOnlyA(a.entries[i]);
        continue;
      }
      while (next < partners[i]) AddOnlyB(b.entries[next++]);
      CompareEntries(a.entries[i], b.entries[next++]);
    }
    while (next < b.entries.size()) AddOnlyB(b.entries[next++]);
  }

  void AddOnlyA(const Entry& a) {
    for (const Setting& setting : a) FindMisread(setting);
    result_.differences.push_back({std::string(EntryPathOf(a.front())), a, {}});
  }

  void AddOnlyB(const Entry& b) {
    result_.differences.push_back({std::string(EntryPathOf(b.front())), {}, b});
  }

  Comparison Release() && { return std::move(result_); }

 private:
  // Returns for each entry of `a` the index of the entry of `b` to compare it with. Between entries
  // of one meaning, the others are paired in their order.
  [[nodiscard]] std::vector<std::size_t> Align(const List& a, const List& b) const {
    std::vector<std::size_t> partners(a.entries.size(), kNoPartner);
    if (a.entries.size() > 1 || b.entries.size() > 1) {
      const std::vector<std::string> meanings_a = MeaningsOf(a);
      const std::vector<std::string> meanings_b = MeaningsOf(b);
      partners = MatchSequences({meanings_a.begin(), meanings_a.end()},
                                {meanings_b.begin(), meanings_b.end()});
    }
    std::vector<std::size_t> ends(partners.size());  // the entries of b before the next partner
    std::size_t end = b.entries.size();
    for (std::size_t i = partners.size(); i-- > 0;) {
      if (partners[i] != kNoPartner) end = partners[i];
      ends[i] = end;
    }
    std::size_t next = 0;  // the first entry of b that may be paired
    for (std::size_t i = 0; i < partners.size(); ++i) {
      if (partners[i] == kNoPartner && next < ends[i]) partners[i] = next;
      if (partners[i] != kNoPartner) next = partners[i] + 1;
    }
    return partners;
  }

  [[nodiscard]] std::vector<std::string> MeaningsOf(const List& list) const {
    std::vector<std::string> meanings;
    for (const Entry& entry : list.entries) {
      std::string& meaning = meanings.emplace_back();
      for (const Setting& setting : entry) {
        const std::string text = vexor::DescribeText(syntaxes_.Find(setting.path), setting.value);
        meaning.append(text.empty() ? setting.value : text).append(1, '\0');
      }
    }
    return meanings;
  }

  // Entries of one list have the same settings.
  void CompareEntries(const Entry& a, const Entry& b) {
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
      const Setting& before = a[i];
      const Setting& after = b[i];
      FindMisread(before);
      if (!vexor::MeanTheSame(syntaxes_.Find(before.path), before.value, after.value)) {
        result_.differences.push_back({before.path, a.subspan(i, 1), b.subspan(i, 1)});
        continue;
      }
      result_.equal.push_back({.a = &before, .b = &after});
      if (before.value != after.value) ++result_.reworded;
    }
  }

  void FindMisread(const Setting& setting) {
    if (setting.text.empty()) return;
    if (!vexor::MeanTheSame(syntaxes_.Find(setting.path), setting.text, setting.value)) {
      result_.misread.push_back(&setting);
    }
  }

  const Syntaxes syntaxes_;
  Comparison result_;
};

}  // namespace

Comparison Compare(const Description& a, const Description& b) {
  const Lists lists_of_a(a);
  const Lists lists_of_b(b);
  Comparer comparer;
  for (const List& list : lists_of_a.all()) {
    const List* const other = lists_of_b.Find(list.path);
    comparer.CompareLists(list, other == nullptr ? List() : *other);
  }
  for (const List& list : lists_of_b.all()) {
    if (lists_of_a.Find(list.path) == nullptr) comparer.CompareLists(List(), list);
  }
  return std::move(comparer).Release();
}

Description DescribeDefaults() { return vexor::DescribeXMLConfigText("<VEXOR/>"); }

}  // namespace tools::vexorcfg
