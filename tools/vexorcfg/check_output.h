// The output of a check in several formats.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "common/json.h"
#include "common/status.h"
#include "vexor/config/check.h"

namespace tools::vexorcfg {

struct CheckedFile {
  std::string name;  // for messages
  std::string path;  // as it was found
  std::string content;
  std::string failure;  // why it was not checked; empty if it was
  std::vector<vexor::Finding> findings;
};

// What all files of a check amount to.
class CheckTotals {
 public:
  explicit CheckTotals(const CheckArguments& arguments) : arguments_(arguments) {}

  void Add(const CheckedFile& file);

  [[nodiscard]] std::size_t CountOf(vexor::Severity severity) const {
    return counts_.at(static_cast<std::size_t>(severity));
  }
  [[nodiscard]] std::size_t Allowed() const { return allowed_; }
  [[nodiscard]] std::size_t Unread() const { return unread_; }
  [[nodiscard]] Status GetStatus() const;

  // Returns the last line of the output: "lab.xml: 3 errors (2 allowed)".
  [[nodiscard]] std::string MakeVerdict() const;

 private:
  [[nodiscard]] std::string MakeCounts() const;

  const CheckArguments& arguments_;
  std::string last_file_;
  std::array<std::size_t, 3> counts_{};  // by severity
  std::size_t allowed_ = 0;
  std::size_t files_ = 0;
  std::size_t unread_ = 0;
};

// Each format has a class with these members: Add prints or keeps one file, in order; Finish prints
// what comes after the last.

// Lines for people.
class TextOutput {
 public:
  explicit TextOutput(const CheckArguments& arguments);
  void Add(const CheckedFile& file);
  static void Finish(const CheckTotals& totals);

 private:
  void PrintFinding(const CheckedFile& file, const vexor::Finding& finding) const;
  void PrintSource(const CheckedFile& file, const vexor::Finding& finding) const;
  [[nodiscard]] std::string_view Coloured(std::string_view sequence) const {
    return colours_ ? sequence : std::string_view();
  }

  const CheckArguments& arguments_;
  bool colours_;
};

// Workflow commands of GitHub Actions.
class GithubOutput {
 public:
  explicit GithubOutput(const CheckArguments& arguments) : arguments_(arguments) {}
  void Add(const CheckedFile& file);
  static void Finish(const CheckTotals& totals);

 private:
  const CheckArguments& arguments_;
};

// A document of the tool's own form.
class JsonOutput {
 public:
  explicit JsonOutput(const CheckArguments& arguments) : arguments_(arguments) {}
  void Add(const CheckedFile& file);
  void Finish(const CheckTotals& totals);

 private:
  const CheckArguments& arguments_;
  Json files_ = Json::array();
};

// A log in the Static Analysis Results Interchange Format, version 2.1.0.
class SarifOutput {
 public:
  explicit SarifOutput(const CheckArguments& arguments) : arguments_(arguments) {}
  void Add(const CheckedFile& file);
  void Finish(const CheckTotals& totals);

 private:
  const CheckArguments& arguments_;
  Json results_ = Json::array();
  Json notifications_ = Json::array();  // files that were not checked
};

// Returns whether the arguments ask for the finding. Those that a comment allows only count.
bool IsShown(const vexor::Finding& finding, const CheckArguments& arguments);

// The end of a faulty part of a file.
struct End {
  int line;
  int column;  // from 1, in characters, of the character behind it
};

// Returns the end of what a finding with a column is about.
End EndOf(const vexor::Finding& finding, std::string_view content);

}  // namespace tools::vexorcfg
