#include "cli.h"

#include "commands.h"
#include "common/completion/completion.h"
#include "selection.h"

namespace tools {

const Program kProgram = {
    .name = "vexorlog",
    .title = "read the logs of the power-management test suite",
    .environment =
        ".TP\n.B NO_COLOR\nIf set and not empty, output is not coloured. It is coloured only on a "
        "terminal.\n",
    .examples =
        "A spreadsheet opens the exported CSV as it is (UTF-8, separated by commas):\n"
        "\n"
        "  vexorlog export logs -o night.csv\n"
        "\n"
        "sqlite3 imports it into a table; here it counts the failures of each test:\n"
        "\n"
        "  sqlite3 -cmd '.import --csv night.csv rows' :memory: \\\n"
        "    \"SELECT TestType, count(*) FROM rows WHERE Result = 'FAIL' GROUP BY TestType\"\n"
        "\n"
        "Python reads it with its csv module:\n"
        "\n"
        "  import csv\n"
        "  with open('night.csv', newline='', encoding='utf-8') as file:\n"
        "      for row in csv.DictReader(file):\n"
        "          if row['Result'] == 'FAIL':\n"
        "              print(row['Time'], row['TestType'], row['Notes'])\n"
        "\n"
        "jq queries JSON lines; here it takes the mean of C6% of one core:\n"
        "\n"
        "  vexorlog export --format jsonl logs |\n"
        "    jq -s 'map(select(.Affinity == \"00:01:003:0\")[\"C6%\"] | numbers) | add / length'\n",
    .default_command = "summary",
};

namespace vexorlog {
namespace {

constexpr const char* kTopExamples =
    "After a night of tests, with its logs in the folder \"logs\":\n"
    "  vexorlog logs                             what ran, what failed first, how the logs end\n"
    "  vexorlog show --failed --context 3 logs   the failures and the rows around them\n"
    "  vexorlog gaps logs                        when the machine was away\n"
    "  vexorlog stats --test CSTATES --by Affinity logs   residencies by core\n"
    "  vexorlog report logs -o night.html        all of it as a page for the browser\n"
    "\n"
    "PATH is a log or a folder of logs; of a folder, the *.csv files directly in it are read. The\n"
    "files of a series (run_0.csv, run_1.csv, ...) are read as one log. Wildcards (* and ?) that\n"
    "the shell did not expand are expanded here.\n"
    "\n"
    "vexorlog COMMAND --help shows the options of a command, with examples.\n"
    "\n"
    "Exit status: 0 success, 1 failures or damage in the logs, 3 a file could not be read or the\n"
    "command line is wrong.";

constexpr const char* kSummaryExamples =
    "Failures of one kind have the same test and the same error words or text. \"log ends\" says\n"
    "of the last log of a test that its end is whole (closed), that it is damaged (cut off), or "
    "that\n"
    "it changed within the last 10 seconds and may still be open (just written).\n"
    "\n"
    "Examples:\n"
    "  vexorlog summary logs\n"
    "  vexorlog logs                                 the same\n"
    "  vexorlog summary --since -2h --test CSTATES logs   CSTATES in the last two hours\n"
    "\n"
    "Exit status: 0 no failures, 1 failures, 3 a file could not be read.";

constexpr const char* kShowExamples =
    "Rows of equal time stay in the order of their logs. Texts of more than 40 characters are cut\n"
    "and end in \"~\", except in the last column; --json and \"vexorlog export\" give them whole.\n"
    "\n"
    "Examples:\n"
    "  vexorlog show logs | less -S\n"
    "  vexorlog show --failed --context 3 logs\n"
    "  vexorlog show --columns Time,Affinity,C6% --test CSTATES logs\n"
    "  vexorlog show --since 03:00 --until 03:15 --grep '(?i)timeout' logs\n"
    "\n"
    "Exit status: 0 rows were shown, 1 no row matches, 3 a file could not be read.";

constexpr const char* kFollowExamples =
    "Starts with the last 10 rows and goes on across new files of a series, restarts and new logs\n"
    "until it is interrupted. In a folder without logs it waits for the first one.\n"
    "\n"
    "Examples:\n"
    "  vexorlog follow logs\n"
    "  vexorlog follow --level Critical logs";

constexpr const char* kCheckExamples =
    "Prints one line for each finding: FILE:LINE: what is wrong. Findings are rows that are cut\n"
    "off, blocks of zero bytes, bytes that are not UTF-8, rows with more or fewer cells than the\n"
    "header, broken quotes, times that run backwards, missing files of a series, and files left "
    "by\n"
    "an earlier run.\n"
    "\n"
    "Example:\n"
    "  vexorlog check logs\n"
    "\n"
    "Exit status: 0 no damage, 1 damage, 3 a file could not be read.";

constexpr const char* kGapsExamples =
    "A gap is a time in which no log got a row. Rows of all logs count together, so a test that\n"
    "merely waits makes no gap while others log. A restart is a log that was opened again; a gap\n"
    "before it counts from one second on.\n"
    "\n"
    "Example:\n"
    "  vexorlog gaps --longer-than 5min logs\n"
    "\n"
    "Exit status: 0 no gaps, 1 gaps, 3 a file could not be read.";

constexpr const char* kStatsExamples =
    "median, p90 and p99 are percentiles (nearest rank). Up to 65536 values of a column and group\n"
    "they are exact; beyond, they are those of a random sample of that size.\n"
    "\n"
    "Examples:\n"
    "  vexorlog stats logs\n"
    "  vexorlog stats --test CSTATES --by Affinity --columns C6%,PC10% logs\n"
    "\n"
    "Exit status: 0 success, 1 no numbers, 3 a file could not be read.";

constexpr const char* kExportExamples =
    "Rows of all logs in order of time, under one header: File, Line, then the columns of the "
    "logs.\n"
    "CSV is quoted as RFC 4180 asks, with CRLF line ends. In JSON lines, numbers are numbers and\n"
    "empty cells are null.\n"
    "\n"
    "Examples:\n"
    "  vexorlog export logs -o night.csv\n"
    "  vexorlog export --format jsonl --failed logs | less\n"
    "\n"
    "Exit status: 0 success, 3 a file could not be read or written.";

constexpr const char* kReportExamples =
    "The page needs no network. It shows the summary, a time line, gaps, failures with the rows\n"
    "around them, and plots of all measurements; long logs are thinned so that peaks stay.\n"
    "\n"
    "Example:\n"
    "  vexorlog report logs -o night.html\n"
    "\n"
    "Exit status: 0 no failures, 1 failures, 3 a file could not be read or written.";

constexpr const char* kManualExamples =
    "Example:\n"
    "  vexorlog manual | man -l -";

void AddPaths(CLI::App& command, std::vector<std::string>& paths) {
  command.add_option("PATH", paths, "Logs or folders of logs")->required();
}

void AddJson(CLI::App& command, bool& json) {
  command.add_flag("--json", json, "Print JSON for programs");
}

void AddText(CLI::App& command, const char* name, const char* type, std::string& text,
             const char* about) {
  command.add_option(name, text, about)->type_name(type);
}

void AddNames(CLI::App& command, const char* name, std::vector<std::string>& names,
              const char* about) {
  command.add_option(name, names, about)
      ->delimiter(',')
      ->type_name("NAME,...")
      ->allow_extra_args(false);
}

void AddNumber(CLI::App& command, const char* name, std::size_t& number, const char* about) {
  command.add_option(name, number, about)->type_name("N")->check(CLI::Range(0, 1'000'000));
}

// Adds the options of all commands that select rows.
void AddSelection(CLI::App& command, Selection& rows) {
  AddPaths(command, rows.paths);
  AddNames(command, "--test", rows.tests, "Only rows of these tests, such as CSTATES,HWP");
  AddText(command, "--level", "LEVEL", rows.level,
          "Only rows of this level or a more important one: Critical, Information or Debug");
  AddText(
      command, "--since", "TIME", rows.since,
      "Only rows from TIME on: \"2024-03-07 21:00\", 21:00, +2h (after the first row) or -30min "
      "(before the last row)");
  AddText(command, "--until", "TIME", rows.until, "Only rows up to TIME, given in the same way");
  AddText(command, "--grep", "REGEX", rows.grep,
          "Only rows that match a regular expression (RE2 syntax; (?i) ignores case)");
  command.add_flag("--failed", rows.failed, "Only rows of failures");
}

void AddOutput(CLI::App& command, std::string& file, bool& force) {
  AddText(command, "-o,--output", "FILE", file, "File to write");
  command.add_flag("-f,--force", force, "Replace FILE if it exists");
}

void AddSummary(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "summary", "Show what ran, what failed first and why, and how the logs end.",
      kSummaryExamples, Summarise);
  AddSelection(*command, arguments->rows);
  AddNumber(*command, "--failures", arguments->failures,
            "List the first N kinds of failures; 10 without the option");
  AddJson(*command, arguments->json);
}

void AddShow(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "show", "Print the rows of all logs in order of time.", kShowExamples, Show);
  AddSelection(*command, arguments->rows);
  AddNames(*command, "--columns", arguments->columns,
           "Print these columns, in this order; without the option, those that are not empty");
  AddNumber(*command, "--context", arguments->context,
            "Print also the N rows before and after each");
  AddJson(*command, arguments->json);
}

void AddFollow(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "follow", "Print rows as they are logged.", kFollowExamples, Follow);
  AddSelection(*command, arguments->rows);
  AddNames(*command, "--columns", arguments->columns, "Print these columns, in this order");
  AddText(*command, "--for", "DURATION", arguments->duration, "Stop after this time, such as 90s");
}

void AddCheck(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "check", "List damage in logs, with file and line.", kCheckExamples, Check);
  AddPaths(*command, arguments->paths);
  AddJson(*command, arguments->json);
}

void AddGaps(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "gaps", "List the times in which nothing was logged, and the restarts.",
      kGapsExamples, ListGaps);
  AddSelection(*command, arguments->rows);
  AddText(*command, "--longer-than", "DURATION", arguments->longer_than,
          "List gaps longer than this, such as 90s or 5min; without the option, longer than ten "
          "times the mean time between rows, and at least 1min");
  AddJson(*command, arguments->json);
}

void AddStats(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "stats", "Print statistics of the numeric columns.", kStatsExamples,
                 PrintStatistics);
  AddSelection(*command, arguments->rows);
  AddText(*command, "--by", "COLUMN", arguments->by,
          "Group rows by this column; TestType without the option");
  AddNames(*command, "--columns", arguments->columns,
           "Only these columns; without the option, all that hold numbers");
  AddJson(*command, arguments->json);
}

void AddExport(CLI::App& app, Status& status) {
  const auto [command, arguments] =
      AddCommand(app, status, "export", "Write the rows of all logs as CSV or JSON lines.",
                 kExportExamples, Export);
  AddSelection(*command, arguments->rows);
  command->add_option("--format", arguments->format, "csv or jsonl; csv without the option")
      ->type_name("FORMAT")
      ->check(OneOf({"csv", "jsonl"}));
  AddOutput(*command, arguments->file, arguments->force);
}

void AddReport(CLI::App& app, Status& status) {
  const auto [command, arguments] = AddCommand(
      app, status, "report", "Write a report as one HTML file.", kReportExamples, WriteReport);
  AddSelection(*command, arguments->rows);
  AddOutput(*command, arguments->file, arguments->force);
  command->get_option("--output")->required();
}

// The words that options accept. Column names cannot be completed: they depend on the logs.
std::vector<CompletionWords> ListWords() {
  return {{.command = "", .after = "--test", .words = NamesOfTests()},
          {.command = "", .after = "--level", .words = {"Critical", "Information", "Debug"}}};
}

}  // namespace

std::unique_ptr<CLI::App> MakeCommandLine(Status& status) {
  auto app =
      MakeApp("Reads the logs of the power-management test suite: what ran, what failed, and when.",
              kTopExamples);
  AddSummary(*app, status);
  AddShow(*app, status);
  AddFollow(*app, status);
  AddCheck(*app, status);
  AddGaps(*app, status);
  AddStats(*app, status);
  AddExport(*app, status);
  AddReport(*app, status);
  AddCompletion(*app, status, ListWords);
  AddPrinter(*app, status, "manual", "Print the manual page.", kManualExamples, PrintManual);
  return app;
}

}  // namespace vexorlog
}  // namespace tools
