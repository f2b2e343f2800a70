#include "vexor/config/edit.h"

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>

#include "check_output.h"
#include "commands.h"
#include "common/files.h"
#include "common/program.h"
#include "common/text_output.h"
#include "configurations.h"
#include "json_output.h"
#include "line_diff.h"
#include "vexor/config/check.h"

namespace tools::vexorcfg {
namespace {

using vexor::EditedText;
using vexor::TextChange;

std::string Value(std::string_view value) { return value.empty() ? "\"\"" : OneLine(value); }

Status RefuseEdit(const Input& input, const EditedText& edited) {
  const std::string line = edited.error_line > 0 ? ":" + std::to_string(edited.error_line) : "";
  return Refuse(input.name + line, edited.error);
}

// Prints "lab.xml:12: GLOBALPM/CORE/CSTATES/ActiveTime: set, msec:80 -> msec:90".
void PrintChange(const Input& input, const TextChange& change) {
  std::cout << input.name << ':' << change.line << ": ";
  if (!change.path.empty()) std::cout << OneLine(change.path) << ": ";
  std::cout << change.what;
  if (!change.before.empty() && change.after.empty()) {
    std::cout << ", was " << Value(change.before);
  } else if (!change.after.empty()) {
    std::cout << ", " << Value(change.before) << " -> " << Value(change.after);
  }
  std::cout << '\n';
}

// Writes the changed text over the file, or prints what would change.
Status Keep(const EditArguments& arguments, const Input& input, const std::string& content,
            const std::vector<TextChange>& changes) {
  if (arguments.diff) {
    const std::string diff = DiffLines(input.name, input.content, input.name, content);
    std::cout << diff;
    return diff.empty() ? kClean : kWarnings;
  }
  if (arguments.file == "-") {
    std::cout << content;
    return kClean;
  }
  if (content != input.content) {
    const Status status = WriteDocument(arguments.file, content, true);
    if (status != kClean) return status;
  }
  for (const TextChange& change : changes) PrintChange(input, change);
  if (changes.empty()) std::cout << NameFile(input.name) << ": nothing to change\n";
  return kClean;
}

// Applies an edit for each of the arguments, each to the text that the one before it left. If one
// is impossible, the file stays as it is.
template <class Edit>
Status EditFile(const EditArguments& arguments, const Edit& edit) {
  const Input input = ReadInput(arguments.file);
  if (!input.failure.empty()) return Refuse(input.name, input.failure);
  std::string content = input.content;
  std::vector<TextChange> changes;
  for (const std::string& argument : arguments.edits) {
    EditedText edited = edit(content, argument);
    if (!edited.error.empty()) return RefuseEdit(input, edited);
    if (!edited.warning.empty()) {
      std::cerr << kProgram.name << ": warning: " << OneLine(edited.warning) << '\n';
    }
    content = std::move(edited.content);
    changes.insert(changes.end(), edited.changes.begin(), edited.changes.end());
  }
  return Keep(arguments, input, content, changes);
}

Json MakeFound(const vexor::FoundSettings& found) {
  Json json = {{"path", found.path}, {"settings", Json::array()}};
  for (const vexor::Setting& setting : found.settings) {
    json["settings"].push_back(MakeSetting(setting));
  }
  return json;
}

// Prints the value of an option, the entries of a list, or PATH=VALUE for the options of a section.
void PrintFound(const vexor::FoundSettings& found) {
  const bool is_section = std::ranges::any_of(found.settings, [&](const vexor::Setting& setting) {
    return setting.path.starts_with(found.path + "/");
  });
  for (const vexor::Setting& setting : found.settings) {
    if (is_section) std::cout << OneLine(setting.path) << '=';
    std::cout << OneLine(setting.value, std::string::npos) << '\n';
  }
}

// Prints the findings that are left, as the command check does, and returns its status.
Status ReportRest(const Input& input, const std::string& content) {
  const CheckArguments arguments;
  const vexor::CheckLimits limits{.most_bytes = std::string::npos, .with_allowed = true};
  const CheckedFile file{.name = input.name,
                         .path = input.name,
                         .content = content,
                         .failure = {},
                         .findings = vexor::CheckXMLConfigText(content, limits)};
  CheckTotals totals(arguments);
  totals.Add(file);
  TextOutput(arguments).Add(file);
  TextOutput::Finish(totals);
  return totals.GetStatus();
}

// Rewrites each file by a function of the library.
Status RewriteFiles(const RewriteArguments& arguments, EditedText (*rewrite)(std::string_view),
                    bool reports_rest) {
  Status worst = kClean;
  for (const std::string& file : arguments.files) {
    const Input input = ReadInput(file);
    if (!input.failure.empty()) {
      worst = Refuse(input.name, input.failure);
      continue;
    }
    const EditedText edited = rewrite(input.content);
    if (!edited.error.empty()) {
      worst = RefuseEdit(input, edited);
      continue;
    }
    Status status = Keep({.file = file, .edits = {}, .diff = arguments.diff}, input, edited.content,
                         edited.changes);
    if (reports_rest && file != "-" && !arguments.diff) {
      status = std::max(status, ReportRest(input, edited.content));
    }
    worst = std::max(worst, status);
  }
  return worst;
}

}  // namespace

Status Get(const GetArguments& arguments) {
  Input input;
  const std::optional<vexor::Description> description = DescribeInput(arguments.file, input);
  if (!description) return kNotRun;
  Status status = kClean;
  Json found_paths = Json::array();
  for (const std::string& path : arguments.paths) {
    const vexor::FoundSettings found = vexor::FindSettings(*description, path);
    if (!found.error.empty()) {
      status = Refuse(path, found.error);
      continue;
    }
    if (found.settings.empty()) status = std::max(status, kWarnings);
    if (arguments.json) {
      found_paths.push_back(MakeFound(found));
    } else {
      PrintFound(found);
    }
  }
  if (arguments.json) {
    Json document = MakeDocument("get", status);
    document["file"] = input.name;
    document["paths"] = std::move(found_paths);
    PrintDocument(document);
  }
  return status;
}

Status Set(const EditArguments& arguments) {
  return EditFile(arguments, [&](const std::string& content, const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) {
      EditedText edited;
      edited.error = Quote(argument) + " has no \"=\", expected PATH=VALUE";
      return edited;
    }
    return vexor::SetOptionInText(content, argument.substr(0, equals), argument.substr(equals + 1),
                                  {.force = arguments.force});
  });
}

Status Unset(const EditArguments& arguments) {
  return EditFile(arguments, [&](const std::string& content, const std::string& argument) {
    return vexor::UnsetOptionInText(content, argument, {.force = arguments.force});
  });
}

Status Fix(const RewriteArguments& arguments) {
  return RewriteFiles(arguments, vexor::FixText, true);
}

Status Migrate(const RewriteArguments& arguments) {
  return RewriteFiles(arguments, vexor::MigrateText, false);
}

}  // namespace tools::vexorcfg
