#include "tests/support/allocation_counter.h"

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

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

}  // namespace

namespace support {

long AllocationCount() { return allocations; }

long LiveAllocations() { return live.load(std::memory_order_relaxed); }

void ForgetAllocationsSince(long count) { live.store(count, std::memory_order_relaxed); }

bool StandardLibraryLeaks() {
  static const bool leaks = [] {
    const std::vector<std::string> texts(2, std::string(100, 'x'));
    const long before = LiveAllocations();
    {
      const FailAllocation second(2);
      try {
        const std::vector<std::string> copy = texts;
      } catch (const std::bad_alloc&) {  // as intended
      }
    }
    if (LiveAllocations() == before) return false;
    ForgetAllocationsSince(before);
    static_cast<void>(
        std::fputs("This standard library leaks when a copy fails; leaks after failures are not tested.\n", stderr));
    return true;
  }();
  return leaks;
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
