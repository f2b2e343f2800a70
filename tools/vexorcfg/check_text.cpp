#include <algorithm>
#include <iostream>

#include "check_output.h"
#include "common/terminal.h"
#include "common/text_output.h"
#include "findings.h"
#include "source_line.h"

namespace tools::vexorcfg {
namespace {

using vexor::Finding;
using vexor::Severity;

std::string_view ColourOf(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return "\x1b[1;36m";
    case Severity::kWarning:
      return "\x1b[1;35m";
    case Severity::kError:
      break;
  }
  return "\x1b[1;31m";
}

}  // namespace

TextOutput::TextOutput(const CheckArguments& arguments)
    : arguments_(arguments), colours_(UsesColours()) {}

void TextOutput::Add(const CheckedFile& file) {
  if (!file.failure.empty()) {
    Refuse(file.name, file.failure);
    return;
  }
  if (arguments_.quiet) return;
  for (const Finding& finding : file.findings) {
    if (IsShown(finding, arguments_)) PrintFinding(file, finding);
  }
}

void TextOutput::Finish(const CheckTotals& totals) { std::cout << totals.MakeVerdict() << '\n'; }

void TextOutput::PrintFinding(const CheckedFile& file, const Finding& finding) const {
  std::cout << Coloured("\x1b[1m") << file.name << ':';
  if (finding.line > 0) std::cout << finding.line << ':';
  if (finding.column > 0) std::cout << finding.column << ':';
  std::cout << Coloured("\x1b[0m") << ' ' << Coloured(ColourOf(finding.severity))
            << NameOf(finding.severity) << ':' << Coloured("\x1b[0m") << ' '
            << FormatFinding(finding) << " [" << finding.code << "]\n";
  if (finding.column > 0) PrintSource(file, finding);
}

void TextOutput::PrintSource(const CheckedFile& file, const Finding& finding) const {
  const SourceLine source = CutSourceLine(file.content, finding.at, finding.size);
  std::cout << "    " << source.text << "\n    " << std::string(source.mark, ' ')
            << Coloured(ColourOf(finding.severity)) << '^' << std::string(source.width - 1, '~')
            << Coloured("\x1b[0m") << '\n';
}

}  // namespace tools::vexorcfg
