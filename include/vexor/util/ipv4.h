// IPv4 addresses in text. Any thread may call.
#pragma once

#include <string_view>

#include "vexor/export.h"

// Returns whether the text is four numbers from 0 to 255 joined by points, such as "192.168.1.1".
// A number may be hexadecimal ("0x1F") and have leading zeros.
VEXOR_EXPORT bool IsIpv4Address(std::string_view text);
