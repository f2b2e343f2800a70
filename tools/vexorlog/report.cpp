#include <algorithm>
#include <array>

#include "commands.h"
#include "common/files.h"
#include "common/text_output.h"
#include "gaps.h"
#include "report_data.h"
#include "report_parts.h"
#include "summary.h"
#include "vexor/util/version.h"

namespace tools::vexorlog {
namespace {

constexpr std::size_t kMostTests = 200;
constexpr std::size_t kMostGaps = 300;
constexpr std::size_t kMostThinned = 2'500'000;  // bytes of the lanes and plots after thinning
constexpr std::size_t kMostText = 300;

// Texts of a log may have any length; those of the report are cut.
void ShortenTexts(Json& json) {
  if (json.is_string()) {
    json = OneLine(json.get_ref<const std::string&>(), kMostText);
  } else if (json.is_structured()) {
    for (Json& member : json) ShortenTexts(member);
  }
}

Json MakeSummary(Survey survey) {
  survey.failures.resize(std::min(survey.failures.size(), kMostTests));
  Json json = MakeSummaryJson(survey);
  json.erase("failures");  // they are listed with their context
  json["more_tests"] = 0;
  if (survey.tests.size() > kMostTests) {
    json["more_tests"] = survey.tests.size() - kMostTests;
    json["tests"].get_ref<Json::array_t&>().resize(kMostTests);
  }
  ShortenTexts(json);
  return json;
}

// Returns the longest gaps, in order of time.
Json MakeGaps(Gaps found) {
  std::ranges::stable_sort(found.gaps, std::greater(), &Gap::Length);
  const std::size_t more = found.gaps.size() - std::min(found.gaps.size(), kMostGaps);
  found.gaps.resize(found.gaps.size() - more);
  std::ranges::stable_sort(found.gaps, {}, [](const Gap& gap) { return gap.before.time; });
  Json json = MakeGapsJson(found);
  json["more"] = more;
  ShortenTexts(json);
  return json;
}

// Returns JSON for a script element of a page: "<" is escaped, so that no text looks like a tag.
std::string EscapeForScript(std::string_view json) {
  std::string text;
  for (const char c : json) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

struct Part {
  std::string_view mark;
  std::string_view text;
};

// Replaces the marks in the page, which are in the same order, by the parts.
std::string FillPage(std::string_view page, const std::array<Part, 5>& parts) {
  std::string text;
  for (const auto& [mark, part] : parts) {
    const std::size_t place = page.find(mark);
    text.append(page.substr(0, place)).append(part);
    page.remove_prefix(place + mark.size());
  }
  return text.append(page);
}

std::string MakePage(const Json& data) {
  const std::string json = EscapeForScript(PrintJson(data));
  return FillPage(kReportPage, {{{"/*dygraphs.css*/", kDygraphsStyle},
                                 {"/*report.css*/", kReportStyle},
                                 {"{\"data\":0}", json},
                                 {"/*dygraphs.js*/", kDygraphsScript},
                                 {"/*report.js*/", kReportScript}}});
}

}  // namespace

Status WriteReport(const ReportArguments& arguments) {
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  const auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.series.empty()) return kNotRun;
  if (KeepLogs(logs, arguments.file) != kClean) return kNotRun;
  Progress progress(2 * CountBytes(logs));
  RowProgress done(progress);
  Survey survey = MakeSurvey(logs, *filter, progress);
  const bool has_failures = !survey.failures.empty();
  ReportData rows(survey.first, survey.last);
  GapFinder gaps({});
  vexor::LogMerge merge(logs.series);
  while (merge.Next()) {
    done.Add(merge.Row());
    const bool is_selected = filter->Passes(merge.Row(), merge.Time());
    rows.Add(merge, is_selected);
    if (is_selected) gaps.Add(merge);
  }

  Json data = {{"format", "vexorlog report"}, {"version", 1}, {"made_by", vexor::GetVersionText()}};
  data["paths"] = arguments.rows.paths;
  ShortenTexts(data["paths"]);
  data["summary"] = MakeSummary(std::move(survey));
  data["gaps"] = MakeGaps(gaps.Finish());
  data.update(rows.Finish(kMostThinned));
  const Status written = WriteDocument(arguments.file, MakePage(data), arguments.force);
  if (written != kClean) return written;
  return ReportFaults(merge.Faults(), logs.status != kClean ? logs.status
                                      : has_failures        ? kWarnings
                                                            : kClean);
}

}  // namespace tools::vexorlog
