#include "vexor/config/pm_tests.h"

#include <array>
#include <cassert>

#include "config/file/element_walk.h"
#include "config/file/option_reader.h"
#include "config/tables/common_node.h"
#include "config/tables/pm_test_table.h"
#include "vexor/syntax/time.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

void ReadTest(const XMLElement& element, const PmTestRow& test, bool under_older_name,
              _GLOBALPM_XMLCFG& pm) {
  _PM_TEST_NODE& record = test.record(pm);
  if (test.shape == PmTestRow::Shape::kArguments) {
    ReadArguments(element, test.options, record, &record.AllOptions);
  } else {
    ReadOptions(element, test.options, record, &record.AllOptions);
  }
  if (test.from_older != nullptr) record.*test.from_older = under_older_name;
}

// Reads the tests of one group in a single walk over its children. A test's current name takes
// precedence over its older one.
void ReadGroup(const XMLElement& group, std::span<const PmTestRow> tests, _GLOBALPM_XMLCFG& pm) {
  struct Elements {
    const XMLElement* newer = nullptr;
    const XMLElement* older = nullptr;
  };
  std::array<Elements, kPmTestCount> found;
  assert(tests.size() <= found.size());
  for (const XMLElement& child : ChildElements(group)) {
    const std::string_view name = child.Name();
    for (std::size_t i = 0; i < tests.size(); ++i) {
      if (found[i].newer == nullptr && name == tests[i].name) found[i].newer = &child;
      if (found[i].older == nullptr && name == tests[i].older) found[i].older = &child;
    }
  }
  for (std::size_t i = 0; i < tests.size(); ++i) {
    if (found[i].newer != nullptr) {
      ReadTest(*found[i].newer, tests[i], false, pm);
    } else if (found[i].older != nullptr) {
      ReadTest(*found[i].older, tests[i], true, pm);
    }
  }
}

}  // namespace

void DeriveSwitchTime(_PM_TEST_NODE& test) {
  if (!test.SwitchTime.empty()) return;
  test.SwitchTime = GetUnitTimeString(
      add_OnTimeStructs(ParseOnTimeType(test.ActiveTime), ParseOnTimeType(test.InStateTime)));
}

_PM_TEST_NODE* FindTestNode(_GLOBALPM_XMLCFG& pm, VEXOR_PM_TEST_ID test) {
  const PmTestRow* const row = FindPmTest(test);
  return row == nullptr ? nullptr : &row->record(pm);
}

void ResetGlobalPm(_GLOBALPM_XMLCFG& pm) {
  for (const PmTestRow& test : PmTests()) {
    _PM_TEST_NODE& record = test.record(pm);
    ResetOptions(common::kAllFields, record);
    ResetOptions(test.options, record);
    record.SpareNumber = 0;
    if (test.from_older != nullptr) record.*test.from_older = false;
  }
}

}  // namespace vexor

using namespace vexor;

bool GetGlobalPMXML(_GLOBALPM_XMLCFG& pm, const tinyxml2::XMLElement* root) {
  const auto* const section = FindSection(root, Section::kTests);
  if (section == nullptr) return false;
  for (auto tests = PmTests(); !tests.empty();) {
    const auto group = FirstGroup(tests);
    tests = tests.subspan(group.size());
    const auto* const element = FindElement(section, group.front().group);
    if (element != nullptr) ReadGroup(*element, group, pm);
  }
  return true;
}
