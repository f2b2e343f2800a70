// Tests that the patterns of the schema are never stricter than the grammars.
#include "vexor/config/schema.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <regex>

#include "config/tables/pm_test_table.h"
#include "config/tables/system_setup.h"
#include "config/texts/syntax_table.h"
#include "config/texts/text_pattern.h"
#include "util/text.h"
#include "vexor/util/random.h"

namespace vexor {
namespace {

// Collapses white space as a validator does for xs:token.
std::string Collapsed(std::string_view text) {
  std::string collapsed;
  for (const char c : TrimSpace(text)) {
    const bool is_space = TrimSpace({&c, 1}).empty();
    if (!is_space || !collapsed.ends_with(' ')) collapsed += is_space ? ' ' : c;
  }
  return collapsed;
}

// Returns an option for each grammar.
std::map<Syntax, const OptionRow*> OptionsBySyntax() {
  std::map<Syntax, const OptionRow*> options;
  for (const PmTestRow& test : PmTests()) {
    for (const OptionRow& option : test.options) options.emplace(option.syntax, &option);
  }
  for (const OptionRow& option : kOverwriteOptions) options.emplace(option.syntax, &option);
  for (const OptionRow& option : kSettingOptions) options.emplace(option.syntax, &option);
  for (const OptionRow& option : kOsValues) options.emplace(option.syntax, &option);
  return options;
}

std::string RandomText(UserRand& random, const OptionRow& option) {
  constexpr auto kPieces = std::to_array<std::string_view>(
      {"Specific:", "Any:",   "C1",     "C10",     "C6r",     "[",      "]",       ":",      ":",
       ";",         ",",      "-",      "=",       " ",       "  ",     "0x1F",    "0",      "7",
       "254",       "P0",     "Pn",     "P0...Pn", "P1...Pn", "P1..Pn", "Turbo",   "++",     "--",
       " - -",      "All",    "ALL",    "XX",      "msec",    "SEC",    "usec",    "xUSECx", "hour",
       "Ticks",     "PerSet", "#set",   "Invalid", "Default", "FF",     "a.b-c_d", "sec:5",  "1:2",
       "1 :2: 3",   "10.",    "S0i2-0", "PS-ON"});
  Words words = GetWords(option);
  words.insert(words.end(), kPieces.begin(), kPieces.end());
  words.insert(words.end(), 5, GetSyntax(option.syntax).example);
  std::string text;
  for (std::uint32_t pieces = random.NextUint() % 9; pieces > 0; --pieces) {
    text += words[random.NextUint() % words.size()];
  }
  if (random.NextUint() % 4 != 0) return text;
  for (char& c : text) c = random.NextUint() % 2 != 0 ? ToUpper(c) : c;
  return text;
}

TEST(Schema, PatternsAcceptWhatTheGrammarsAccept) {
  UserRand random(5);
  const std::map<Syntax, const OptionRow*> options = OptionsBySyntax();
  ASSERT_EQ(options.size(), Syntaxes().size());
  for (const auto& [syntax, option] : options) {
    const std::string name(GetSyntax(syntax).name);
    const std::string pattern = MakePattern(*option);
    const bool takes_any = syntax == Syntax::kFreeText || syntax == Syntax::kKnobs;
    ASSERT_EQ(pattern.empty(), takes_any) << name;
    if (pattern.empty()) continue;
    const std::regex expression(pattern);
    EXPECT_FALSE(std::regex_match("no such text!", expression)) << name;
    EXPECT_TRUE(std::regex_match("", expression)) << name;
    EXPECT_TRUE(std::regex_match(std::string(option->reset), expression)) << name;
    int good = 0;
    for (int round = 0; round < 3000; ++round) {
      const std::string text(TrimSpace(RandomText(random, *option)));
      if (CheckOption(*option, text)) continue;
      EXPECT_TRUE(std::regex_match(Collapsed(text), expression)) << name << ": " << text;
      if (!text.empty()) ++good;
    }
    EXPECT_GT(good, 0) << name;
  }
}

}  // namespace
}  // namespace vexor
