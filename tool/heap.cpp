#include "heap.h"

#include <cstdlib>  // says whether this is glibc

#if defined(__linux__) && defined(__GLIBC__)

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace tool {

void PreferLargePages() {
  constexpr int step = 1 << 28;  // of address space, not of memory
  constexpr std::uintptr_t largePage = std::uintptr_t{1} << 21;
  char* const heapEnd = static_cast<char*>(sbrk(0));
  static_cast<void>(mallopt(M_MMAP_THRESHOLD, step));      // large texts lie in the heap, too
  static_cast<void>(mallopt(M_TRIM_THRESHOLD, 2 * step));  // and what it has, it keeps
  static_cast<void>(mallopt(M_TOP_PAD, step));
  void* volatile growsTheHeap = std::malloc(std::size_t{1} << 20);
  std::free(growsTheHeap);
  static_cast<void>(mallopt(M_TOP_PAD, 1 << 20));            // from now on in small steps: there may be a limit
  if (static_cast<char*>(sbrk(0)) - heapEnd < step) return;  // another allocator, or no room
  const std::size_t beforePage = largePage - reinterpret_cast<std::uintptr_t>(heapEnd) % largePage;
  static_cast<void>(madvise(heapEnd + beforePage, step - beforePage, MADV_HUGEPAGE));
}

}  // namespace tool

#else

namespace tool {
void PreferLargePages() {}
}  // namespace tool

#endif
