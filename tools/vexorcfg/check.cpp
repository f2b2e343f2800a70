#include "vexor/config/check.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "check_output.h"
#include "commands.h"
#include "common/files.h"
#include "common/find_files.h"
#include "common/parallel.h"
#include "common/text_output.h"

namespace tools::vexorcfg {
namespace {

constexpr std::string_view kStandardInput = "-";

CheckedFile CheckFile(const FoundFile& found, const CheckArguments& arguments) {
  const vexor::CheckLimits limits{.most_bytes = arguments.max_size << 20U, .with_allowed = true};
  Input input = found.failure.empty() ? ReadInput(found.path, limits.most_bytes)
                                      : Input{NameFile(found.path), "", found.failure};
  if (input.content.size() > limits.most_bytes) input.failure += " (see --max-size)";
  CheckedFile file{.name = input.name,
                   .path = found.path == kStandardInput ? input.name : found.path,
                   .content = std::move(input.content),
                   .failure = std::move(input.failure),
                   .findings = {}};
  if (file.failure.empty()) file.findings = vexor::CheckXMLConfigText(file.content, limits);
  return file;
}

std::vector<FoundFile> FindAll(const std::vector<std::string>& arguments) {
  std::vector<FoundFile> all;
  for (const std::string& argument : arguments) {
    std::ranges::move(FindFiles(argument, ".xml"), std::back_inserter(all));
  }
  return all;
}

template <class Output>
Status CheckAll(const CheckArguments& arguments) {
  const std::vector<FoundFile> files = FindAll(arguments.files);
  // Standard input can be read once, by the first that names it.
  std::vector<std::optional<CheckedFile>> inputs(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (files[i].path == kStandardInput) inputs[i] = CheckFile(files[i], arguments);
  }
  CheckTotals totals(arguments);
  Output output(arguments);
  MapInOrder(
      files.size(),
      [&](std::size_t i) {
        return inputs[i] ? std::move(*inputs[i]) : CheckFile(files[i], arguments);
      },
      [&](const CheckedFile& file) {
        totals.Add(file);
        output.Add(file);
      });
  output.Finish(totals);
  return totals.GetStatus();
}

struct Format {
  std::string_view name;
  Status (*check)(const CheckArguments& arguments);
};

// The first is the default.
constexpr Format kFormats[] = {
    {"text", CheckAll<TextOutput>},
    {"json", CheckAll<JsonOutput>},
    {"sarif", CheckAll<SarifOutput>},
    {"github", CheckAll<GithubOutput>},
};

}  // namespace

std::vector<std::string> GetCheckFormats() {
  std::vector<std::string> names;
  for (const Format& format : kFormats) names.emplace_back(format.name);
  return names;
}

Status Check(const CheckArguments& arguments) {
  const std::string_view name = arguments.json ? "json" : std::string_view(arguments.format);
  const Format* const format = std::ranges::find(kFormats, name, &Format::name);
  return (format == std::end(kFormats) ? kFormats[0] : *format).check(arguments);
}

void CheckTotals::Add(const CheckedFile& file) {
  ++files_;
  last_file_ = file.name;
  if (!file.failure.empty()) ++unread_;
  for (const vexor::Finding& finding : file.findings) {
    ++(finding.is_allowed ? allowed_ : counts_.at(static_cast<std::size_t>(finding.severity)));
  }
}

Status CheckTotals::GetStatus() const {
  if (unread_ > 0) return kNotRun;
  if (CountOf(vexor::Severity::kError) > 0) return kErrors;
  if (CountOf(vexor::Severity::kWarning) > 0) return arguments_.strict ? kErrors : kWarnings;
  return kClean;
}

std::string CheckTotals::MakeVerdict() const {
  return (files_ == 1 ? last_file_ : Count(files_, "file")) + ": " + MakeCounts();
}

std::string CheckTotals::MakeCounts() const {
  const std::size_t errors = CountOf(vexor::Severity::kError);
  const std::size_t warnings = CountOf(vexor::Severity::kWarning);
  const std::size_t notes = CountOf(vexor::Severity::kNote);
  if (unread_ == files_) return "not checked";
  std::string verdict;
  const auto add = [](std::string& list, const std::string& part) {
    list.append(list.empty() ? "" : ", ").append(part);
  };
  if (errors > 0) add(verdict, Count(errors, "error"));
  if (warnings > 0) add(verdict, Count(warnings, "warning"));
  if (errors + warnings == 0) add(verdict, "no faults");
  if (warnings > 0 && arguments_.strict) verdict += ", which count as errors";
  if (unread_ > 0) add(verdict, Count(unread_, "file") + " not checked");
  std::string more;
  if (allowed_ > 0) add(more, std::to_string(allowed_) + " allowed");
  if (notes > 0 && !arguments_.notes) add(more, Count(notes, "note") + " with --notes");
  return more.empty() ? verdict : verdict + " (" + more + ")";
}

bool IsShown(const vexor::Finding& finding, const CheckArguments& arguments) {
  return !finding.is_allowed && (finding.severity != vexor::Severity::kNote || arguments.notes);
}

End EndOf(const vexor::Finding& finding, std::string_view content) {
  End end{finding.line, finding.column};
  for (const char c : content.substr(std::min(finding.at, content.size()), finding.size)) {
    const bool is_inner = (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    if (c == '\n') {
      end = {end.line + 1, 1};
    } else if (!is_inner) {
      ++end.column;
    }
  }
  return end;
}

}  // namespace tools::vexorcfg
