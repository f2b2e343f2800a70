// The names of a series of log files: run_0.csv, run_1.csv, ...
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace vexor {

// The name with ".csv" behind it unless it ends so in any case, in the folder `path`; an empty path
// is no folder. An empty name becomes "VexorLog_" and the time; the second copy and further ones of
// such a name get "-" and their number behind it.
std::string MakeLogName(std::string_view path, std::string_view name, unsigned copy = 1);

// Whether a system that has Windows' names takes the last piece of the path for a device or for a
// stream of a file: NUL, COM1.csv, run:1.csv.
bool NamesDeviceOrStream(std::string_view path);

// The name of this index in a series. Only the base name counts: "_" and the index stand before its
// extension, in place of the index before it if the base name ends with that.
std::string MakeSplitName(std::string_view name, std::uint32_t index);

// The number behind the last "_" of the file's base name, before its extension. Nothing when there
// is none, and for a number that no index can follow.
std::optional<std::uint32_t> FindSeriesIndex(std::string_view file_name);

// The name, as `MakeLogName` takes it beside `path`, of the file with the highest number in the
// series of this name. Empty when there is none, and when the folder cannot be read, with an error.
std::string FindLastOfSeries(std::string_view path, std::string_view name, std::error_code& error);

}  // namespace vexor
