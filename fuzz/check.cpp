// Runs the checker on any bytes and compares its findings with the reader.
#include "vexor/config/check.h"

#include <algorithm>

#include "fuzz.h"
#include "vexor/config/describe.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = AsText(data, size);
  const std::vector<vexor::Finding> findings = vexor::CheckXMLConfigText(input);
  const auto line_count = std::count(input.begin(), input.end(), '\n') + 1;
  int line = 0;
  bool has_error = false;
  for (const vexor::Finding& finding : findings) {
    Require(finding.line >= line && finding.line <= line_count, "findings are in order");
    Require(!finding.what.empty(), "a finding says what is wrong");
    line = finding.line;
    has_error = has_error || finding.severity == vexor::Severity::kError;
  }
  const bool is_read = vexor::DescribeXMLConfigText(input).error.empty();
  Require(is_read || has_error, "a file that cannot be read has an error");
  return 0;
}
