#include "config/texts/syntax_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "source_dir.h"
#include "temporary_folder.h"
#include "vexor/config/syntaxes.h"

namespace vexor {
namespace {

bool TakesAnyText(const SyntaxRow& row) {
  return row.syntax == Syntax::kFreeText || HasOwnWords(row.syntax);
}

TEST(SyntaxTable, RowsAreComplete) {
  std::set<std::string_view> names;
  for (const SyntaxRow& row : Syntaxes()) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_NE(row.grammar, "") << row.name;
    EXPECT_EQ(GrammarOf(row.syntax).find('%'), std::string_view::npos) << row.name;
    EXPECT_FALSE(CheckSyntax(row.name, "")) << row.name;
    if (TakesAnyText(row)) continue;
    EXPECT_NE(row.example, "") << row.name;
    EXPECT_NE(row.bad, "") << row.name;
    EXPECT_FALSE(CheckSyntax(row.name, row.example)) << row.name;
    EXPECT_TRUE(CheckSyntax(row.name, row.bad)) << row.name;
    EXPECT_TRUE(CheckSyntax(row.name, ";?;")) << row.name;
  }
}

TEST(SyntaxTable, ExamplesAreDescribed) {
  const std::set<std::string_view> speak_for_themselves = {
      "text",     "boolean",      "word", "words",         "numbers",
      "ipv4",     "level",        "mode", "s0ix",          "power-scheme",
      "knobs",    "power-source", "peci", "peci-services", "peci-parameters",
      "peci-data"};
  for (const SyntaxRow& row : Syntaxes()) {
    EXPECT_EQ(DescribeText(row.name, row.example).empty(), speak_for_themselves.contains(row.name))
        << row.name;
    EXPECT_EQ(DescribeText(row.name, row.bad), "") << row.name;
  }
}

TEST(SyntaxTable, EverySyntaxIsFuzzed) {
  const std::string families = ReadBytes(std::string(VEXOR_SOURCE_DIR) + "/fuzz/families.cpp");
  for (const SyntaxRow& row : Syntaxes()) {
    const std::string start = "    {\"" + std::string(row.name) + "\", ";
    EXPECT_NE(families.find(start), std::string::npos) << row.name;
  }
}

TEST(SyntaxTable, WordsAreValid) {
  for (const SyntaxRow& row : Syntaxes()) {
    for (const std::string_view word : GetWords(row.syntax)) {
      const std::string text = std::string(word) + (word.ends_with(':') ? "0" : "");
      EXPECT_FALSE(CheckSyntax(row.name, text)) << row.name << ": " << text;
    }
  }
}

}  // namespace
}  // namespace vexor
