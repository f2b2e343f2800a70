// What "vexorcfg explain" finds out about a name or a text, before it is printed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/status.h"
#include "vexor/config/check.h"
#include "vexor/config/syntaxes.h"
#include "vexor/vocabulary/pm_tests.h"

namespace tools::vexorcfg {

// A text that was judged by a syntax, as the value of an option or on its own.
struct JudgedText {
  vexor::SyntaxInfo syntax;
  std::vector<std::string> options;  // paths of the options, if it was judged as their value
  std::string text;
  std::optional<vexor::TextFault> fault;
  std::string meaning;
};

// A word of a syntax, or of options that have words of their own.
struct WordUse {
  std::string word;  // as the syntax spells it
  vexor::SyntaxInfo syntax;
  std::string meaning;
  std::vector<std::string> options;  // paths of the options that know the word
};

// A tag of error codes.
struct TagUse {
  std::string tag;  // "EC_C6"
  std::uint32_t bits = 0;
  std::vector<VEXOR_PM_TEST_ID> tests;
};

// An error code of a test.
struct ErrorCode {
  std::uint32_t code = 0;
  std::vector<VEXOR_PM_TEST_ID> tests;  // the tests for which it means this
  std::vector<TagUse> tags;
  std::uint32_t unexplained = 0;  // the bits that no tag needs
};

// Everything of one name. What a name is not, is empty.
struct Explanation {
  std::vector<vexor::SyntaxInfo> syntaxes = {};
  std::vector<JudgedText> texts = {};
  std::vector<VEXOR_PM_TEST_ID> tests = {};
  std::vector<WordUse> words = {};
  std::vector<TagUse> tags = {};  // of the test, or of the name
  std::vector<ErrorCode> codes = {};
  std::vector<vexor::FindingCode> findings = {};
  std::vector<vexor::OptionInfo> options = {};  // of the name
  std::vector<vexor::OptionInfo> within = {};   // options inside elements of the name
  std::string failure = {};                     // why there is nothing to explain
};

// Returns all syntaxes.
Explanation ExplainSyntaxes();

// Returns all codes of the checker.
Explanation ExplainFindings();

// Each of the following explains one subject, or sets `failure`.
Explanation ExplainName(const std::string& name);
Explanation ExplainTexts(const std::string& name, const std::vector<std::string>& texts);
Explanation ExplainOption(const std::string& name);

// Explains the errors of a test, or those of the texts, which are codes and tags of the test.
Explanation ExplainErrors(const std::string& name, const std::vector<std::string>& texts);

// Returns whether the texts are good.
Status StatusOf(const Explanation& explanation);

std::string_view NameOf(const vexor::OptionInfo& option);
std::string_view ParentOf(const vexor::OptionInfo& option);

void PrintExplanation(const Explanation& found);

}  // namespace tools::vexorcfg
