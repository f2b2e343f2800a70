#include <iomanip>
#include <iostream>

#include "commands.h"
#include "common/text_output.h"
#include "explanation.h"
#include "json_output.h"

namespace tools::vexorcfg {
namespace {

Status PrintSubjects() {
  std::cout << "explain NAME               an option, test, syntax, word, error tag or code\n"
               "explain SYNTAX TEXT        what a text means, or what is wrong with it\n"
               "explain OPTION TEXT        the same for a text of an option\n"
               "explain option NAME        what an option means and takes\n"
               "explain error TEST         the error tags of a test, with their bits\n"
               "explain error TEST CODE    which bits of an error code say what\n"
               "explain codes              the codes of the checker, such as VX019\n\n"
               "Syntaxes, and a text of each:\n";
  for (const vexor::SyntaxInfo& syntax : ExplainSyntaxes().syntaxes) {
    std::cout << "  " << std::left << std::setw(17) << syntax.name
              << (syntax.example.empty() ? syntax.grammar : syntax.example) << '\n';
  }
  return kClean;
}

Explanation Find(const ExplainArguments& arguments) {
  const std::string& subject = arguments.subject;
  const std::vector<std::string>& texts = arguments.texts;
  if (subject.empty()) return ExplainSyntaxes();
  if (subject == "codes") return ExplainFindings();
  if (subject == "option") {
    if (texts.size() == 1) return ExplainOption(texts.front());
    return {.failure = "the name of one option is needed"};
  }
  if (subject == "error") {
    if (!texts.empty()) return ExplainErrors(texts.front(), {texts.begin() + 1, texts.end()});
    return {.failure = "a test is needed, and then an error code or a tag"};
  }
  return texts.empty() ? ExplainName(subject) : ExplainTexts(subject, texts);
}

}  // namespace

Status Explain(const ExplainArguments& arguments) {
  const std::string& subject = arguments.subject;
  if (subject.empty() && !arguments.json) return PrintSubjects();
  const Explanation found = Find(arguments);
  if (!found.failure.empty()) {
    const bool is_kind = subject == "option" || subject == "error";
    return Refuse(is_kind ? "explain " + subject : "explain", found.failure);
  }
  if (arguments.json) {
    PrintDocument(MakeExplanation(found));
  } else {
    PrintExplanation(found);
  }
  return StatusOf(found);
}

}  // namespace tools::vexorcfg
