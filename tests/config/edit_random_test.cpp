// Random edits and repairs of real and generated files. VEXOR_EDIT_ROUNDS sets their number.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "source_dir.h"
#include "vexor/config/check.h"
#include "vexor/config/describe.h"
#include "vexor/config/edit.h"
#include "vexor/config/syntaxes.h"
#include "vexor/config/writer.h"
#include "vexor/util/files.h"

namespace {

using vexor::Description;
using vexor::EditedText;
using vexor::Setting;

int CountRounds() {
  const char* const rounds = std::getenv("VEXOR_EDIT_ROUNDS");
  return rounds == nullptr ? 60 : std::atoi(rounds);
}

class Chance {
 public:
  std::size_t Below(std::size_t bound) { return engine_() % bound; }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  template <class Items>
  const auto& Pick(const Items& items) {
    return items[Below(items.size())];
  }

 private:
  std::mt19937_64 engine_{20261122};
};

std::vector<std::string> ReadBases() {
  std::vector<std::string> bases;
  for (const char* const name : {"lab.xml", "legacy.xml", "night.xml"}) {
    bases.push_back(ReadFile(std::string(VEXOR_SOURCE_DIR "/examples/") + name, false));
  }
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  bases.push_back(vexor::FormatXMLConfig(cfg));
  return bases;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
    text.replace(at, from.size(), to);
    at += to.size();
  }
}

// Returns the document in another manner of writing.
std::string Vary(std::string text, Chance& chance) {
  // Leaves lines out that hold a whole element.
  for (std::size_t i = chance.Below(12); i > 0; --i) {
    const std::size_t begin = text.rfind('\n', chance.Below(text.size())) + 1;
    const std::size_t end = text.find('\n', begin);
    const std::string line = text.substr(begin, end - begin);
    if (begin > 0 && line.find("</") != std::string::npos && line.find("</") > line.find('<') &&
        line.find("Version") == std::string::npos) {
      text.erase(begin, end + 1 - begin);
    }
  }
  if (chance.OneIn(3)) ReplaceAll(text, "</ActiveTime>", "</ActiveTime> <!-- as agreed -->");
  if (chance.OneIn(3)) ReplaceAll(text, "<CORE>", "<CORE><!-- cores -->");
  if (chance.OneIn(4)) ReplaceAll(text, "<TestMode>", "<TestMode >\t");
  if (chance.OneIn(5)) ReplaceAll(text, "<ConfigLoop>1<", "<ConfigLoop><![CDATA[1]]><");
  if (chance.OneIn(5)) ReplaceAll(text, "\n        <", "<");
  if (chance.OneIn(6)) ReplaceAll(text, "    ", "\t");
  if (chance.OneIn(3)) ReplaceAll(text, "\n", "\r\n");
  if (chance.OneIn(8)) text.insert(0, "\xEF\xBB\xBF");
  if (chance.OneIn(8)) ReplaceAll(text, "encoding=\"UTF-8\"", "encoding=\"ISO-8859-1\"");
  return text;
}

// Returns a text that the option accepts.
std::string MakeText(const vexor::OptionInfo& option, Chance& chance) {
  const std::string_view syntax = option.syntax.name;
  const std::vector<std::string> samples = {
      "msec:80", "true",   "false",  "17",  "0x10", "sec:1-5", "Specific:0,2-4",     "All",
      "None",    "S4",     "C1;C6;", "a&b", "x<y",  "\"q\"",   "gr\xC3\xBC\xC3\x9F", "Random",
      "5",       "Verify", "P0,Pn"};
  for (int i = 0; i < 30; ++i) {
    const std::string text =
        chance.OneIn(4) ? std::string(option.syntax.example) : chance.Pick(samples);
    if (!text.empty() && !vexor::CheckOptionText(option, text)) return text;
  }
  return syntax == "word" ? option.preset : std::string(option.syntax.example);
}

std::string LineOf(std::string_view text, int line) {
  for (; line > 1; --line) text.remove_prefix(text.find('\n') + 1);
  return std::string(text.substr(0, text.find('\n')));
}

// Expects that nothing but the option's own line changed, or lines were added in one place.
void ExpectLocal(const std::string& before, const std::string& after, const Setting& setting) {
  const auto size = std::min(before.size(), after.size());
  std::size_t head = 0;
  while (head < size && before[head] == after[head]) ++head;
  std::size_t tail = 0;
  while (tail < size - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
    ++tail;
  }
  const std::string_view changed =
      std::string_view(before).substr(head, before.size() - tail - head);
  const bool is_added = std::ranges::all_of(changed, [](char c) { return c == '/' || c == ' '; });
  if (is_added || setting.line == 0) {
    EXPECT_LE(changed.size(), 3U) << changed;
    return;
  }
  // A text of several lines is rare; these bases have none.
  EXPECT_EQ(std::ranges::count(changed, '\n'), 0) << changed;
  EXPECT_NE(LineOf(before, setting.line).find(changed), std::string::npos) << changed;
}

TEST(RandomEdits, OnlyTheOptionChanges) {
  Chance chance;
  const std::vector<std::string> bases = ReadBases();
  const std::vector<vexor::OptionInfo> options = vexor::GetOptions();
  int done = 0;
  for (int round = CountRounds(); round > 0; --round) {
    const std::string before = Vary(chance.Pick(bases), chance);
    const Description description = vexor::DescribeXMLConfigText(before);
    ASSERT_EQ(description.error, "");
    vexor::OptionInfo option = chance.Pick(options);
    if (!option.is_read || !option.stands_for.empty()) continue;
    if (option.path.find("CustomConfiguration") != std::string::npos) {
      option.path.insert(option.path.rfind('/'), "[1]");
    } else if (option.repeats) {
      option.path += "[1]";
    }
    const std::string text = MakeText(option, chance);
    SCOPED_TRACE(option.path + "=" + text);
    const EditedText edited = vexor::SetOptionInText(before, option.path, text);
    if (edited.error.find("holds elements") != std::string::npos) continue;
    // Another option depends on this one, or a trace entry on the version.
    const bool is_refused = edited.error.find("would change") != std::string::npos ||
                            edited.error.find("would read as") != std::string::npos ||
                            edited.error.starts_with("the file could not be read any more");
    if (is_refused) {
      EXPECT_EQ(edited.content, before);
      if (std::getenv("VEXOR_SHOW") != nullptr) std::puts(edited.error.c_str());
      continue;
    }
    ASSERT_EQ(edited.error, "") << before;
    const Description after = vexor::DescribeXMLConfigText(edited.content);
    const vexor::FoundSettings found = vexor::FindSettings(after, option.path);
    if (option.path == "Version") {
      EXPECT_EQ(after.version, text);
    } else {
      ASSERT_EQ(found.settings.size(), 1U);
      EXPECT_EQ(found.settings.front().value, text);
    }
    const vexor::FoundSettings old = vexor::FindSettings(description, option.path);
    Setting place = old.settings.empty() ? Setting() : old.settings.front();
    if (option.path == "Version") place.line = description.version_line;
    ExpectLocal(before, edited.content, place);
    ++done;
    if (HasFailure()) FAIL() << before << "\n=====\n" << edited.content;
  }
  EXPECT_GT(done, CountRounds() * 3 / 4);
  RecordProperty("done", done);
}

// Changes, drops or adds a letter of the word, or swaps two.
std::string Mistype(std::string word, Chance& chance) {
  const std::string original = word;
  while (word == original) {
    const std::size_t at = chance.Below(word.size());
    const char letter = static_cast<char>('a' + chance.Below(26));
    switch (chance.Below(4)) {
      case 0:
        word[at] = letter;
        break;
      case 1:
        if (word.size() > 2) word.erase(at, 1);
        break;
      case 2:
        word.insert(at, 1, letter);
        break;
      default:
        if (at + 1 < word.size()) std::swap(word[at], word[at + 1]);
        break;
    }
  }
  return word;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Mistypes the name of a random element in both tags, or a word of a random text that has a
// grammar. Returns false if it hit neither.
bool PlantTypo(std::string& text, const Description& description,
               const std::vector<vexor::OptionInfo>& options, Chance& chance) {
  const Setting& setting = chance.Pick(description.settings);
  const auto option = std::ranges::find(options, setting.path, &vexor::OptionInfo::path);
  if (setting.line == 0 || option == options.end()) return false;
  std::size_t begin = 0;
  for (int line = setting.line; line > 1; --line) begin = text.find('\n', begin) + 1;
  const std::size_t end = text.find('\n', begin);
  std::string line = text.substr(begin, end - begin);
  const std::size_t open = line.find('>');
  const std::size_t close = line.find("</");
  if (open == std::string::npos || close == std::string::npos || close < open) return false;
  if (chance.OneIn(2)) {
    const std::size_t first = line.find('<') + 1;
    const std::string name = line.substr(first, open - first);
    if (name.find_first_of(" /") != std::string::npos || name == "Name") return false;
    const std::string wrong = Mistype(name, chance);
    if (!IsLetter(wrong.front())) return false;
    ReplaceAll(line, "<" + name + ">", "<" + wrong + ">");
    ReplaceAll(line, "</" + name + ">", "</" + wrong + ">");
  } else {
    if (option->syntax.name == "text") return false;
    std::size_t first = open + 1 + chance.Below(close - open);
    while (first > open + 1 && IsLetter(line[first - 1])) --first;
    std::size_t last = first;
    while (IsLetter(line[last])) ++last;
    if (last - first < 2 || line.substr(open + 1, close - open - 1).starts_with("0x")) return false;
    line.replace(first, last - first, Mistype(line.substr(first, last - first), chance));
  }
  text.replace(begin, end - begin, line);
  return true;
}

std::size_t CountFaults(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      vexor::CheckXMLConfigText(text),
      [](const vexor::Finding& finding) { return finding.severity != vexor::Severity::kNote; }));
}

TEST(RandomEdits, TyposAreMended) {
  Chance chance;
  std::vector<std::string> bases = ReadBases();
  bases.erase(bases.begin() + 1);  // older names
  const std::vector<vexor::OptionInfo> options = vexor::GetOptions();
  int planted = 0;
  int noticed = 0;
  int mended = 0;
  for (int round = CountRounds(); round > 0; --round) {
    const std::string& base = chance.Pick(bases);
    std::string wrong = base;
    if (!PlantTypo(wrong, vexor::DescribeXMLConfigText(base), options, chance)) continue;
    ++planted;
    const std::size_t faults = CountFaults(wrong);
    if (faults <= CountFaults(base)) continue;
    ++noticed;
    const EditedText fixed = vexor::FixText(wrong);
    EXPECT_LE(CountFaults(fixed.content), faults);
    EXPECT_EQ(vexor::FixText(fixed.content).content, fixed.content);
    if (fixed.content == base) {
      ++mended;
    } else if (std::getenv("VEXOR_SHOW") != nullptr) {
      for (const auto& change : fixed.changes) {
        std::printf("%s: %s: %s -> %s\n", change.path.c_str(), change.what.c_str(),
                    change.before.c_str(), change.after.c_str());
      }
      for (const auto& finding : vexor::CheckXMLConfigText(fixed.content)) {
        if (finding.severity == vexor::Severity::kNote) continue;
        std::printf("  left: %s %s %s: %s / %s\n", std::string(finding.code).c_str(),
                    finding.path.c_str(), finding.text.c_str(), finding.what.c_str(),
                    finding.suggestion.c_str());
      }
    }
    if (HasFailure()) FAIL() << wrong;
  }
  std::printf("%d typos, %d noticed, %d mended\n", planted, noticed, mended);
  EXPECT_GE(mended * 10, noticed * 9);
}

}  // namespace
