#include "cli.h"

#include "commands.h"

namespace tools {

const Program kProgram = {
    .name = "vexorlog",
    .title = "read the logs of the power-management test suite",
    .environment =
        ".TP\n.B NO_COLOR\nWhen set and not empty, nothing is coloured. Nothing ever is "
        "unless standard output is a terminal.\n",
    .default_command = "summary",
};

namespace vexorlog {
namespace {

constexpr const char* kTopExamples =
    "After a night of tests:\n"
    "  vexorlog logs                          what ran, what failed first, how it ended\n"
    "  vexorlog show --failed --context 3 logs   the failures, with the rows around them\n"
    "  vexorlog gaps logs                     when the machine was away\n"
    "  vexorlog stats --by Affinity logs      residencies, by core\n"
    "  vexorlog report logs -o night.html     all of it, to look at\n"
    "\n"
    "PATH is a log, or a folder of logs: the files of a series (run_0.csv, run_1.csv, ...) are\n"
    "read as one log. vexorlog COMMAND --help shows the options of a command, with examples.\n"
    "\n"
    "Exit status: 0 all is well, 1 the logs hold failures or damage, 3 could not read something.";

constexpr const char* kSummaryExamples =
    "Examples:\n"
    "  vexorlog summary logs\n"
    "  vexorlog logs                 the same\n"
    "  vexorlog summary --since -2h --test CSTATES logs\n"
    "\n"
    "Exit status: 0 nothing failed, 1 there are failures, 3 a file could not be read.";

constexpr const char* kShowExamples =
    "Examples:\n"
    "  vexorlog show logs | less\n"
    "  vexorlog show --failed --context 3 logs\n"
    "  vexorlog show --columns Time,Affinity,C6% --test CSTATES logs\n"
    "\n"
    "Exit status: 0 rows were shown, 1 there is no such row, 3 a file could not be read.";

constexpr const char* kFollowExamples =
    "It goes on over splits, restarts and new series, until it is interrupted.\n"
    "\n"
    "Example:\n"
    "  vexorlog follow --level Critical logs";

constexpr const char* kCheckExamples =
    "A finding is one line: FILE:LINE: what is wrong.\n"
    "\n"
    "Exit status: 0 no damage, 1 damage, 3 a file could not be read.";

constexpr const char* kGapsExamples =
    "Example:\n"
    "  vexorlog gaps --longer-than 5min logs\n"
    "\n"
    "Exit status: 0 there are none, 1 there are gaps, 3 a file could not be read.";

constexpr const char* kStatsExamples =
    "Examples:\n"
    "  vexorlog stats logs\n"
    "  vexorlog stats --by Affinity --columns C6%,PC10% --test CSTATES logs\n"
    "\n"
    "Exit status: 0 all was read, 3 a file could not be read.";

constexpr const char* kExportExamples =
    "Two columns stand before those of the logs: File and Line.\n"
    "\n"
    "Examples:\n"
    "  vexorlog export logs -o night.csv\n"
    "  vexorlog export --format jsonl logs | less";

constexpr const char* kReportExamples =
    "Example:\n"
    "  vexorlog report logs -o night.html\n"
    "\n"
    "Exit status: 0 nothing failed, 1 there are failures, 3 a file could not be read.";

constexpr const char* kCompletionExamples =
    "Example, for the current shell:\n"
    "  source <(vexorlog completion)";

constexpr const char* kManualExamples =
    "Example:\n"
    "  vexorlog manual | man -l -";

void AddPaths(CLI::App& command, std::vector<std::string>& paths) {
  command.add_option("PATH", paths, "Logs, and folders of logs")->required();
}

void AddJson(CLI::App& command, bool& json) {
  command.add_flag("--json", json, "Print JSON for programs");
}

void AddColumns(CLI::App& command, std::vector<std::string>& columns, const char* about) {
  command.add_option("--columns", columns, about)->delimiter(',');
}

// The options of all commands that look at rows.
void AddSelection(CLI::App& command, Selection& rows) {
  AddPaths(command, rows.paths);
  command.add_option("--test", rows.tests, "Rows of these tests, such as CSTATES,HWP")
      ->delimiter(',');
  command.add_option("--level", rows.level,
                     "Rows of this level (Critical, Information, Debug) or a more important one");
  command.add_option("--since", rows.since,
                     "Rows from a time on: \"2024-03-07 21:00\", 21:00, +2h from the start, -30min "
                     "from the end");
  command.add_option("--until", rows.until, "Rows up to a time, given likewise");
  command.add_option("--grep", rows.grep,
                     "Rows that match a regular expression (RE2; (?i) ignores case)");
  command.add_flag("--failed", rows.failed, "Rows of failures");
}

void AddOutput(CLI::App& command, std::string& file, bool& force) {
  command.add_option("-o,--output", file, "File to write");
  command.add_flag("-f,--force", force, "Replace a file that exists");
}

void AddSummary(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "summary", "Tell what ran, what failed first, and how it ended.",
                 kSummaryExamples, Summarise);
  AddSelection(*command, arguments->rows);
  command->add_option("--failures", arguments->failures, "List so many failures (10)");
  AddJson(*command, arguments->json);
}

void AddShow(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "show", "Print the rows of all logs in the order of their times.",
                 kShowExamples, Show);
  AddSelection(*command, arguments->rows);
  AddColumns(*command, arguments->columns,
             "These columns, in this order; without, those that hold something");
  command->add_option("--context", arguments->context, "Show so many rows before and after, too");
  AddJson(*command, arguments->json);
}

void AddFollow(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "follow", "Print rows as they are logged.", kFollowExamples, Follow);
  AddSelection(*command, arguments->rows);
  AddColumns(*command, arguments->columns, "These columns, in this order");
  command->add_option("--for", arguments->duration, "Stop after this time");
}

void AddCheck(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "check", "Tell what is damaged in logs, with its line.", kCheckExamples, Check);
  AddPaths(*command, arguments->paths);
  AddJson(*command, arguments->json);
}

void AddGaps(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "gaps", "Tell when nothing was logged, and what came before and after.",
      kGapsExamples, ListGaps);
  AddSelection(*command, arguments->rows);
  command->add_option("--longer-than", arguments->longer_than,
                      "Gaps of more than this time; without, ten times the mean distance of two "
                      "rows, and at least 1min");
  AddJson(*command, arguments->json);
}

void AddStats(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "stats", "Print count, least, mean, percentiles and most of numbers.",
                 kStatsExamples, PrintStatistics);
  AddSelection(*command, arguments->rows);
  command->add_option("--by", arguments->by, "The column by which rows are grouped (TestType)");
  AddColumns(*command, arguments->columns, "These columns; without, all that hold numbers");
  AddJson(*command, arguments->json);
}

void AddExport(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "export", "Write the rows of all logs into one file for other programs.",
      kExportExamples, Export);
  AddSelection(*command, arguments->rows);
  command->add_option("--format", arguments->format, "csv or jsonl (csv)")
      ->check(CLI::IsMember({"csv", "jsonl"}));
  AddOutput(*command, arguments->file, arguments->force);
}

void AddReport(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "report", "Write a report to look at, in one HTML file.",
                 kReportExamples, WriteReport);
  AddSelection(*command, arguments->rows);
  AddOutput(*command, arguments->file, arguments->force);
}

Status PrintLogCompletion(const CLI::App& app) { return PrintCompletion(app, ""); }

}  // namespace

std::unique_ptr<CLI::App> MakeCommandLine(Status& status) {
  auto app = MakeApp("Tells what the logs of the power-management test suite say.", kTopExamples);
  AddSummary(*app, status);
  AddShow(*app, status);
  AddFollow(*app, status);
  AddCheck(*app, status);
  AddGaps(*app, status);
  AddStats(*app, status);
  AddExport(*app, status);
  AddReport(*app, status);
  AddPrinter(*app, status, "completion", "Print a completion script for bash.", kCompletionExamples,
             PrintLogCompletion);
  AddPrinter(*app, status, "manual", "Print the manual page.", kManualExamples, PrintManual);
  return app;
}

}  // namespace vexorlog
}  // namespace tools
