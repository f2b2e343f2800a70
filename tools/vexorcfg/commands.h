// The commands of the tool. Each prints its results to standard output and its errors to standard
// error, and returns the exit status.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "common/files.h"
#include "common/status.h"
#include "vexor/config/check.h"

namespace tools::vexorcfg {

struct CheckArguments {
  std::vector<std::string> files;  // "-" is standard input, here and in the other commands
  bool strict = false;             // warnings count as errors
  bool notes = false;
  std::string format = "text";                                    // one of GetCheckFormats
  bool json = false;                                              // the same as the format "json"
  bool quiet = false;                                             // the verdict alone
  std::size_t max_size = vexor::CheckLimits().most_bytes >> 20U;  // of a file, in MiB
};
Status Check(const CheckArguments& arguments);

// Returns the names of the formats of its output, first the default.
std::vector<std::string> GetCheckFormats();

struct ShowArguments {
  std::string file;
  std::vector<std::string> overrides;  // test options of a command line
  bool all = false;                    // sections of nothing but defaults, too
  bool changed = false;                // only settings that differ from the defaults
  bool json = false;
  bool tests = false;    // the tests that run alone
  bool summary = false;  // print the library's summary lines instead of the settings
};
Status Show(const ShowArguments& arguments);

struct DefaultsArguments : WriteArguments {
  std::string schema;  // path or URI of the schema that the file names; empty for none
};
Status WriteDefaults(const DefaultsArguments& arguments);

Status WriteSchema(const WriteArguments& arguments);
Status WriteReference(const WriteArguments& arguments);

struct ConvertArguments {
  std::string in;
  std::string out;
  bool diff = false;   // show what would change, write nothing
  bool force = false;  // replace a file
  bool lossy = false;  // replace the file itself even if a part of it is lost
};
Status Convert(const ConvertArguments& arguments);

struct GetArguments {
  std::string file;
  std::vector<std::string> paths;
  bool json = false;
};
Status Get(const GetArguments& arguments);

// The arguments of a command that changes a file in place.
struct EditArguments {
  std::string file;
  std::vector<std::string> edits;  // PATH=VALUE, or PATH
  bool diff = false;               // show what would change, write nothing
  bool force = false;
};
Status Set(const EditArguments& arguments);
Status Unset(const EditArguments& arguments);

// The arguments of a command that changes files in place without being told what.
struct RewriteArguments {
  std::vector<std::string> files;
  bool diff = false;  // show what would change, write nothing
};
Status Fix(const RewriteArguments& arguments);
Status Migrate(const RewriteArguments& arguments);

struct DiffArguments {
  std::string a;
  std::string b;
  bool all = false;  // tests that run in neither file, too
  bool json = false;
};
Status Diff(const DiffArguments& arguments);

struct ExplainArguments {
  std::string subject;             // a name, "option" or "error"; empty lists the syntaxes
  std::vector<std::string> texts;  // the texts to explain
  bool json = false;
};
Status Explain(const ExplainArguments& arguments);

struct ServerArguments {
  bool stdio = false;  // what it does in any case; editors say it
};
Status ServeEditor(const ServerArguments& arguments);

}  // namespace tools::vexorcfg
