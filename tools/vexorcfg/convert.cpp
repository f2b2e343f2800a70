#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "common/files.h"
#include "common/text_output.h"
#include "comparison.h"
#include "configurations.h"
#include "findings.h"
#include "line_diff.h"
#include "losses.h"
#include "vexor/config/check.h"
#include "vexor/config/writer.h"

namespace tools::vexorcfg {
namespace {

constexpr std::string_view kNotCarried = "Not carried:";

// Without a limit of size: the file was read already.
constexpr vexor::CheckLimits kNoLimits{.most_bytes = std::string::npos, .with_allowed = true};

using vexor::Description;
using vexor::Finding;
using vexor::Origin;
using vexor::Severity;

// Prints the lines below a title; prints nothing if there are none.
void PrintList(std::string_view title, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  std::cout << title << '\n';
  for (const std::string& line : lines) std::cout << "  " << line << '\n';
}

std::string At(const std::string& file, int line) {
  return file + ":" + std::to_string(line) + ": ";
}

bool IsFault(const Finding& finding) { return finding.severity != Severity::kNote; }

// Lists what the file has in an older form and the new file in the current one.
std::vector<std::string> ListRenewed(const Input& in, const Description& description) {
  std::vector<std::string> renewed;
  std::vector<Finding> findings = vexor::CheckXMLConfigText(in.content, kNoLimits);
  std::erase_if(findings, [](const Finding& finding) { return !finding.is_older_form; });
  renewed.reserve(findings.size());
  for (const Finding& finding : findings) {
    renewed.push_back(At(in.name, finding.line) + FormatFinding(finding));
  }
  for (const vexor::Setting& setting : description.settings) {
    if (setting.origin != Origin::kCorrected) continue;
    const auto first = std::ranges::lower_bound(findings, setting.line, {}, &Finding::line);
    const auto last = std::ranges::upper_bound(findings, setting.line, {}, &Finding::line);
    const bool is_told = std::any_of(first, last, [&setting](const Finding& finding) {
      return finding.expected.find(setting.value) != std::string::npos;
    });
    if (is_told) continue;
    renewed.push_back(At(in.name, setting.line) + setting.path + ": means " + Quote(setting.value) +
                      " by what else the older file says");
  }
  return renewed;
}

std::size_t CountDefaults(const Description& description) {
  return static_cast<std::size_t>(
      std::ranges::count(description.settings, Origin::kDefault, &vexor::Setting::origin));
}

Status PrintDiff(const ConvertArguments& arguments) {
  Input in;
  if (!DescribeInput(arguments.in, in)) return kNotRun;
  const auto cfg = ReadRecord(arguments.in);
  if (cfg == nullptr) return kNotRun;
  const std::string name = arguments.out.empty() ? in.name + " (converted)" : arguments.out;
  const std::string diff = DiffLines(in.name, in.content, name, vexor::FormatXMLConfig(*cfg));
  std::cout << diff;
  return diff.empty() ? kClean : kWarnings;
}

// Reads the new document and reports what differs from the old file. Comparing what is read back
// proves that both mean the same.
Status ReportProof(const ConvertArguments& arguments, const Input& in, const Description& before) {
  Input out;
  const std::optional<Description> after = DescribeInput(arguments.out, out);
  if (!after) return kNotRun;
  const Comparison comparison = Compare(before, *after);
  const Losses losses = ListLosses(in.name, before, *after, comparison);
  PrintList("Brought to the current form:", ListRenewed(in, before));
  const std::size_t relied_on = CountDefaults(before);
  const std::size_t unwritten = CountDefaults(*after);
  if (unwritten < relied_on) {
    std::cout << "Written out: " << Count(relied_on - unwritten, "default")
              << " that the file did not state\n";
  }
  PrintList(kNotCarried, losses.stated);
  PrintList("Defaults that the written form leaves out, so that they read otherwise:",
            losses.defaults);
  const auto faults =
      std::ranges::count_if(vexor::CheckXMLConfigText(out.content, kNoLimits), IsFault);
  if (faults > 0) {
    std::cout << "Still wrong: " << Count(static_cast<std::size_t>(faults), "fault")
              << ", see vexorcfg check " << out.name << '\n';
  }
  std::cout << out.name << ": written and read again, " << Count(comparison.equal.size(), "setting")
            << " mean the same, " << losses.stated.size() << " not carried\n";
  return losses.stated.empty() ? kClean : kWarnings;
}

// Whether a file may be replaced by the document that it is converted to. What the document does
// not carry would be lost for good.
bool MayReplace(const ConvertArguments& arguments, const Input& in, const Description& before,
                const std::string& document) {
  if (!arguments.force || arguments.lossy || !AreOneFile(arguments.in, arguments.out)) return true;
  const Description after = vexor::DescribeXMLConfigText(document);
  const Losses losses = ListLosses(in.name, before, after, Compare(before, after));
  if (losses.stated.empty()) return true;
  PrintList(kNotCarried, losses.stated);
  Refuse(arguments.out, "left as it is: " + std::to_string(losses.stated.size()) +
                            " not carried; convert to another file, or lose them with --lossy");
  return false;
}

}  // namespace

Status Convert(const ConvertArguments& arguments) {
  if (arguments.in == "-" || arguments.out == "-") return Refuse("-", "a file is needed");
  if (arguments.diff) return PrintDiff(arguments);
  if (KindOf(arguments.out) == FileKind::kDevice) {
    return Refuse(arguments.out, "cannot be read again as a proof: it is a device");
  }
  if (arguments.out.empty()) return Refuse(arguments.in, "convert to which file? (or --diff)");
  Input in;
  const std::optional<Description> before = DescribeInput(arguments.in, in);
  if (!before) return kNotRun;
  const auto cfg = ReadRecord(arguments.in);
  if (cfg == nullptr) return kNotRun;
  const std::string document = vexor::FormatXMLConfig(*cfg);
  if (!MayReplace(arguments, in, *before, document)) return kNotRun;
  if (WriteDocument(arguments.out, document, arguments.force) != kClean) return kNotRun;
  return ReportProof(arguments, in, *before);
}

}  // namespace tools::vexorcfg
