// Names of the devices that the device tests address, and of the speeds, widths and power states of
// their links.
//
// Names are accepted exactly as they are returned: case and blanks matter. Speeds, widths and power
// states have a short name ("Gen4", "x8", "D3hot") and a long one ("16.0 GT/s", "8 lanes",
// "D3 with power"); an argument selects one form, and names of the other form are then unknown.
// Any thread may call.
#pragma once

#include <cstdint>
#include <string_view>

#include "vexor/export.h"

// Power states that a link may enter on its own.
enum DevicePCIeOptions : std::int32_t {
  DEVICE_PCIE_L0 = 0,
  DEVICE_PCIE_L0S,
  DEVICE_PCIE_L1,
  DEVICE_PCIE_L0S_AND_L1,
  DEVICE_PCIE_UNKNOWN,
};

enum PCIE_GEN_SPEED : std::int32_t {
  PCIE_GEN_SPEED_1 = 0,
  PCIE_GEN_SPEED_2,
  PCIE_GEN_SPEED_3,
  PCIE_GEN_SPEED_4,
  PCIE_GEN_SPEED_5,
  PCIE_GEN_SPEED_6,
  PCIE_GEN_SPEED_UNKNOWN,
};

enum PCIE_LINK_WIDTH : std::int32_t {
  PCIE_LINK_WIDTH_X1 = 0,
  PCIE_LINK_WIDTH_X2,
  PCIE_LINK_WIDTH_X4,
  PCIE_LINK_WIDTH_X8,
  PCIE_LINK_WIDTH_X12,
  PCIE_LINK_WIDTH_X16,
  PCIE_LINK_WIDTH_X32,
  PCIE_LINK_WIDTH_UNKNOWN,
};

enum PCIE_DSTATE : std::int32_t {
  PCIE_DSTATE_D0 = 0,
  PCIE_DSTATE_D1,
  PCIE_DSTATE_D2,
  PCIE_DSTATE_D3HOT,
  PCIE_DSTATE_D3COLD,
  PCIE_DSTATE_UNKNOWN,
};

// Families of devices.
enum PCIE_DEVICE_CATETORY : std::int32_t {
  PCIE_DEVICE_ALL = 0,
  PCIE_DEVICE_ROOT_PORT,
  PCIE_DEVICE_BRIDGE,
  PCIE_DEVICE_GRAPHICS,
  PCIE_DEVICE_STORAGE,
  PCIE_DEVICE_NETWORK,
  PCIE_DEVICE_USB,
  PCIE_DEVICE_AUDIO,
  PCIE_DEVICE_UNKNOWN,
};

// Return the name of a value, empty text for a value without one.
VEXOR_EXPORT const char* GetDevicePCIOptionName(int value);
VEXOR_EXPORT const char* GetPCIeGenSpeedName(int value, bool long_form = false);
VEXOR_EXPORT const char* GetPCIeLinkWidthName(int value, bool long_form = false);
VEXOR_EXPORT const char* GetPCIeDStateName(int value, bool long_form = false);

// Return the value of a name; for any other text the enumeration's unknown value, which equals its
// number of names.
VEXOR_EXPORT DevicePCIeOptions ParseDevicePCIOptionID(std::string_view text);
VEXOR_EXPORT PCIE_GEN_SPEED ParsePCIeGenSpeedID(std::string_view text, bool long_form = false);
VEXOR_EXPORT PCIE_LINK_WIDTH ParsePCIeLinkWidthID(std::string_view text, bool long_form = false);
VEXOR_EXPORT PCIE_DSTATE ParsePCIeDStateID(std::string_view text, bool long_form = false);
VEXOR_EXPORT PCIE_DEVICE_CATETORY ParsePcieDevType(std::string_view text);

namespace vexor {

// Returns the name of a PCIE_DEVICE_CATETORY value, empty text for a value without one.
VEXOR_EXPORT const char* GetPcieDevTypeName(int value);

}  // namespace vexor
