// The commands of the tool. Each prints to standard output, and what kept it from running to
// standard error, and returns the exit status.
#pragma once

#include <string>
#include <vector>

namespace vexorcfg {

// The exit status of every command. `kWarnings` is also that of "diff" for files that differ, and
// of "convert" for a file that was not carried over whole; `kErrors` that of "explain" for a text
// that is wrong.
enum Status : int {
  kClean = 0,
  kWarnings = 1,
  kErrors = 2,
  kNotRun = 3,
};

struct CheckArguments {
  std::vector<std::string> files;  // "-" is standard input, here and in the other commands
  bool strict = false;             // warnings count as errors
  bool notes = false;
  bool json = false;
  bool quiet = false;  // the verdict alone
};
Status Check(const CheckArguments& arguments);

struct ShowArguments {
  std::string file;
  bool all = false;      // sections of nothing but defaults, too
  bool tests = false;    // the tests that run alone
  bool summary = false;  // the library's summary lines in place of the settings
};
Status Show(const ShowArguments& arguments);

// Of the commands that write a document of their own making.
struct WriteArguments {
  std::string file;  // empty for standard output
  bool force = false;
};
Status WriteDefaults(const WriteArguments& arguments);
Status WriteSchema(const WriteArguments& arguments);
Status WriteReference(const WriteArguments& arguments);

struct ConvertArguments {
  std::string in;
  std::string out;
  bool diff = false;   // show what would change, write nothing
  bool force = false;  // replace a file
};
Status Convert(const ConvertArguments& arguments);

struct DiffArguments {
  std::string a;
  std::string b;
};
Status Diff(const DiffArguments& arguments);

struct ExplainArguments {
  std::string subject;             // a syntax, "option" or "error"; empty lists them
  std::vector<std::string> texts;  // what is to be explained
};
Status Explain(const ExplainArguments& arguments);

}  // namespace vexorcfg
