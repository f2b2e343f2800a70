#include "vexor/syntax/peci.h"

#include <array>
#include <optional>
#include <utility>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/tuple_reader.h"
#include "syntax/words.h"
#include "util/text.h"

namespace vexor {

namespace {

constexpr auto kInterfaces = std::to_array<Word<PeciInterface>>({
    {"eSPI", PeciInterface::kEspi},
    {"MCTP", PeciInterface::kMctp},
    {"Serial", PeciInterface::kSerial},
});

constexpr auto kCommands = std::to_array<Word<PeciCommand>>({
    {"Ping", PeciCommand::kPing},
    {"GetDIB", PeciCommand::kGetDib},
    {"GetTemp", PeciCommand::kGetTemp},
    {"RdPkgConfig", PeciCommand::kRdPkgConfig},
    {"WrPkgConfig", PeciCommand::kWrPkgConfig},
    {"RdMSR", PeciCommand::kRdMsr},
    {"RdMSRExt", PeciCommand::kRdMsrExt},
    {"WrMSR", PeciCommand::kWrMsr},
    {"RdPCIConfig", PeciCommand::kRdPciConfig},
    {"WrPCIConfig", PeciCommand::kWrPciConfig},
    {"RdPCIConfigLocal", PeciCommand::kRdPciConfigLocal},
    {"WrPCIConfigLocal", PeciCommand::kWrPciConfigLocal},
    {"RdEndPointConfig", PeciCommand::kRdEndPointConfig},
    {"WrEndPointConfig", PeciCommand::kWrEndPointConfig},
});

constexpr NumberLimit kParameter = {0xFFFF, "a number from 0 to 0xFFFF"};
constexpr NumberLimit kData = {0xFFFFFFFF, "a number from 0 to 0xFFFFFFFF"};
constexpr NumberLimit kThread = {0xFF, "a thread from 0 to 255"};

constexpr std::size_t kPciReadFields = 5;

constexpr auto kPciFields = std::to_array<NumberLimit>({
    {0xFFFF, "a segment from 0 to 65535"},
    {0xFF, "a bus from 0 to 255"},
    {31, "a device from 0 to 31"},
    {7, "a function from 0 to 7"},
    {0xFFF, "an offset from 0 to 0xFFF"},
    kData,
    kData,
});

constexpr std::string_view kPciForm =
    "segment:bus:device:function:offset, for a write followed by :and-mask:or-mask";

constexpr bool IsNameChar(char c) {
  const char upper = ToUpper(c);
  return IsDecDigit(c) || (upper >= 'A' && upper <= 'Z') || c == '_' || c == '-' || c == '.';
}

bool IsName(std::string_view text, FaultNote& note) {
  std::size_t end = 0;
  while (end < text.size() && IsNameChar(text[end])) ++end;
  if (end != 0 && end == text.size()) return true;
  note.At(text.substr(end), "not a name", "letters, digits, _, - and .");
  return false;
}

// A list of numbers that belong to the names at the same positions of another list.
class NumbersBesideNames {
 public:
  NumbersBesideNames(std::string_view text, const NumberLimit& limit)
      : rest_(text), limit_(limit) {}

  // Takes the next number; 0 if it is left out, nothing if it is bad.
  std::optional<std::uint32_t> Take(FaultNote& note) {
    std::string_view item;
    TakeItem(rest_, ';', item);
    item = TrimBlanks(item);
    return item.empty() ? 0 : ReadLimitedNumber(item, limit_, note);
  }

  [[nodiscard]] bool IsAtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
  const NumberLimit& limit_;
};

std::optional<Fault> CheckLimited(std::string_view text, const NumberLimit& limit) {
  FaultNote note(text);
  for (NumbersBesideNames numbers(text, limit); !numbers.IsAtEnd();) numbers.Take(note);
  return note.First();
}

std::vector<PeciPkgConfig> ParsePkgConfigs(std::string_view names, std::string_view params,
                                           std::string_view data) {
  FaultNote unused_of_names(names);
  FaultNote unused_of_params(params);
  FaultNote unused_of_data(data);
  NumbersBesideNames parameters(params, kParameter);
  NumbersBesideNames contents(data, kData);
  std::vector<PeciPkgConfig> configs;
  for (std::string_view item; TakeItem(names, ';', item);) {
    item = TrimBlanks(item);
    const auto parameter = parameters.Take(unused_of_params);
    const auto content = contents.Take(unused_of_data);
    if (!IsName(item, unused_of_names) || !parameter || !content) continue;
    configs.push_back({std::string(item), static_cast<std::uint16_t>(*parameter), *content});
  }
  return configs;
}

std::optional<PeciMsr> ReadMsr(std::string_view item, FaultNote& note) {
  const std::size_t colon = item.find(':');
  const std::string_view name = TrimBlanks(item.substr(0, colon));
  if (!IsName(name, note)) return std::nullopt;
  if (colon == std::string_view::npos) return PeciMsr{std::string(name)};
  const auto thread = ReadLimitedNumber(TrimBlanks(item.substr(colon + 1)), kThread, note);
  if (!thread) return std::nullopt;
  return PeciMsr{std::string(name), static_cast<std::uint8_t>(*thread)};
}

std::optional<PeciPciConfig> ReadPciConfig(std::string_view command, FaultNote& note) {
  std::array<std::uint32_t, kPciFields.size()> fields = {0, 0, 0, 0, 0, 0xFFFFFFFF, 0};
  const std::size_t count = ReadNumberTuple(command, kPciFields, fields, kPciForm, note);
  if (count != kPciReadFields && count != fields.size()) {
    note.At(command.substr(command.size()), "too few numbers", kPciForm);
    return std::nullopt;
  }
  return PeciPciConfig{.segment = static_cast<std::uint16_t>(fields[0]),
                       .bus = static_cast<std::uint8_t>(fields[1]),
                       .device = static_cast<std::uint8_t>(fields[2]),
                       .function = static_cast<std::uint8_t>(fields[3]),
                       .offset = static_cast<std::uint16_t>(fields[4]),
                       .and_mask = fields[5],
                       .or_mask = fields[6]};
}

std::optional<PeciCommand> ReadCommand(std::string_view item, FaultNote& note) {
  if (const auto* const command = FindWord(kCommands, item)) return command->value;
  note.At(item, "unknown command", kOneOf<kCommands>);
  return std::nullopt;
}

// Returns what `read` makes of the items of a list separated by ";". Items are trimmed; empty ones
// are skipped.
template <class Value>
std::vector<Value> ReadList(std::string_view text, FaultNote& note,
                            std::optional<Value> (*read)(std::string_view, FaultNote&)) {
  std::vector<Value> values;
  for (std::string_view item; TakeFilledItem(text, ';', item);) {
    if (auto value = read(TrimBlanks(item), note)) values.push_back(*std::move(value));
  }
  return values;
}

template <class Value>
std::optional<Fault> CheckList(std::string_view text,
                               std::optional<Value> (*read)(std::string_view, FaultNote&)) {
  FaultNote note(text);
  ReadList(text, note, read);
  return note.First();
}

template <class Value>
std::vector<Value> ParseList(std::string_view text,
                             std::optional<Value> (*read)(std::string_view, FaultNote&)) {
  FaultNote unused(text);
  return ReadList(text, unused, read);
}

}  // namespace

constinit const Expectation kPeciCommandWords = kOneOf<kCommands>;

std::optional<Fault> CheckPeciInterface(std::string_view text) {
  if (text.empty() || FindWord(kInterfaces, text) != nullptr) return std::nullopt;
  return Fault{.what = "unknown interface", .expected = kOneOf<kInterfaces>};
}

std::optional<Fault> CheckPeciCommands(std::string_view text) {
  return CheckList(text, ReadCommand);
}

std::optional<Fault> CheckPeciServices(std::string_view text) {
  FaultNote note(text);
  for (std::string_view item; TakeFilledItem(text, ';', item);) IsName(TrimBlanks(item), note);
  return note.First();
}

std::optional<Fault> CheckPeciParameters(std::string_view text) {
  return CheckLimited(text, kParameter);
}

std::optional<Fault> CheckPeciData(std::string_view text) { return CheckLimited(text, kData); }

std::optional<Fault> CheckPeciRegisters(std::string_view text) { return CheckList(text, ReadMsr); }

std::optional<Fault> CheckPeciPciConfigs(std::string_view text) {
  return CheckList(text, ReadPciConfig);
}

PeciInterface ParsePeciInterface(std::string_view text) {
  const auto* const word = FindWord(kInterfaces, text);
  return word == nullptr ? PeciInterface::kUnknown : word->value;
}

}  // namespace vexor

using namespace vexor;

std::vector<PeciCommand> ParsePECIMajorCmdsList(std::string_view text) {
  return ParseList(text, ReadCommand);
}

std::vector<PeciPkgConfig> ParsePECIRdPkgCfgCmdsList(std::string_view names,
                                                     std::string_view params) {
  return ParsePkgConfigs(names, params, {});
}

std::vector<PeciPkgConfig> ParsePECIWrPkgCfgCmdsList(std::string_view names,
                                                     std::string_view params,
                                                     std::string_view data) {
  return ParsePkgConfigs(names, params, data);
}

std::vector<PeciMsr> ParsePECIRdMSRCmdsList(std::string_view names) {
  return ParseList(names, ReadMsr);
}

std::vector<PeciPciConfig> ParsePECIPciCfgCmdsList(std::string_view text) {
  return ParseList(text, ReadPciConfig);
}
