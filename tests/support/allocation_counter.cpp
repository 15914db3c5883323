#include "tests/support/allocation_counter.h"

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "Adapter.h"

namespace {

constexpr std::size_t kLargestRequest = std::size_t{1} << 30;

// Plain numbers without constructors: the operators below run before main and after it.
thread_local long allocations = 0;
thread_local long countdown = 0;  // 0: nothing is to fail
thread_local bool failed = false;
std::atomic<long> live{0};

bool MustFail(std::size_t size) {
  if (countdown > 0 && --countdown == 0) {
    failed = true;
    return true;
  }
  return size > kLargestRequest;
}

void* Counted(void* memory) {
  if (memory != nullptr) {
    ++allocations;
    live.fetch_add(1, std::memory_order_relaxed);
  }
  return memory;
}

void* Allocate(std::size_t size) { return MustFail(size) ? nullptr : Counted(std::malloc(size == 0 ? 1 : size)); }

void* Allocate(std::size_t size, std::align_val_t alignment) {
  if (MustFail(size)) return nullptr;
  const auto unit = static_cast<std::size_t>(alignment);
  const std::size_t units = size == 0 ? 1 : (size + unit - 1) / unit;  // aligned_alloc takes whole units
#ifdef _WIN32
  return Counted(_aligned_malloc(units * unit, unit));
#else
  return Counted(std::aligned_alloc(unit, units * unit));
#endif
}

void Free(void* memory) {
  if (memory == nullptr) return;
  live.fetch_sub(1, std::memory_order_relaxed);
  std::free(memory);
}

void FreeAligned(void* memory) {
#ifdef _WIN32
  if (memory == nullptr) return;
  live.fetch_sub(1, std::memory_order_relaxed);
  _aligned_free(memory);
#else
  Free(memory);
#endif
}

void* OrThrow(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

/// Whether copying a vector leaks when its second allocation fails.
bool CopiesLeak() {
  const std::vector<std::string> texts(2, std::string(100, 'x'));
  const long before = live.load();
  {
    const support::FailAllocation second(2);
    try {
      const std::vector<std::string> copy = texts;
    } catch (const std::bad_alloc&) {  // as intended
    }
  }
  return live.exchange(before) != before;
}

/// Whether the library allocates elsewhere than here.
bool AllocatesUncounted() {
  Adapter adapter;
  const long before = allocations;
  adapter.SetVendorName("a name");
  return allocations == before;
}

bool Told(bool fact, const char* line) {
  if (fact) static_cast<void>(std::fputs(line, stderr));
  return fact;
}

}  // namespace

namespace support {

long AllocationCount() { return allocations; }

long LiveAllocations() { return live.load(std::memory_order_relaxed); }

void ForgetAllocationsSince(long count) { live.store(count, std::memory_order_relaxed); }

bool StandardLibraryLeaks() {
  static const bool leaks =
      Told(CopiesLeak(), "This standard library leaks when a copy fails; leaks after failures are not tested.\n");
  return leaks;
}

bool LibraryHasOwnOperators() {
  static const bool own = Told(AllocatesUncounted(), "The library is a DLL with its own operator new; leaks are not tested.\n");
  return own;
}

long LiveAfterFailures(long live) {
  if (StandardLibraryLeaks() || LibraryHasOwnOperators()) ForgetAllocationsSince(live);
  return LiveAllocations();
}

FailAllocation::FailAllocation(long nth) {
  countdown = nth;
  failed = false;
}

FailAllocation::~FailAllocation() { countdown = 0; }

bool FailAllocation::Happened() const { return failed; }

}  // namespace support

// clang-format off
void* operator new(std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new[](std::size_t size) { return OrThrow(Allocate(size)); }
void* operator new(std::size_t size, std::align_val_t alignment) { return OrThrow(Allocate(size, alignment)); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return OrThrow(Allocate(size, alignment)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept { return Allocate(size, alignment); }
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept { return Allocate(size, alignment); }

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { FreeAligned(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept { FreeAligned(memory); }
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept { FreeAligned(memory); }
// clang-format on
