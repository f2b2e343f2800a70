// Fixed paths that differ between systems.
#pragma once

namespace vexor::platform {

// The file with the IP address of the host machine.
#if defined(_WIN32)
inline constexpr char kHostIpFile[] = R"(C:\temp\Vexor\HostIP.txt)";
#else
inline constexpr char kHostIpFile[] = "/etc/vexor/HostIP.txt";
#endif

}  // namespace vexor::platform
