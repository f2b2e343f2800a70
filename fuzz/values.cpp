// Reads, describes and summarises a well-formed file. Each line of the input is the value of an
// option, which the first two bytes of the line select.
#include <map>
#include <memory>
#include <stdexcept>

#include "families.h"
#include "fuzz.h"
#include "vexor/config/describe.h"
#include "vexor/config/reader.h"
#include "vexor/config/summaries.h"
#include "vexor/config/syntaxes.h"
#include "vexor/util/strings.h"

namespace {

using vexor::OptionInfo;

std::string Escape(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '<' || c == '&' || c == '"') {
      escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

using Values = std::map<std::string, std::pair<const OptionInfo*, std::string>>;

Values ReadValues(std::string_view input) {
  static const std::vector<OptionInfo> options = vexor::GetOptions();
  Values values;
  for (const std::string& line : SplitLines(input)) {
    if (line.size() < 2) continue;
    const auto chosen =
        static_cast<unsigned char>(line[0]) * 251U + static_cast<unsigned char>(line[1]);
    const OptionInfo& option = options[chosen % options.size()];
    std::string text = line.substr(2);
    // XML does not preserve these characters.
    std::erase_if(text, [](char c) { return c == '\0' || c == '\r'; });
    values.try_emplace(option.path, &option, std::move(text));
  }
  return values;
}

// Closes the elements that are not part of the next path, and opens those that are new in it.
void Step(std::vector<std::string>& open, std::vector<std::string> next, std::string& document) {
  std::size_t shared = 0;
  while (shared < open.size() && shared < next.size() && open[shared] == next[shared]) ++shared;
  for (; open.size() > shared; open.pop_back()) document += "</" + open.back() + ">";
  for (std::size_t i = shared; i < next.size(); ++i) document += "<" + next[i] + ">";
  open = std::move(next);
}

std::string MakeDocument(const Values& values) {
  std::string document = "<VEXOR>";
  if (!values.contains("Version")) document += "<Version>3.21.522.0</Version>";
  std::vector<std::string> open;
  for (const auto& [path, value] : values) {
    std::vector<std::string> parts = Split(path, '/', false);
    const std::string name = parts.back();
    parts.pop_back();
    Step(open, parts, document);
    const std::string text = Escape(value.second);
    if (value.first->is_argument) {
      document += "<arg name=\"" + name + "\" val=\"" + text + "\"/>";
    } else {
      document += "<" + name + ">" + text + "</" + name + ">";
    }
  }
  Step(open, {}, document);
  return document + "</VEXOR>";
}

// Whether another option in the file overrides the option at this path.
bool IsReplaced(const std::string& path, const Values& values) {
  const std::size_t name = path.rfind('/') + 1;
  const std::string folder = path.substr(0, name);
  return (path.substr(name) == "ActiveTime" && values.contains(folder + "RC0Time")) ||
         (path.substr(name) == "InStateTime" && values.contains(folder + "RC6Time"));
}

void Summarise(const std::string& document) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  try {
    VexorConfigParser().ReadXMLPar(HoldInFile(document), cfg.get(), false, false);
  } catch (const std::out_of_range&) {  // trace entries
  }
  cfg->TestControl.AutoRunCfg.fill(true);
  Require(GetXMLPMTestsInfo(*cfg).size() < 32, "at most one line per test");
  Require(GetXMLTestControlInfo(*cfg).size() == 3, "three lines");
  GetXMLGlobalConfigInfo(*cfg);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Values values = ReadValues(AsText(data, size));
  const std::string document = MakeDocument(values);
  Summarise(document);
  const vexor::Description description = vexor::DescribeXMLConfigText(document);
  for (const auto& [path, value] : values) {
    const auto& [option, text] = value;
    for (const Family& family : Families()) {
      if (family.syntax == option->syntax.name) FuzzFamily(family, text);
    }
    const auto fault = vexor::CheckOptionText(*option, text);
    Require(!fault || fault->at <= text.size(), "a fault is inside the text", path);
  }
  for (const vexor::Setting& setting : description.settings) {
    const auto given = values.find(setting.path);
    if (given == values.end() || setting.origin != vexor::Origin::kFile) continue;
    const auto& [option, text] = given->second;
    if (option->syntax.name == "boolean" || IsReplaced(setting.path, values)) continue;
    // A text of what the XML library counts as white space reads as the fallback.
    if (text.find_first_not_of(" \t\n\v\f") == std::string::npos) continue;
    Require(text.find(setting.value) != std::string::npos, "an option is read as it is written",
            setting.path);
  }
  return 0;
}
