#include <algorithm>
#include <iostream>
#include <optional>
#include <vector>

#include "commands.h"
#include "common/files.h"
#include "common/text_output.h"
#include "comparison.h"
#include "configurations.h"
#include "findings.h"
#include "line_diff.h"
#include "vexor/config/check.h"
#include "vexor/config/writer.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Finding;
using vexor::Origin;
using vexor::Severity;

struct Comment {
  int line;
  std::string_view text;
};

std::vector<Comment> ListComments(std::string_view content) {
  std::vector<Comment> comments;
  int line = 1;
  while (!content.empty()) {
    const bool is_comment = content.starts_with("<!--");
    const bool is_data = content.starts_with("<![CDATA[");
    std::size_t length = 1;
    if (is_comment || is_data) {
      const std::size_t end = content.find(is_comment ? "-->" : "]]>");
      length = end == std::string_view::npos ? content.size() : end + 3;
    }
    const std::string_view piece = content.substr(0, length);
    if (is_comment) comments.push_back({.line = line, .text = piece});
    line += static_cast<int>(std::ranges::count(piece, '\n'));
    content.remove_prefix(length);
  }
  return comments;
}

// Prints the lines below a title, nothing at all when there are none.
void PrintList(std::string_view title, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  std::cout << title << '\n';
  for (const std::string& line : lines) std::cout << "  " << line << '\n';
}

std::string At(const std::string& file, int line) {
  return file + ":" + std::to_string(line) + ": ";
}

bool IsFault(const Finding& finding) { return finding.severity != Severity::kNote; }

// What writing the file anew has settled: the faults that it has no more.
std::vector<std::string> ListSettled(const Input& in, const Description& description,
                                     const std::vector<Finding>& left) {
  std::vector<std::string> settled;
  const std::vector<Finding> findings = vexor::CheckXMLConfigText(in.content);
  for (const Finding& finding : findings) {
    const bool is_left = std::ranges::any_of(left, [&finding](const Finding& other) {
      return other.text == finding.text && other.what == finding.what;
    });
    if (IsFault(finding) && !is_left) {
      settled.push_back(At(in.name, finding.line) + FormatFinding(finding));
    }
  }
  for (const vexor::Setting& setting : description.settings) {
    const bool is_told = std::ranges::any_of(findings, [&setting](const Finding& finding) {
      return finding.line == setting.line &&
             finding.expected.find(setting.value) != std::string::npos;
    });
    if (setting.origin != Origin::kCorrected || is_told) continue;
    settled.push_back(At(in.name, setting.line) + setting.path + ": means " + Quote(setting.value) +
                      " by what else the older file says");
  }
  return settled;
}

struct Losses {
  std::vector<std::string> stated;    // by the file
  std::vector<std::string> defaults;  // that it relied on, a line an element
};

void AddDefault(const vexor::Setting& setting, std::vector<std::string>& lines) {
  const std::size_t slash = setting.path.rfind('/');
  const std::string element = setting.path.substr(0, slash) + ": ";
  const std::string name = setting.path.substr(slash + 1);
  if (!lines.empty() && lines.back().starts_with(element)) {
    lines.back() += ", " + name;
  } else {
    lines.push_back(element + name);
  }
}

Losses ListLosses(const Input& in, const Input& out, const Comparison& comparison) {
  Losses losses;
  for (const auto& [before, after] : comparison.differences) {
    if (before == nullptr) continue;
    const std::string value = Quote(before->value) + " reads " +
                              (after == nullptr ? "as nothing" : "as " + Quote(after->value));
    const bool is_stated = before->origin == Origin::kFile ||
                           before->origin == Origin::kOlderName ||
                           before->origin == Origin::kDerived;
    if (is_stated) {
      const std::string place = before->line > 0 ? At(in.name, before->line) : in.name + ": ";
      losses.stated.push_back(place + OneLine(before->path) + ": " + value);
    } else {
      AddDefault(*before, losses.defaults);
    }
  }
  const std::vector<Comment> kept = ListComments(out.content);
  for (const Comment& comment : ListComments(in.content)) {
    if (std::ranges::find(kept, comment.text, &Comment::text) != kept.end()) continue;
    losses.stated.push_back(At(in.name, comment.line) + "comment: " + OneLine(comment.text, 60));
  }
  return losses;
}

Losses ForeseeLosses(const Input& in, const Description& before, const std::string& document) {
  const Description after = vexor::DescribeXMLConfigText(document);
  return ListLosses(in, {.name = {}, .content = document, .failure = {}}, Compare(before, after));
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

// Reads the new file and tells what became of the old one: the proof that what stands in the new
// one amounts to the same.
Status ReportProof(const ConvertArguments& arguments, const Input& in, const Description& before) {
  Input out;
  const std::optional<Description> after = DescribeInput(arguments.out, out);
  if (!after) return kNotRun;
  const Comparison comparison = Compare(before, *after);
  const Losses losses = ListLosses(in, out, comparison);
  std::vector<Finding> left = vexor::CheckXMLConfigText(out.content);
  std::erase_if(left, [](const Finding& finding) { return !IsFault(finding); });
  PrintList("Brought to the current form:", ListSettled(in, before, left));
  const std::size_t relied_on = CountDefaults(before);
  const std::size_t unwritten = CountDefaults(*after);
  if (unwritten < relied_on) {
    std::cout << "Written out: " << Count(relied_on - unwritten, "default")
              << " that the file did not state\n";
  }
  PrintList("Not carried by the written form:", losses.stated);
  PrintList("Defaults that the written form leaves out, so that they read otherwise:",
            losses.defaults);
  if (!left.empty()) {
    std::cout << "Still wrong: " << Count(left.size(), "fault") << ", see vexorcfg check "
              << out.name << '\n';
  }
  std::cout << out.name << ": written and read again, " << Count(comparison.equal, "setting")
            << " mean the same, " << losses.stated.size() << " not carried\n";
  return losses.stated.empty() ? kClean : kWarnings;
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
  if (AreOneFile(arguments.in, arguments.out)) {
    const Losses losses = ForeseeLosses(in, *before, document);
    PrintList("Not carried by the written form:", losses.stated);
    if (!losses.stated.empty()) {
      return Refuse(arguments.out, "left as it is; convert to another file to keep what it holds");
    }
  }
  if (WriteDocument(arguments.out, document, arguments.force) != kClean) return kNotRun;
  return ReportProof(arguments, in, *before);
}

}  // namespace tools::vexorcfg
