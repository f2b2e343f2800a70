#include <algorithm>
#include <iostream>
#include <optional>

#include "commands.h"
#include "common/text_output.h"
#include "comparison.h"
#include "configurations.h"
#include "json_output.h"
#include "settings.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Setting;

// The result of the command.
struct Differences {
  std::vector<Difference> shown;
  std::size_t left_out = 0;  // differences of tests that run in neither file
  std::size_t equal = 0;     // settings of one meaning
  std::size_t reworded = 0;  // those of them that are written differently
  bool has_other_version = false;

  [[nodiscard]] Status status() const {
    return shown.empty() && !has_other_version ? kClean : kWarnings;
  }
};

Differences FindDifferences(const Description& a, const Description& b, bool all) {
  Comparison comparison = Compare(a, b);
  Differences found{.shown = std::move(comparison.differences),
                    .equal = comparison.equal.size(),
                    .reworded = comparison.reworded,
                    .has_other_version = a.version != b.version};
  if (all) return found;
  std::vector<std::string_view> tests = TestsThatRun(a);
  std::ranges::copy(TestsThatRun(b), std::back_inserter(tests));
  found.left_out = std::erase_if(found.shown, [&tests](const Difference& difference) {
    const std::string_view test = TestOf(difference.setting());
    return !test.empty() && std::ranges::count(tests, test) == 0;
  });
  return found;
}

std::string Describe(const std::string& file, std::span<const Setting> settings) {
  if (settings.empty()) return "none";
  const auto stated = std::ranges::find_if(settings, [](const Setting& s) { return s.line > 0; });
  const Setting& first = stated == settings.end() ? settings.front() : *stated;
  return FormatValue(settings) + " (" + PlaceOf(file, first) + ")";
}

void Print(const Differences& found, const Input& a, const Input& b, const Description& left,
           const Description& right) {
  for (const Difference& difference : found.shown) {
    std::cout << OneLine(difference.path) << ": " << Describe(a.name, difference.a) << " -> "
              << Describe(b.name, difference.b) << '\n';
  }
  if (found.has_other_version) {
    std::cout << "Version: " << Quote(left.version) << " -> " << Quote(right.version) << '\n';
  }
  std::cout << (found.shown.empty() ? std::string("no setting")
                                    : Count(found.shown.size(), "setting"))
            << (found.shown.size() > 1 ? " differ, " : " differs, ") << found.equal
            << " mean the same";
  if (found.reworded > 0) std::cout << ", " << found.reworded << " of them reworded";
  std::cout << '\n';
  if (found.left_out == 0) return;
  std::cout << Count(found.left_out, "difference")
            << " of tests that run in neither file left out, shown with --all\n";
}

}  // namespace

Status Diff(const DiffArguments& arguments) {
  Input a;
  Input b;
  if (arguments.a == "-" && arguments.b == "-") {
    return Refuse("<stdin>", "cannot be compared with itself");
  }
  const std::optional<Description> left = DescribeInput(arguments.a, a);
  const std::optional<Description> right = DescribeInput(arguments.b, b);
  if (!left || !right) return kNotRun;
  const Differences found = FindDifferences(*left, *right, arguments.all);
  if (arguments.json) {
    Json json = MakeDocument("diff", found.status());
    json["a"] = {{"file", a.name}, {"version", left->version}};
    json["b"] = {{"file", b.name}, {"version", right->version}};
    json["differences"] = MakeDifferences(found.shown);
    json["equal"] = found.equal;
    json["reworded"] = found.reworded;
    json["left_out"] = found.left_out;
    PrintDocument(json);
  } else {
    Print(found, a, b, *left, *right);
  }
  return found.status();
}

}  // namespace tools::vexorcfg
