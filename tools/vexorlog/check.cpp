#include <array>
#include <fstream>
#include <iostream>

#include "commands.h"
#include "common/files.h"
#include "common/text_output.h"
#include "json.h"
#include "logs.h"

namespace tools::vexorlog {
namespace {

using vexor::LogDamage;
using vexor::LogRow;
using vexor::LogTime;

struct Finding {
  std::string path;
  std::uint64_t line = 0;  // 0 for the file as a whole
  std::string what;
};

struct FileFindings {
  std::vector<Finding> findings;
  std::uint64_t more = 0;  // number of findings that are not listed
  std::vector<vexor::LogFault> faults;
};

// Bounds the memory for a file in which every row is damaged.
constexpr std::size_t kMostListed = 1000;

struct DamageText {
  LogDamage damage;
  std::string_view what;
};

constexpr std::array<DamageText, vexor::kLogDamageCount> kDamageTexts = {
    {{LogDamage::kCutOff, "the row is cut off"},
     {LogDamage::kNoStart, "the beginning of the row is lost"},
     {LogDamage::kTooLong, "the line is too long to be a row"},
     {LogDamage::kNoUtf8, "the row holds bytes that are not UTF-8"},
     {LogDamage::kOtherWidth, ""},  // said with the numbers
     {LogDamage::kOpenQuote, "a quoted cell is never closed"},
     {LogDamage::kStrayQuote, "text follows the closing quote of a cell"}}};

// The size of a NUL block includes the line end after it.
std::uint64_t CountZeros(const std::string& path, const LogRow& block) {
  std::uint64_t zeros = block.Size();
  std::ifstream file(PathOf(path), std::ios::binary);
  for (const char end : {'\n', '\r'}) {
    char last = 0;
    file.seekg(static_cast<std::streamoff>(block.Offset() + zeros - 1));
    if (zeros > 1 && file.get(last) && last == end) --zeros;
  }
  return zeros;
}

class FileCheck {
 public:
  FileCheck(const std::string& path, FileFindings& result) : path_(path), result_(result) {}

  void Run(Progress& progress) {
    ReadRows(path_, result_.faults, progress,
             [this](const LogRow& row, LogTime /*time*/) { Look(row); });
    // Lines that are too long are among the findings.
    std::erase_if(result_.faults, [](const vexor::LogFault& fault) {
      return fault.error == std::errc::value_too_large;
    });
  }

 private:
  void Look(const LogRow& row) {
    if (row.Kind() == vexor::LogRowKind::kNulBlock) {
      Add(row, Count(CountZeros(path_, row), "zero byte") + ", as after a power cut");
      return;
    }
    const bool is_whole = !row.Has(LogDamage::kCutOff) && !row.Has(LogDamage::kNoStart);
    for (const auto& [damage, what] : kDamageTexts) {
      const bool is_implied = damage == LogDamage::kOpenQuote && !is_whole;
      if (row.Has(damage) && !is_implied && !what.empty()) Add(row, std::string(what));
    }
    if (row.Has(LogDamage::kOtherWidth) && is_whole) {
      Add(row, Count(row.Width(), "cell") + ", but the header has " +
                   Count(row.Columns().size(), "column"));
    }
    const LogTime time = row.Time();
    if (time == vexor::kNoLogTime) return;
    if (time < last_)
      Add(row, "the time is " + FormatDuration(last_ - time) + " before that of the last row");
    last_ = time;
  }

  void Add(const LogRow& row, std::string what) {
    if (result_.findings.size() >= kMostListed) {
      ++result_.more;
    } else {
      result_.findings.push_back({.path = path_, .line = row.Line(), .what = std::move(what)});
    }
  }

  const std::string& path_;
  FileFindings& result_;
  LogTime last_ = vexor::kNoLogTime;
};

// Returns the findings about a series as a whole.
void AddSeries(const vexor::FoundSeries& series, std::vector<Finding>& findings) {
  for (const auto& [first, last] : series.missing) {
    const std::string more =
        first == last ? " is missing"
                      : " and those up to number " + std::to_string(last) + " are missing";
    findings.push_back({.path = series.name + "_" + std::to_string(first) + ".csv",
                        .what = "this file of the series" + more});
  }
  for (const vexor::FoundLog& file : series.leftovers) {
    findings.push_back(
        {.path = file.path, .what = "left over from an earlier run, not part of the series"});
  }
  for (const vexor::FoundLog& file : series.files) {
    if (file.size == 0 && KindOf(file.path) == FileKind::kFile) {
      findings.push_back({.path = file.path, .what = "the file is empty"});
    }
  }
}

struct Result {
  std::vector<Finding> findings;
  std::uint64_t more = 0;
  std::size_t files = 0;
  std::vector<vexor::LogFault> faults;
};

Result CheckAll(const Logs& logs) {
  std::vector<std::string> paths;
  for (const vexor::FoundSeries& series : logs.series) {
    for (const vexor::FoundLog& file : series.files) paths.push_back(file.path);
    for (const vexor::FoundLog& file : series.leftovers) paths.push_back(file.path);
  }
  std::vector<FileFindings> files(paths.size());
  Progress progress(CountBytes(logs));
  RunInParallel(paths.size(), [&](std::size_t i) { FileCheck(paths[i], files[i]).Run(progress); });

  Result result;
  result.files = paths.size();
  for (const vexor::FoundSeries& series : logs.series) AddSeries(series, result.findings);
  for (FileFindings& file : files) {
    std::ranges::move(file.findings, std::back_inserter(result.findings));
    std::ranges::move(file.faults, std::back_inserter(result.faults));
    result.more += file.more;
  }
  return result;
}

void PrintFindings(const Result& result) {
  for (const Finding& finding : result.findings) {
    std::cout << NameFile(finding.path) << ':';
    if (finding.line > 0) std::cout << finding.line << ':';
    std::cout << ' ' << finding.what << '\n';
  }
  std::cout << Count(result.files, "file") << ": ";
  const std::uint64_t count = result.findings.size() + result.more;
  std::cout << (count == 0 ? "no damage" : Count(count, "finding"));
  if (result.more > 0) std::cout << ", of which " << result.more << " are not listed";
  std::cout << '\n';
}

void PrintJsonFindings(const Result& result) {
  Json json = {{"format", "vexorlog check"},
               {"version", 1},
               {"files", result.files},
               {"unlisted", result.more},
               {"findings", Json::array()}};
  for (const Finding& finding : result.findings) {
    json["findings"].push_back({{"file", finding.path},
                                {"line", finding.line == 0 ? Json() : Json(finding.line)},
                                {"what", finding.what}});
  }
  std::cout << PrintJson(json, 1) << '\n';
}

}  // namespace

Status Check(const CheckArguments& arguments) {
  const Logs logs = FindGivenLogs(arguments.paths);
  if (logs.series.empty()) return kNotRun;
  const Result result = CheckAll(logs);
  if (arguments.json) {
    PrintJsonFindings(result);
  } else {
    PrintFindings(result);
  }
  return ReportFaults(result.faults, logs.status != kClean     ? logs.status
                                     : result.findings.empty() ? kClean
                                                               : kWarnings);
}

}  // namespace tools::vexorlog
