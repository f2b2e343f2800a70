#include "columns.h"
#include "commands.h"
#include "common/output_file.h"
#include "common/text_output.h"
#include "json.h"

namespace tools::vexorlog {
namespace {

// Returns a cell quoted as in RFC 4180.
void AppendCsv(std::string& line, std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    line += text;
    return;
  }
  line += '"';
  for (const char c : text) line.append(c == '"' ? 2 : 1, c);
  line += '"';
}

std::string FormatCsv(const std::string& file, std::string_view line, const ColumnFinder& finder,
                      const vexor::LogRow* row) {
  std::string text;
  AppendCsv(text, file);
  text.append(",").append(line);
  for (std::size_t i = 0; i < finder.Names().size(); ++i) {
    text += ',';
    AppendCsv(text, row == nullptr ? std::string_view(finder.Names()[i]) : finder.Cell(*row, i));
  }
  return text + "\r\n";
}

std::string FormatJsonLine(const std::string& file, const vexor::LogRow& row,
                           const ColumnFinder& finder) {
  Json json = {{"File", file}, {"Line", row.Line()}};
  for (std::size_t i = 0; i < finder.Names().size(); ++i) {
    json[finder.Names()[i]] = finder.MakeCell(row, i);
  }
  return PrintJson(json) + "\n";
}

}  // namespace

Status Export(const ExportArguments& arguments) {
  const Logs logs = FindGivenLogs(arguments.rows.paths);
  const auto filter = MakeFilter(arguments.rows, logs);
  if (!filter || logs.series.empty()) return kNotRun;
  if (KeepLogs(logs, arguments.file) != kClean) return kNotRun;
  OutputFile output(arguments.file, arguments.force);
  if (!output.IsOpen()) return kNotRun;
  Progress progress(output.IsStandardOutput() ? 0 : 2 * CountBytes(logs));
  std::vector<std::string> names;
  for (const ColumnUse& column : CollectColumns(logs, *filter, progress)) {
    names.push_back(column.name);
  }
  if (names.empty()) names.emplace_back("Notes");

  ColumnFinder finder(std::move(names));
  const bool is_csv = arguments.format == "csv";
  if (is_csv) output.Write(FormatCsv("File", "Line", finder, nullptr));
  RowProgress done(progress);
  vexor::LogMerge merge(logs.series);
  while (merge.Next()) {
    const vexor::LogRow row = merge.Row();
    done.Add(row);
    if (!filter->Passes(row, merge.Time())) continue;
    const std::string& file = merge.File().path;
    finder.Select(row);
    output.Write(is_csv ? FormatCsv(file, std::to_string(row.Line()), finder, &row)
                        : FormatJsonLine(file, row, finder));
  }
  if (output.Close() != kClean) return kNotRun;
  return ReportFaults(merge.Faults(), logs.status);
}

}  // namespace tools::vexorlog
