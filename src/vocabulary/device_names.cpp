#include "vexor/vocabulary/device_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace {

constexpr auto kLinkOptions = std::to_array<std::string_view>({"L0", "L0s", "L1", "L0s-and-L1"});
static_assert(kLinkOptions.size() == DEVICE_PCIE_UNKNOWN);

constexpr auto kShortSpeeds =
    std::to_array<std::string_view>({"Gen1", "Gen2", "Gen3", "Gen4", "Gen5", "Gen6"});
constexpr auto kLongSpeeds = std::to_array<std::string_view>(
    {"2.5 GT/s", "5.0 GT/s", "8.0 GT/s", "16.0 GT/s", "32.0 GT/s", "64.0 GT/s"});
static_assert(kShortSpeeds.size() == PCIE_GEN_SPEED_UNKNOWN);
static_assert(kLongSpeeds.size() == PCIE_GEN_SPEED_UNKNOWN);

constexpr auto kShortWidths =
    std::to_array<std::string_view>({"x1", "x2", "x4", "x8", "x12", "x16", "x32"});
constexpr auto kLongWidths = std::to_array<std::string_view>(
    {"1 lane", "2 lanes", "4 lanes", "8 lanes", "12 lanes", "16 lanes", "32 lanes"});
static_assert(kShortWidths.size() == PCIE_LINK_WIDTH_UNKNOWN);
static_assert(kLongWidths.size() == PCIE_LINK_WIDTH_UNKNOWN);

constexpr auto kShortDStates =
    std::to_array<std::string_view>({"D0", "D1", "D2", "D3hot", "D3cold"});
constexpr auto kLongDStates = std::to_array<std::string_view>(
    {"D0 fully on", "D1 light sleep", "D2 deep sleep", "D3 with power", "D3 without power"});
static_assert(kShortDStates.size() == PCIE_DSTATE_UNKNOWN);
static_assert(kLongDStates.size() == PCIE_DSTATE_UNKNOWN);

constexpr auto kCategories = std::to_array<std::string_view>({
    "All",
    "Root-Port",
    "Bridge",
    "Graphics",
    "Storage",
    "Network",
    "USB",
    "Audio",
});
static_assert(kCategories.size() == PCIE_DEVICE_UNKNOWN);

}  // namespace

const char* GetDevicePCIOptionName(int value) { return vexor::NameOf(kLinkOptions, value); }

DevicePCIeOptions ParseDevicePCIOptionID(std::string_view text) {
  return vexor::ValueOf(kLinkOptions, text, DEVICE_PCIE_UNKNOWN);
}

const char* GetPCIeGenSpeedName(int value, bool long_form) {
  return vexor::NameOf(long_form ? kLongSpeeds : kShortSpeeds, value);
}

PCIE_GEN_SPEED ParsePCIeGenSpeedID(std::string_view text, bool long_form) {
  return vexor::ValueOf(long_form ? kLongSpeeds : kShortSpeeds, text, PCIE_GEN_SPEED_UNKNOWN);
}

const char* GetPCIeLinkWidthName(int value, bool long_form) {
  return vexor::NameOf(long_form ? kLongWidths : kShortWidths, value);
}

PCIE_LINK_WIDTH ParsePCIeLinkWidthID(std::string_view text, bool long_form) {
  return vexor::ValueOf(long_form ? kLongWidths : kShortWidths, text, PCIE_LINK_WIDTH_UNKNOWN);
}

const char* GetPCIeDStateName(int value, bool long_form) {
  return vexor::NameOf(long_form ? kLongDStates : kShortDStates, value);
}

PCIE_DSTATE ParsePCIeDStateID(std::string_view text, bool long_form) {
  return vexor::ValueOf(long_form ? kLongDStates : kShortDStates, text, PCIE_DSTATE_UNKNOWN);
}

PCIE_DEVICE_CATETORY ParsePcieDevType(std::string_view text) {
  return vexor::ValueOf(kCategories, text, PCIE_DEVICE_UNKNOWN);
}

const char* vexor::GetPcieDevTypeName(int value) { return NameOf(kCategories, value); }
