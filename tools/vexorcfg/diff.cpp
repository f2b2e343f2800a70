#include <iostream>
#include <optional>

#include "commands.h"
#include "common/text_output.h"
#include "comparison.h"
#include "configurations.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Setting;

std::string Describe(const std::string& file, const Setting* setting) {
  if (setting == nullptr) return "none";
  return Quote(setting->value) + " (" + PlaceOf(file, *setting) + ")";
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

  const Comparison comparison = Compare(*left, *right);
  for (const SettingPair& difference : comparison.differences) {
    std::cout << OneLine(difference.path()) << ": " << Describe(a.name, difference.a) << " -> "
              << Describe(b.name, difference.b) << '\n';
  }
  if (left->version != right->version) {
    std::cout << "Version: " << Quote(left->version) << " -> " << Quote(right->version) << '\n';
  }
  std::cout << (comparison.differences.empty() ? std::string("no setting")
                                               : Count(comparison.differences.size(), "setting"))
            << (comparison.differences.size() > 1 ? " differ, " : " differs, ")
            << comparison.equal.size() << " mean the same";
  if (comparison.reworded > 0) std::cout << ", " << comparison.reworded << " of them reworded";
  std::cout << '\n';
  return comparison.differences.empty() && left->version == right->version ? kClean : kWarnings;
}

}  // namespace tools::vexorcfg
