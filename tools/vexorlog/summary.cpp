#include "summary.h"

#include <algorithm>
#include <iostream>

#include "commands.h"
#include "common/table.h"
#include "common/text_output.h"
#include "error_words.h"

namespace tools::vexorlog {
namespace {

using vexor::LogTime;

std::string_view NameOf(LogEnd end) {
  switch (end) {
    case LogEnd::kJustWritten:
      return "just written";
    case LogEnd::kCutOff:
      return "cut off";
    case LogEnd::kClosed:
      break;
  }
  return "closed";
}

// The times of a summary are printed without milliseconds.
std::string FormatSecond(LogTime time) {
  constexpr std::size_t kLength = std::string_view("2024-03-07 21:00:00").size();
  return vexor::FormatLogTime(time).substr(0, kLength);
}

// Without the year, which is above the table.
std::string FormatShort(LogTime time) {
  const std::string text = FormatSecond(time);
  return text.empty() ? text : text.substr(std::string_view("2024-").size());
}

std::string FormatCount(std::uint64_t count) { return count == 0 ? "" : std::to_string(count); }

std::string NameTest(const std::string& test) { return test.empty() ? "(none)" : OneLine(test); }

LogTime FirstFailureOf(const Survey& survey, const TestSurvey& test) {
  if (test.failures == 0) return vexor::kNoLogTime;
  const auto first = std::ranges::find(survey.failures, test.test, &FailureKind::test);
  return first == survey.failures.end() ? vexor::kNoLogTime : first->first;
}

std::string FormatSilence(const Silence& silence) {
  if (silence.Length() <= 0) return {};
  return FormatDuration(silence.Length()) + " from " + FormatShort(silence.begin);
}

void PrintTests(const Survey& survey) {
  TextTable table({{"test"},
                   {"first row"},
                   {"last row"},
                   {"duration", Align::kRight},
                   {"rows", Align::kRight},
                   {"iterations", Align::kRight},
                   {"passed", Align::kRight},
                   {"failed", Align::kRight},
                   {"first failure"},
                   {"longest silence"},
                   {"restarts", Align::kRight},
                   {"log ends"}});
  for (const TestSurvey& test : survey.tests) {
    table.AddRow({NameTest(test.test), FormatShort(test.first), FormatShort(test.last),
                  FormatDuration(test.last - test.first), std::to_string(test.rows),
                  FormatCount(test.iterations), FormatCount(test.passes),
                  FormatCount(test.failures), FormatShort(FirstFailureOf(survey, test)),
                  FormatSilence(test.longest), FormatCount(test.restarts),
                  std::string(NameOf(test.end))});
  }
  std::cout << '\n' << table.Format();
}

void PrintFailure(const FailureKind& failure) {
  std::cout << vexor::FormatLogTime(failure.first) << "  " << NameTest(failure.test);
  if (!failure.iteration.empty()) std::cout << ", iteration " << OneLine(failure.iteration);
  if (!failure.affinity.empty()) std::cout << ", affinity " << OneLine(failure.affinity);
  std::cout << ": " << (failure.what.empty() ? "(no note)" : failure.what);
  if (failure.count > 1) std::cout << " (and " << failure.count - 1 << " more of this kind)";
  std::cout << "\n    " << NameFile(failure.path) << ':' << failure.line << '\n';
  for (const std::string& line : ExplainErrors(GetPMTestID(failure.test, false), failure.what)) {
    std::cout << "    " << line << '\n';
  }
}

void PrintFailures(const Survey& survey, std::size_t most) {
  if (survey.failures.empty() || most == 0) return;
  std::cout << "\nFailures, in order of time, the first of each kind:\n";
  const std::size_t count = std::min(most, survey.failures.size());
  for (std::size_t i = 0; i < count; ++i) PrintFailure(survey.failures[i]);
  if (count < survey.failures.size()) {
    std::cout << "and " << Count(survey.failures.size() - count, "more kind")
              << "; list more with --failures\n";
  }
}

void PrintSummary(const Survey& survey, std::size_t failures) {
  std::cout << Count(survey.files, "file") << ", " << Count(survey.rows, "row");
  if (survey.first != vexor::kNoLogTime) {
    std::cout << ", " << FormatSecond(survey.first) << " to " << FormatSecond(survey.last) << " ("
              << FormatDuration(survey.last - survey.first) << ")";
  }
  std::cout << "\n";
  if (survey.damaged > 0) {
    std::cout << Count(survey.damaged, "damaged place") << "; vexorlog check lists them\n";
  }
  if (!survey.tests.empty()) PrintTests(survey);
  PrintFailures(survey, failures);
}

Json MakeTest(const Survey& survey, const TestSurvey& test) {
  Json json = {{"test", test.test},
               {"first", MakeJson(test.first)},
               {"last", MakeJson(test.last)},
               {"rows", test.rows},
               {"iterations", test.iterations},
               {"passed", test.passes},
               {"failed", test.failures},
               {"first_failure", MakeJson(FirstFailureOf(survey, test))},
               {"longest_silence", Json()},
               {"restarts", test.restarts},
               {"log", NameOf(test.end)}};
  if (test.longest.Length() > 0) {
    json["longest_silence"] = {{"begin", MakeJson(test.longest.begin)},
                               {"end", MakeJson(test.longest.end)},
                               {"seconds", MakeSeconds(test.longest.Length())}};
  }
  return json;
}

Json MakeFailure(const FailureKind& failure) {
  return {{"first", MakeJson(failure.first)},
          {"test", failure.test},
          {"iteration", failure.iteration},
          {"affinity", failure.affinity},
          {"what", failure.what},
          {"count", failure.count},
          {"file", failure.path},
          {"line", failure.line},
          {"explained", ExplainErrors(GetPMTestID(failure.test, false), failure.what)}};
}

}  // namespace

Json MakeSummaryJson(const Survey& survey) {
  Json json = {{"format", "vexorlog summary"},  {"version", 1},
               {"files", survey.files},         {"rows", survey.rows},
               {"damaged", survey.damaged},     {"first", MakeJson(survey.first)},
               {"last", MakeJson(survey.last)}, {"tests", Json::array()},
               {"failures", Json::array()}};
  for (const TestSurvey& test : survey.tests) json["tests"].push_back(MakeTest(survey, test));
  for (const FailureKind& failure : survey.failures) {
    json["failures"].push_back(MakeFailure(failure));
  }
  return json;
}

Status Summarise(const SummaryArguments& arguments) {
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  const auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.series.empty()) return kNotRun;
  Progress progress(CountBytes(logs));
  const Survey survey = MakeSurvey(logs, *filter, progress);
  progress.Finish();
  if (arguments.json) {
    std::cout << PrintJson(MakeSummaryJson(survey), 1) << '\n';
  } else {
    PrintSummary(survey, arguments.failures);
  }
  const bool has_failures = !survey.failures.empty();
  return ReportFaults(survey.faults, logs.status != kClean ? logs.status
                                     : has_failures        ? kWarnings
                                                           : kClean);
}

}  // namespace tools::vexorlog
