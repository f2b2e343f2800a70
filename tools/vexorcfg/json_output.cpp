#include "json_output.h"

#include <algorithm>
#include <iostream>

#include "findings.h"
#include "vexor/syntax/keywords.h"
#include "vexor/util/strings.h"

namespace tools::vexorcfg {
namespace {

using vexor::OptionInfo;

std::string_view WordOf(vexor::Origin origin) {
  switch (origin) {
    case vexor::Origin::kFile:
      return "file";
    case vexor::Origin::kOlderName:
      return "older-name";
    case vexor::Origin::kCorrected:
      return "corrected";
    case vexor::Origin::kDerived:
      return "derived";
    case vexor::Origin::kMissing:
      return "missing";
    case vexor::Origin::kDefault:
      break;
  }
  return "default";
}

// Returns the array of what `make` returns for each item.
template <class Items, class Make>
Json MakeList(const Items& items, Make make) {
  Json list = Json::array();
  for (const auto& item : items) list.push_back(make(item));
  return list;
}

Json MakeSyntax(const vexor::SyntaxInfo& syntax) {
  Json words = Json::array();
  for (const std::string_view word : vexor::GetSyntaxWords(syntax.name)) words.push_back(word);
  return {{"name", syntax.name},
          {"grammar", syntax.grammar},
          {"words", words},
          {"example", syntax.example}};
}

Json MakeText(const JudgedText& judged) {
  Json json = {{"text", judged.text},
               {"syntax", judged.syntax.name},
               {"options", judged.options},
               {"meaning", judged.meaning}};
  if (!judged.fault) return json;
  const vexor::TextFault& fault = *judged.fault;
  json["fault"] = {
      {"code", fault.code}, {"severity", NameOf(fault.severity)}, {"at", fault.at},
      {"what", fault.what}, {"expected", fault.expected},         {"suggestion", fault.suggestion}};
  return json;
}

Json MakeTest(VEXOR_PM_TEST_ID test) { return GetPMTestName(test); }

Json MakeWord(const WordUse& use) {
  return {{"word", use.word},
          {"syntax", use.syntax.name},
          {"meaning", use.meaning},
          {"options", use.options}};
}

Json MakeTag(const TagUse& tag) {
  return {{"tag", tag.tag}, {"bits", tag.bits}, {"tests", MakeList(tag.tests, MakeTest)}};
}

Json MakeCode(const ErrorCode& code) {
  return {{"code", code.code},
          {"tests", MakeList(code.tests, MakeTest)},
          {"tags", MakeList(code.tags, MakeTag)},
          {"unexplained", code.unexplained}};
}

Json MakeFinding(const vexor::FindingCode& finding) {
  return {{"code", finding.code},
          {"title", finding.title},
          {"about", finding.about},
          {"severity", NameOf(finding.severity)}};
}

Json MakeOption(const OptionInfo& option) {
  return {{"path", option.path},
          {"about", option.about},
          {"syntax", option.syntax.name},
          {"words", Split(option.words, ';', false)},
          {"known_values", Split(option.hint, '\n', false)},
          {"default", option.preset},
          {"default_if_missing", option.fallback},
          {"command_line", GetKeywordShortName(option.keyword)},
          {"older_name_of", option.stands_for},
          {"repeats", option.repeats},
          {"is_argument", option.is_argument},
          {"is_read", option.is_read},
          {"is_written", option.is_written}};
}

}  // namespace

Json MakeDocument(std::string_view command, Status status) {
  return {{"format", std::string("vexorcfg ").append(command)},
          {"version", 1},
          {"status", static_cast<int>(status)}};
}

Json MakeSetting(const vexor::Setting& setting) {
  Json json = {{"path", setting.path},
               {"value", setting.value},
               {"origin", WordOf(setting.origin)},
               {"line", setting.line}};
  if (!setting.text.empty()) json["text"] = setting.text;
  return json;
}

Json MakeDifferences(std::span<const Difference> differences) {
  Json list = Json::array();
  for (const Difference& difference : differences) {
    list.push_back({{"path", difference.path},
                    {"a", MakeList(difference.a, MakeSetting)},
                    {"b", MakeList(difference.b, MakeSetting)}});
  }
  return list;
}

Json MakeExplanation(const Explanation& explanation) {
  Json json = MakeDocument("explain", StatusOf(explanation));
  json["syntaxes"] = MakeList(explanation.syntaxes, MakeSyntax);
  json["texts"] = MakeList(explanation.texts, MakeText);
  json["tests"] = MakeList(explanation.tests, MakeTest);
  json["words"] = MakeList(explanation.words, MakeWord);
  json["tags"] = MakeList(explanation.tags, MakeTag);
  json["codes"] = MakeList(explanation.codes, MakeCode);
  json["findings"] = MakeList(explanation.findings, MakeFinding);
  json["options"] = MakeList(explanation.options, MakeOption);
  json["options_within"] = MakeList(explanation.within, MakeOption);
  return json;
}

void PrintDocument(const Json& document) { std::cout << PrintJson(document, 2) << '\n'; }

}  // namespace tools::vexorcfg
