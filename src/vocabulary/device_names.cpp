#include "vexor/vocabulary/device_names.h"

#include "vocabulary/name_table.h"

namespace {

constexpr auto kLinkOptions = vexor::NamesOf<DevicePCIeOptions>({
    {DEVICE_PCIE_L0, "L0"},
    {DEVICE_PCIE_L0S, "L0s"},
    {DEVICE_PCIE_L1, "L1"},
    {DEVICE_PCIE_L0S_AND_L1, "L0s-and-L1"},
});
static_assert(kLinkOptions.size() == DEVICE_PCIE_UNKNOWN);

constexpr auto kShortSpeeds = vexor::NamesOf<PCIE_GEN_SPEED>({
    {PCIE_GEN_SPEED_1, "Gen1"},
    {PCIE_GEN_SPEED_2, "Gen2"},
    {PCIE_GEN_SPEED_3, "Gen3"},
    {PCIE_GEN_SPEED_4, "Gen4"},
    {PCIE_GEN_SPEED_5, "Gen5"},
    {PCIE_GEN_SPEED_6, "Gen6"},
});
constexpr auto kLongSpeeds = vexor::NamesOf<PCIE_GEN_SPEED>({
    {PCIE_GEN_SPEED_1, "2.5 GT/s"},
    {PCIE_GEN_SPEED_2, "5.0 GT/s"},
    {PCIE_GEN_SPEED_3, "8.0 GT/s"},
    {PCIE_GEN_SPEED_4, "16.0 GT/s"},
    {PCIE_GEN_SPEED_5, "32.0 GT/s"},
    {PCIE_GEN_SPEED_6, "64.0 GT/s"},
});
static_assert(kShortSpeeds.size() == PCIE_GEN_SPEED_UNKNOWN);
static_assert(kLongSpeeds.size() == PCIE_GEN_SPEED_UNKNOWN);

constexpr auto kShortWidths = vexor::NamesOf<PCIE_LINK_WIDTH>({
    {PCIE_LINK_WIDTH_X1, "x1"},
    {PCIE_LINK_WIDTH_X2, "x2"},
    {PCIE_LINK_WIDTH_X4, "x4"},
    {PCIE_LINK_WIDTH_X8, "x8"},
    {PCIE_LINK_WIDTH_X12, "x12"},
    {PCIE_LINK_WIDTH_X16, "x16"},
    {PCIE_LINK_WIDTH_X32, "x32"},
});
constexpr auto kLongWidths = vexor::NamesOf<PCIE_LINK_WIDTH>({
    {PCIE_LINK_WIDTH_X1, "1 lane"},
    {PCIE_LINK_WIDTH_X2, "2 lanes"},
    {PCIE_LINK_WIDTH_X4, "4 lanes"},
    {PCIE_LINK_WIDTH_X8, "8 lanes"},
    {PCIE_LINK_WIDTH_X12, "12 lanes"},
    {PCIE_LINK_WIDTH_X16, "16 lanes"},
    {PCIE_LINK_WIDTH_X32, "32 lanes"},
});
static_assert(kShortWidths.size() == PCIE_LINK_WIDTH_UNKNOWN);
static_assert(kLongWidths.size() == PCIE_LINK_WIDTH_UNKNOWN);

constexpr auto kShortDStates = vexor::NamesOf<PCIE_DSTATE>({
    {PCIE_DSTATE_D0, "D0"},
    {PCIE_DSTATE_D1, "D1"},
    {PCIE_DSTATE_D2, "D2"},
    {PCIE_DSTATE_D3HOT, "D3hot"},
    {PCIE_DSTATE_D3COLD, "D3cold"},
});
constexpr auto kLongDStates = vexor::NamesOf<PCIE_DSTATE>({
    {PCIE_DSTATE_D0, "D0 fully on"},
    {PCIE_DSTATE_D1, "D1 light sleep"},
    {PCIE_DSTATE_D2, "D2 deep sleep"},
    {PCIE_DSTATE_D3HOT, "D3 with power"},
    {PCIE_DSTATE_D3COLD, "D3 without power"},
});
static_assert(kShortDStates.size() == PCIE_DSTATE_UNKNOWN);
static_assert(kLongDStates.size() == PCIE_DSTATE_UNKNOWN);

constexpr auto kCategories = vexor::NamesOf<PCIE_DEVICE_CATETORY>({
    {PCIE_DEVICE_ALL, "All"},
    {PCIE_DEVICE_ROOT_PORT, "Root-Port"},
    {PCIE_DEVICE_BRIDGE, "Bridge"},
    {PCIE_DEVICE_GRAPHICS, "Graphics"},
    {PCIE_DEVICE_STORAGE, "Storage"},
    {PCIE_DEVICE_NETWORK, "Network"},
    {PCIE_DEVICE_USB, "USB"},
    {PCIE_DEVICE_AUDIO, "Audio"},
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
