// Paths that differ between the platforms.
#pragma once

namespace vexor::platform {

// The file that holds the address of the host.
#if defined(_WIN32)
inline constexpr char kHostIpFile[] = R"(C:\temp\Vexor\HostIP.txt)";
#else
inline constexpr char kHostIpFile[] = "/etc/vexor/HostIP.txt";
#endif

}  // namespace vexor::platform
