#include "platform/platform.h"

#if defined(__x86_64__) || defined(_M_X64)
#if defined(_MSC_VER)
#include <intrin.h>
#else
#include <x86intrin.h>
#endif

namespace vexor {
std::uint64_t ReadTimeStampCounter() { return __rdtsc(); }
void HintSpinWait() { _mm_pause(); }
}  // namespace vexor

#else

namespace vexor {
std::uint64_t ReadTimeStampCounter() { return ReadPerformanceCounter(); }
void HintSpinWait() {}
}  // namespace vexor

#endif
