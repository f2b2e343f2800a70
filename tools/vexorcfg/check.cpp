#include "vexor/config/check.h"

#include <array>
#include <iostream>

#include "commands.h"
#include "common/files.h"
#include "common/find_files.h"
#include "common/terminal.h"
#include "common/text_output.h"
#include "findings.h"

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

class Report {
 public:
  explicit Report(const CheckArguments& arguments)
      : arguments_(arguments), colours_(!arguments.json && UsesColours()) {}

  void Add(const FoundFile& file) {
    const vexor::CheckLimits limits{.most_bytes = arguments_.max_size << 20U, .with_allowed = true};
    Input input = file.failure.empty() ? ReadInput(file.path, limits.most_bytes)
                                       : Input{NameFile(file.path), "", file.failure};
    if (input.content.size() > limits.most_bytes) input.failure += " (see --max-size)";
    ++files_;
    OpenFile(input, file.path);
    if (!input.failure.empty()) {
      ++unread_;
      if (!arguments_.json) Refuse(input.name, input.failure);
    } else {
      for (const Finding& finding : vexor::CheckXMLConfigText(input.content, limits)) {
        AddFinding(input.name, finding);
      }
    }
    if (arguments_.json) json_ += "]}";
  }

  Status Finish() {
    if (arguments_.json) {
      PrintJson();
    } else {
      PrintVerdict();
    }
    return GetStatus();
  }

 private:
  void OpenFile(const Input& input, const std::string& path) {
    last_file_ = input.name;
    if (!arguments_.json) return;
    json_ += json_.empty() ? "\n  {\"file\": " : ",\n  {\"file\": ";
    AppendJson(json_, path == "-" ? input.name : path);
    if (!input.failure.empty()) {
      json_ += ", \"failure\": ";
      AppendJson(json_, input.failure);
    }
    json_ += ", \"findings\": [";
  }

  void AddFinding(const std::string& file, const Finding& finding) {
    if (finding.is_allowed) {
      ++allowed_;
      return;
    }
    ++counts_.at(static_cast<std::size_t>(finding.severity));
    if (finding.severity == Severity::kNote && !arguments_.notes) return;
    if (arguments_.json) {
      AddJson(finding);
    } else if (!arguments_.quiet) {
      PrintFinding(file, finding);
    }
  }

  void PrintFinding(const std::string& file, const Finding& finding) const {
    std::cout << Coloured("\x1b[1m") << file << ':';
    if (finding.line > 0) std::cout << finding.line << ':';
    std::cout << Coloured("\x1b[0m") << ' ' << Coloured(ColourOf(finding.severity))
              << NameOf(finding.severity) << ':' << Coloured("\x1b[0m") << ' '
              << FormatFinding(finding) << " [" << finding.code << "]\n";
  }

  [[nodiscard]] std::string_view Coloured(std::string_view sequence) const {
    return colours_ ? sequence : std::string_view();
  }

  void AddJson(const Finding& finding) {
    json_ += json_.ends_with('[') ? "\n    {" : ",\n    {";
    json_ += "\"line\": " + std::to_string(finding.line);
    AddMember("severity", NameOf(finding.severity));
    AddMember("code", finding.code);
    AddMember("path", finding.path);
    AddMember("text", finding.text);
    AddMember("what", finding.what);
    AddMember("expected", finding.expected);
    AddMember("suggestion", finding.suggestion);
    json_ += '}';
  }

  void AddMember(std::string_view name, std::string_view text) {
    json_.append(", \"").append(name).append("\": ");
    AppendJson(json_, text);
  }

  void PrintJson() const {
    std::cout << R"({"format": "vexorcfg check", "version": 1, "status": )" << GetStatus()
              << ",\n \"errors\": " << CountOf(Severity::kError)
              << ", \"warnings\": " << CountOf(Severity::kWarning)
              << ", \"notes\": " << CountOf(Severity::kNote) << ", \"allowed\": " << allowed_
              << ", \"unread\": " << unread_ << ",\n \"files\": [" << json_ << "]}\n";
  }

  void PrintVerdict() const {
    std::cout << (files_ == 1 ? last_file_ : Count(files_, "file")) << ": " << MakeVerdict()
              << '\n';
  }

  [[nodiscard]] std::string MakeVerdict() const {
    const std::size_t errors = CountOf(Severity::kError);
    const std::size_t warnings = CountOf(Severity::kWarning);
    const std::size_t notes = CountOf(Severity::kNote);
    if (unread_ == files_) return "not checked";
    std::string verdict;
    const auto add = [&verdict](const std::string& part) {
      verdict.append(verdict.empty() ? "" : ", ").append(part);
    };
    if (errors > 0) add(Count(errors, "error"));
    if (warnings > 0) add(Count(warnings, "warning"));
    if (errors + warnings == 0) add("no faults");
    if (warnings > 0 && arguments_.strict) verdict += ", which count as errors";
    if (unread_ > 0) add(Count(unread_, "file") + " not checked");
    std::string more;
    if (allowed_ > 0) more = std::to_string(allowed_) + " allowed";
    if (notes > 0 && !arguments_.notes) {
      more.append(more.empty() ? "" : ", ").append(Count(notes, "note")).append(" with --notes");
    }
    if (!more.empty()) verdict.append(" (").append(more).append(")");
    return verdict;
  }

  [[nodiscard]] std::size_t CountOf(Severity severity) const {
    return counts_.at(static_cast<std::size_t>(severity));
  }

  [[nodiscard]] Status GetStatus() const {
    if (unread_ > 0) return kNotRun;
    if (CountOf(Severity::kError) > 0) return kErrors;
    if (CountOf(Severity::kWarning) > 0) return arguments_.strict ? kErrors : kWarnings;
    return kClean;
  }

  const CheckArguments& arguments_;
  bool colours_;
  std::string last_file_;
  std::string json_;
  std::array<std::size_t, 3> counts_{};
  std::size_t files_ = 0;
  std::size_t unread_ = 0;
  std::size_t allowed_ = 0;
};

}  // namespace

Status Check(const CheckArguments& arguments) {
  Report report(arguments);
  for (const std::string& argument : arguments.files) {
    for (const FoundFile& file : FindFiles(argument, ".xml")) report.Add(file);
  }
  return report.Finish();
}

}  // namespace tools::vexorcfg
