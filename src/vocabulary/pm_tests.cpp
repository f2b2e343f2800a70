#include "vexor/vocabulary/pm_tests.h"

#include <algorithm>
#include <cstddef>

#include "util/text.h"
#include "vocabulary/pm_test_names.h"

namespace vexor {

namespace {

// Compares the first letter before the rest: names of the same length mostly differ in it, and that
// saves the call of memcmp.
constexpr bool IsSameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && (a.empty() || (a.front() == b.front() && a == b));
}

// No two long names differ only in case, so the first match is the only one.
template <class Equals>
VEXOR_PM_TEST_ID FindTestByLongName(std::string_view name, Equals equals) {
  for (const auto& [id, long_name, short_name, input] : kPmTestNames) {
    if (input == TestNameInput::kRefused) continue;
    const bool is_any_case = input == TestNameInput::kAnyCase;
    if (is_any_case ? EqualsIgnoreCase(name, long_name) : equals(name, long_name)) {
      return id;
    }
  }
  for (const OlderTestName& alias : kOlderPmTestNames) {
    if (equals(name, alias.name)) return alias.id;
  }
  return PM_TEST_MAX;
}

template <class Equals>
VEXOR_PM_TEST_ID FindTestByShortName(std::string_view name, Equals equals) {
  for (std::size_t id = 0; id < kPmTestNames.size(); ++id) {
    if (equals(name, kPmTestNames[id].short_name)) return static_cast<VEXOR_PM_TEST_ID>(id);
  }
  return PM_TEST_MAX;
}

bool SelectsTest(const char* argument) {
  if (argument == nullptr) return false;
  std::string token(argument);
  if (token.find('/') == std::string::npos) return false;
  std::erase(token, '/');
  return ParsePMTestID(token, false) != PM_TEST_MAX;
}

}  // namespace

}  // namespace vexor

using namespace vexor;

VEXOR_PM_TEST_ID GetPMTestID(std::string_view name, bool ignore_case) {
  return ignore_case ? FindTestByLongName(name, EqualsIgnoreCase)
                     : FindTestByLongName(name, IsSameName);
}

std::string GetPMTestName(VEXOR_PM_TEST_ID id) {
  const bool known = id >= 0 && id <= PM_TEST_END;
  return std::string(known ? kPmTestNames[static_cast<std::size_t>(id)].long_name : "NA");
}

const char* GetPMTestNameByID(int id) {
  const bool known = id >= 0 && id <= PM_TEST_END;
  return known ? kPmTestNames[static_cast<std::size_t>(id)].short_name.data() : "";
}

VEXOR_PM_TEST_ID ParsePMTestID(std::string_view token, bool ignore_case) {
  return ignore_case ? FindTestByShortName(token, EqualsIgnoreCase)
                     : FindTestByShortName(token, IsSameName);
}

bool HasPMTestId(char** argv, int argc) {
  return std::any_of(argv, argv + std::max(argc, 0), SelectsTest);
}
