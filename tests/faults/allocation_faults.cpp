#include "faults/allocation_faults.h"

#include <cstdlib>
#include <new>

namespace {

struct State {
  std::uint64_t nth = 0;
  std::uint64_t count = 0;
  AllocationFaults::Kind kind = AllocationFaults::Kind::kOnce;
  bool armed = false;
  bool fired = false;
};

constinit thread_local State state;

bool Fails() {
  if (!state.armed || state.nth == 0) return false;
  ++state.count;
  const bool fails = state.count == state.nth ||
                     (state.count > state.nth && state.kind == AllocationFaults::Kind::kFromThenOn);
  state.fired = state.fired || fails;
  return fails;
}

void* Allocate(std::size_t size) {
  void* const memory = Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void AllocationFaults::Set(std::uint64_t nth, Kind kind) {
  state = State();
  state.nth = nth;
  state.kind = kind;
}

bool AllocationFaults::Fired() { return state.fired; }

void AllocationFaults::Switch(bool on) { state.armed = on; }

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Fails() ? nullptr : std::malloc(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
