#include <algorithm>
#include <iomanip>
#include <iostream>
#include <span>

#include "commands.h"
#include "common/text_output.h"
#include "configurations.h"
#include "vexor/config/reader.h"
#include "vexor/config/summaries.h"

namespace tools::vexorcfg {
namespace {

using vexor::Description;
using vexor::Origin;
using vexor::Setting;

constexpr std::string_view kSwitches = "TEST_CONTROL_CFG/AutoRunCfg";

std::string_view GroupOf(const Setting& setting) {
  return std::string_view(setting.path).substr(0, setting.path.rfind('/'));
}

std::string_view NameOf(const Setting& setting) {
  return std::string_view(setting.path).substr(setting.path.rfind('/') + 1);
}

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

std::vector<std::string_view> TestsThatRun(const Description& description) {
  std::vector<std::string_view> tests;
  for (const Setting& setting : description.settings) {
    if (GroupOf(setting) == kSwitches && setting.value == "true") tests.push_back(NameOf(setting));
  }
  return tests;
}

std::vector<Section> Divide(const Description& description,
                            std::span<const std::string_view> tests_that_run) {
  std::vector<Section> sections;
  std::span<const Setting> rest = description.settings;
  while (!rest.empty()) {
    const std::string_view path = GroupOf(rest.front());
    const auto end = std::ranges::find_if(
        rest, [path](const Setting& setting) { return GroupOf(setting) != path; });
    const auto count = static_cast<std::size_t>(end - rest.begin());
    Section section{.path = path, .settings = rest.first(count)};
    const std::string_view name = path.substr(path.rfind('/') + 1);
    section.is_test = path.starts_with("GLOBALPM/");
    section.runs = section.is_test && std::ranges::count(tests_that_run, name) > 0;
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

// Prints one line for each setting: the line in the file, name, value and, if the value does not
// simply come from that line, its origin.
void PrintSettings(std::span<const Setting> settings) {
  std::size_t width = 0;
  for (const Setting& setting : settings) width = std::max(width, NameOf(setting).size());
  for (const Setting& setting : settings) {
    std::cout << std::right << std::setw(7)
              << (setting.line > 0 ? std::to_string(setting.line) : "-") << "  " << std::left
              << std::setw(static_cast<int>(width)) << OneLine(NameOf(setting)) << "  "
              << (setting.value.empty() ? "\"\"" : OneLine(setting.value, std::string::npos));
    const std::string_view note = NoteOn(setting.origin);
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

void PrintSection(const Section& section, bool all) {
  std::cout << '\n' << OneLine(section.path);
  if (section.is_test) std::cout << (section.runs ? "  (runs)" : "  (does not run)");
  std::cout << '\n';
  if (all) return PrintSettings(section.settings);
  std::vector<Setting> shown(section.settings.begin(), section.settings.end());
  const std::vector<std::string> missing = TakeOut(shown, Origin::kMissing);
  std::vector<std::string> defaults;
  if (section.path == kSwitches) defaults = TakeOut(shown, Origin::kDefault);
  PrintSettings(shown);
  if (!missing.empty()) PrintWrapped(9, "missing, and so empty:", missing);
  if (!defaults.empty()) PrintWrapped(9, "by default not:", defaults);
}

void PrintSettingsOf(const Description& description, const ShowArguments& arguments) {
  const std::vector<std::string_view> tests = TestsThatRun(description);
  const std::string count = tests.empty() ? "No test" : Count(tests.size(), "test");
  PrintWrapped(
      0, count + (tests.size() > 1 ? " run:" : " runs" + std::string(tests.empty() ? "" : ":")),
      tests);
  std::vector<std::string_view> folded;
  std::size_t folded_settings = 0;
  for (const Section& section : Divide(description, tests)) {
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

}  // namespace

Status Show(const ShowArguments& arguments) {
  if (arguments.summary && arguments.file == "-") {
    return Refuse("<stdin>", "the summary is made of a file");
  }
  Input input;
  const std::optional<Description> description = DescribeInput(arguments.file, input);
  if (!description) return kNotRun;
  std::cout << "Configuration " << input.name << ", "
            << (description->version.empty() ? "without a version"
                                             : "version " + OneLine(description->version))
            << '\n';
  if (!arguments.summary) {
    PrintSettingsOf(*description, arguments);
    return kClean;
  }
  const auto cfg = ReadRecord(arguments.file);
  if (cfg == nullptr) return kNotRun;
  PrintSummary("Tests that run", GetXMLPMTestsInfo(*cfg));
  if (arguments.tests) return kClean;
  PrintSummary("Test control", GetXMLTestControlInfo(*cfg));
  PrintSummary("Global configuration", GetXMLGlobalConfigInfo(*cfg));
  return kClean;
}

}  // namespace tools::vexorcfg
