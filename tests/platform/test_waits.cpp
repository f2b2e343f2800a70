#include "platform/test_waits.h"

#include <cstdint>

namespace {

void Call(const std::atomic<test_waits::Hook>& hook) {
  if (const test_waits::Hook function = hook) function();
}

}  // namespace

// The names that the linker's --wrap makes of vexor::ReadPerformanceCounter and HintSpinWait.
std::uint64_t SystemCounter() asm("__real__ZN5vexor22ReadPerformanceCounterEv");
std::uint64_t WatchedCounter() asm("__wrap__ZN5vexor22ReadPerformanceCounterEv");
void SystemSpin() asm("__real__ZN5vexor12HintSpinWaitEv");
void WatchedSpin() asm("__wrap__ZN5vexor12HintSpinWaitEv");

std::uint64_t WatchedCounter() {
  Call(test_waits::at_clock);
  return SystemCounter();
}

void WatchedSpin() {
  Call(test_waits::at_spin);
  SystemSpin();
}
