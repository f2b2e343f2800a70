#include <algorithm>
#include <iomanip>
#include <iostream>
#include <span>
#include <unordered_map>

#include "commands.h"
#include "common/text_output.h"
#include "comparison.h"
#include "configurations.h"
#include "json_output.h"
#include "settings.h"
#include "show_overrides.h"
#include "vexor/config/reader.h"
#include "vexor/config/summaries.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Origin;
using vexor::Setting;

// Returns a remark about a value that is not simply the text of its element.
std::string_view NoteOn(Origin origin) {
  switch (origin) {
    case Origin::kFile:
      break;
    case Origin::kOlderName:
      return "under an older name";
    case Origin::kCorrected:
      return "corrected: an older file's entry";
    case Origin::kDerived:
      return "derived from other settings";
    case Origin::kMissing:
      return "missing, and so empty";
    case Origin::kDefault:
      return "default";
  }
  return {};
}

// The settings of one element.
struct Section {
  std::string_view path;
  std::span<const Setting> settings;
  bool is_test = false;
  bool runs = false;

  [[nodiscard]] bool IsAllDefault() const {
    return std::ranges::all_of(
        settings, [](const Setting& setting) { return setting.origin == Origin::kDefault; });
  }
};

std::vector<Section> Divide(std::span<const Setting> rest,
                            std::span<const std::string_view> tests_that_run) {
  std::vector<Section> sections;
  while (!rest.empty()) {
    const std::string_view path = GroupOf(rest.front());
    const auto end = std::ranges::find_if(
        rest, [path](const Setting& setting) { return GroupOf(setting) != path; });
    const auto count = static_cast<std::size_t>(end - rest.begin());
    Section section{.path = path, .settings = rest.first(count)};
    const std::string_view test = TestOf(rest.front());
    section.is_test = !test.empty();
    section.runs = section.is_test && std::ranges::count(tests_that_run, test) > 0;
    sections.push_back(section);
    rest = rest.subspan(count);
  }
  return sections;
}

// Prints a title and texts joined by commas, in indented lines of readable length.
template <class Texts>
void PrintWrapped(std::size_t indentation, std::string_view title, const Texts& texts) {
  constexpr std::size_t kWidth = 100;
  std::string line = std::string(indentation, ' ').append(title);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::string text = std::string(texts[i]) + (i + 1 < texts.size() ? "," : "");
    if (line.size() + 1 + text.size() > kWidth) {
      std::cout << line << '\n';
      line = std::string(indentation + 1, ' ');
    }
    line += " " + text;
  }
  std::cout << line << '\n';
}

// The defaults of settings that differ from them, by path.
using Defaults = std::unordered_map<std::string, std::string>;

std::string NoteOn(const Setting& setting, const Defaults& defaults) {
  std::string note(NoteOn(setting.origin));
  const auto found = defaults.find(setting.path);
  if (found == defaults.end()) return note;
  note.append(note.empty() ? "" : "; ").append("by default ");
  return note + (found->second.empty() ? "\"\"" : OneLine(found->second));
}

// Prints one line for each setting: the line in the file, name, value and, if the value does not
// simply come from that line, its origin.
void PrintSettings(std::span<const Setting> settings, const Defaults& defaults = {}) {
  std::size_t width = 0;
  for (const Setting& setting : settings) width = std::max(width, NameOf(setting).size());
  for (const Setting& setting : settings) {
    std::cout << std::right << std::setw(7)
              << (setting.line > 0 ? std::to_string(setting.line) : "-") << "  " << std::left
              << std::setw(static_cast<int>(width)) << OneLine(NameOf(setting)) << "  "
              << (setting.value.empty() ? "\"\"" : OneLine(setting.value, std::string::npos));
    const std::string note = NoteOn(setting, defaults);
    if (!note.empty()) std::cout << "  (" << note << ')';
    std::cout << '\n';
  }
}

// Removes the settings of that origin from the list and returns their names.
std::vector<std::string> TakeOut(std::vector<Setting>& settings, Origin origin) {
  std::vector<std::string> names;
  for (const Setting& setting : settings) {
    if (setting.origin == origin) names.push_back(OneLine(NameOf(setting)));
  }
  std::erase_if(settings, [origin](const Setting& setting) { return setting.origin == origin; });
  return names;
}

void PrintTitle(const Section& section) {
  std::cout << '\n' << OneLine(section.path);
  if (section.is_test) std::cout << (section.runs ? "  (runs)" : "  (does not run)");
  std::cout << '\n';
}

void PrintSection(const Section& section, bool all) {
  PrintTitle(section);
  if (all) return PrintSettings(section.settings);
  std::vector<Setting> shown(section.settings.begin(), section.settings.end());
  const std::vector<std::string> missing = TakeOut(shown, Origin::kMissing);
  std::vector<std::string> defaults;
  if (section.path == kSwitches) defaults = TakeOut(shown, Origin::kDefault);
  PrintSettings(shown);
  if (!missing.empty()) PrintWrapped(9, "missing, and so empty:", missing);
  if (!defaults.empty()) PrintWrapped(9, "by default not:", defaults);
}

void PrintTests(std::span<const std::string_view> tests) {
  const std::string count = tests.empty() ? "No test" : Count(tests.size(), "test");
  PrintWrapped(
      0, count + (tests.size() > 1 ? " run:" : " runs" + std::string(tests.empty() ? "" : ":")),
      tests);
}

void PrintSettingsOf(const Description& description, const ShowArguments& arguments) {
  const std::vector<std::string_view> tests = TestsThatRun(description);
  PrintTests(tests);
  std::vector<std::string_view> folded;
  std::size_t folded_settings = 0;
  for (const Section& section : Divide(description.settings, tests)) {
    if (arguments.tests && !section.runs) continue;
    if (arguments.all || section.runs || !section.IsAllDefault()) {
      PrintSection(section, arguments.all);
      continue;
    }
    folded.push_back(section.path);
    folded_settings += section.settings.size();
  }
  if (folded.empty()) return;
  std::cout << "\nNothing but defaults (" << Count(folded_settings, "setting")
            << ", shown with --all):\n";
  PrintWrapped(1, "", folded);
}

// The settings that differ from their defaults.
struct Changes {
  std::vector<Setting> settings;
  Defaults defaults;
};

Changes FindChanges(const Description& description) {
  const Description standard = DescribeDefaults();
  Changes changes;
  for (const Difference& difference : Compare(standard, description).differences) {
    changes.settings.insert(changes.settings.end(), difference.b.begin(), difference.b.end());
    if (difference.a.empty()) continue;
    changes.defaults.emplace(difference.path, difference.a.front().value);
  }
  return changes;
}

void PrintChanges(const Description& description, const ShowArguments& arguments) {
  const std::vector<std::string_view> tests = TestsThatRun(description);
  PrintTests(tests);
  const Changes changes = FindChanges(description);
  std::size_t count = 0;
  for (const Section& section : Divide(changes.settings, tests)) {
    if (arguments.tests && !section.runs) continue;
    PrintTitle(section);
    PrintSettings(section.settings, changes.defaults);
    count += section.settings.size();
  }
  std::cout << '\n'
            << (count == 0 ? "No setting differs" : Count(count, "setting"))
            << (count == 0   ? ""
                : count == 1 ? " differs"
                             : " differ")
            << " from the defaults\n";
}

void PrintJsonOf(const Input& input, const Description& description,
                 const ShowArguments& arguments) {
  const std::vector<std::string_view> tests = TestsThatRun(description);
  const Changes changes = arguments.changed ? FindChanges(description) : Changes();
  Json json = MakeDocument("show", kClean);
  json["file"] = input.name;
  json["configuration_version"] = description.version;
  json["tests"] = tests;
  Json& settings = json["settings"] = Json::array();
  for (const Setting& setting : arguments.changed ? changes.settings : description.settings) {
    const std::string_view test = TestOf(setting);
    if (arguments.tests && std::ranges::count(tests, test) == 0) continue;
    Json& added = settings.emplace_back(MakeSetting(setting));
    const auto standard = changes.defaults.find(setting.path);
    if (standard != changes.defaults.end()) added["default"] = standard->second;
  }
  PrintDocument(json);
}

// A summary line has its texts joined by two blanks. Prints the first, which names the section, and
// each of the others on a line below it.
void PrintSummaryLine(std::string_view line) {
  const std::size_t comma = line.find(">,");
  const std::size_t head = comma == std::string_view::npos ? 0 : comma + 2;
  std::string_view rest = line.substr(head);
  if (head > 0) std::cout << "  " << line.substr(0, head - 1) << (rest.empty() ? " -" : "") << '\n';
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find("  "), rest.size());
    if (end > 0) std::cout << "    " << rest.substr(0, end) << '\n';
    rest.remove_prefix(std::min(end + 2, rest.size()));
  }
}

void PrintSummary(std::string_view title, const std::vector<std::string>& lines) {
  std::cout << '\n' << title << '\n';
  if (lines.empty()) std::cout << "  none\n";
  for (const std::string& line : lines) PrintSummaryLine(line);
}

Status ShowSummary(const ShowArguments& arguments) {
  const auto cfg = ReadRecord(arguments.file);
  if (cfg == nullptr) return kNotRun;
  PrintSummary("Tests that run", GetXMLPMTestsInfo(*cfg));
  if (arguments.tests) return kClean;
  PrintSummary("Test control", GetXMLTestControlInfo(*cfg));
  PrintSummary("Global configuration", GetXMLGlobalConfigInfo(*cfg));
  return kClean;
}

}  // namespace

Status Show(const ShowArguments& arguments) {
  if (arguments.summary && arguments.file == "-") {
    return Refuse("<stdin>", "the summary is made of a file");
  }
  Input input;
  const std::optional<Description> description = DescribeInput(arguments.file, input);
  if (!description) return kNotRun;
  if (!arguments.overrides.empty()) {
    return ShowOverrides(input, *description, arguments.overrides, arguments.json);
  }
  if (arguments.json) {
    PrintJsonOf(input, *description, arguments);
    return kClean;
  }
  std::cout << "Configuration " << input.name << ", "
            << (description->version.empty() ? "without a version"
                                             : "version " + OneLine(description->version))
            << '\n';
  if (arguments.summary) return ShowSummary(arguments);
  if (arguments.changed) {
    PrintChanges(*description, arguments);
  } else {
    PrintSettingsOf(*description, arguments);
  }
  return kClean;
}

}  // namespace tools::vexorcfg
