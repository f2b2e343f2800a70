#include "vexor/vocabulary/device_names.h"

#include <array>

#include "vocabulary/name_table.h"

namespace vexor {

namespace {

constexpr auto kLinkOptions = NamesBefore<DEVICE_PCIE_UNKNOWN>({
    {DEVICE_PCIE_L0, "L0"},
    {DEVICE_PCIE_L0S, "L0s"},
    {DEVICE_PCIE_L1, "L1"},
    {DEVICE_PCIE_L0S_AND_L1, "L0s-and-L1"},
});

constexpr auto kSpeeds = BothNamesBefore<PCIE_GEN_SPEED_UNKNOWN>({
    {PCIE_GEN_SPEED_1, "Gen1", "2.5 GT/s"},
    {PCIE_GEN_SPEED_2, "Gen2", "5.0 GT/s"},
    {PCIE_GEN_SPEED_3, "Gen3", "8.0 GT/s"},
    {PCIE_GEN_SPEED_4, "Gen4", "16.0 GT/s"},
    {PCIE_GEN_SPEED_5, "Gen5", "32.0 GT/s"},
    {PCIE_GEN_SPEED_6, "Gen6", "64.0 GT/s"},
});

constexpr auto kWidths = BothNamesBefore<PCIE_LINK_WIDTH_UNKNOWN>({
    {PCIE_LINK_WIDTH_X1, "x1", "1 lane"},
    {PCIE_LINK_WIDTH_X2, "x2", "2 lanes"},
    {PCIE_LINK_WIDTH_X4, "x4", "4 lanes"},
    {PCIE_LINK_WIDTH_X8, "x8", "8 lanes"},
    {PCIE_LINK_WIDTH_X12, "x12", "12 lanes"},
    {PCIE_LINK_WIDTH_X16, "x16", "16 lanes"},
    {PCIE_LINK_WIDTH_X32, "x32", "32 lanes"},
});

constexpr auto kDStates = BothNamesBefore<PCIE_DSTATE_UNKNOWN>({
    {PCIE_DSTATE_D0, "D0", "D0 fully on"},
    {PCIE_DSTATE_D1, "D1", "D1 light sleep"},
    {PCIE_DSTATE_D2, "D2", "D2 deep sleep"},
    {PCIE_DSTATE_D3HOT, "D3hot", "D3 with power"},
    {PCIE_DSTATE_D3COLD, "D3cold", "D3 without power"},
});

constexpr auto kCategories = NamesBefore<PCIE_DEVICE_UNKNOWN>({
    {PCIE_DEVICE_ALL, "All"},
    {PCIE_DEVICE_ROOT_PORT, "Root-Port"},
    {PCIE_DEVICE_BRIDGE, "Bridge"},
    {PCIE_DEVICE_GRAPHICS, "Graphics"},
    {PCIE_DEVICE_STORAGE, "Storage"},
    {PCIE_DEVICE_NETWORK, "Network"},
    {PCIE_DEVICE_USB, "USB"},
    {PCIE_DEVICE_AUDIO, "Audio"},
});

}  // namespace

const char* GetPcieDevTypeName(int value) { return NameOf(kCategories, value); }

}  // namespace vexor

using namespace vexor;

const char* GetDevicePCIOptionName(int value) { return NameOf(kLinkOptions, value); }

DevicePCIeOptions ParseDevicePCIOptionID(std::string_view text) {
  return ValueOf(kLinkOptions, text, DEVICE_PCIE_UNKNOWN);
}

const char* GetPCIeGenSpeedName(int value, bool long_form) {
  return NameOf(kSpeeds.Form(long_form), value);
}

PCIE_GEN_SPEED ParsePCIeGenSpeedID(std::string_view text, bool long_form) {
  return ValueOf(kSpeeds.Form(long_form), text, PCIE_GEN_SPEED_UNKNOWN);
}

const char* GetPCIeLinkWidthName(int value, bool long_form) {
  return NameOf(kWidths.Form(long_form), value);
}

PCIE_LINK_WIDTH ParsePCIeLinkWidthID(std::string_view text, bool long_form) {
  return ValueOf(kWidths.Form(long_form), text, PCIE_LINK_WIDTH_UNKNOWN);
}

const char* GetPCIeDStateName(int value, bool long_form) {
  return NameOf(kDStates.Form(long_form), value);
}

PCIE_DSTATE ParsePCIeDStateID(std::string_view text, bool long_form) {
  return ValueOf(kDStates.Form(long_form), text, PCIE_DSTATE_UNKNOWN);
}

PCIE_DEVICE_CATETORY ParsePcieDevType(std::string_view text) {
  return ValueOf(kCategories, text, PCIE_DEVICE_UNKNOWN);
}
