// The names of a series of log files: run_0.csv, run_1.csv, ...
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace vexor {

// Returns the path of the log `name` in the folder `path`, or just the name if `path` is empty.
// Adds ".csv" unless the name ends with it in any case. An empty name becomes "VexorLog_" and the
// time, followed for a `copy` above 1 by "-" and that number.
std::string MakeLogName(std::string_view path, std::string_view name, unsigned copy = 1);

// Whether Windows takes the last part of the path for a device or for a stream of another file:
// NUL, COM1.csv, run:1.csv.
bool NamesDeviceOrStream(std::string_view path);

// Returns the name of the file with this index in a series: inserts "_" and the index before the
// extension, in place of the previous index if the name has it: run.csv, run_0.csv, run_1.csv.
std::string MakeSplitName(std::string_view name, std::uint32_t index);

// Returns the number between the last "_" of the file's base name and its extension. Returns
// nothing if there is none, or if it is too large to have a next one.
std::optional<std::uint32_t> FindSeriesIndex(std::string_view file_name);

// Returns the name, to be passed to MakeLogName with the same `path`, of the file with the highest
// number in the series of this name. Empty if there is none; empty with an error if the folder
// cannot be read.
std::string FindLastOfSeries(std::string_view path, std::string_view name, std::error_code& error);

}  // namespace vexor
