#include "explain_code.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "common/text_output.h"
#include "findings.h"
#include "vexor/config/check.h"
#include "vexor/util/strings.h"

namespace tools::vexorcfg {
namespace {

using vexor::FindingCode;

bool IsCode(std::string_view subject) {
  return subject.size() > 2 && StringToUpper(subject.substr(0, 2)) == "VX" &&
         subject.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

Status ListCodes(const std::vector<FindingCode>& codes) {
  for (const FindingCode& row : codes) std::cout << row.code << "  " << row.title << '\n';
  return kClean;
}

}  // namespace

std::optional<Status> ExplainCode(std::string_view subject) {
  const std::vector<FindingCode> codes = vexor::GetFindingCodes();
  if (subject == "codes") return ListCodes(codes);
  if (!IsCode(subject)) return std::nullopt;
  const std::string code = StringToUpper(subject);
  const auto row = std::ranges::find(codes, code, &FindingCode::code);
  if (row == codes.end()) {
    return Refuse("explain", "no code " + Quote(code) + "; vexorcfg explain codes lists them");
  }
  std::cout << row->code << ": " << row->title << " (" << NameOf(row->severity) << ")\n  "
            << row->about << '\n';
  return kClean;
}

}  // namespace tools::vexorcfg
