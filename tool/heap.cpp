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
  constexpr std::uintptr_t large_page = std::uintptr_t{1} << 21;
  char* const heap_end = static_cast<char*>(sbrk(0));
  static_cast<void>(mallopt(M_MMAP_THRESHOLD, step));      // large texts lie in the heap, too
  static_cast<void>(mallopt(M_TRIM_THRESHOLD, 2 * step));  // and what it has, it keeps
  static_cast<void>(mallopt(M_TOP_PAD, step));
  void* volatile grows_the_heap = std::malloc(std::size_t{1} << 20);
  std::free(grows_the_heap);
  static_cast<void>(mallopt(M_TOP_PAD, 1 << 20));             // from now on in small steps: there may be a limit
  if (static_cast<char*>(sbrk(0)) - heap_end < step) return;  // another allocator, or no room
  const std::size_t before_page = large_page - reinterpret_cast<std::uintptr_t>(heap_end) % large_page;
  static_cast<void>(madvise(heap_end + before_page, step - before_page, MADV_HUGEPAGE));
}

}  // namespace tool

#else

namespace tool {
void PreferLargePages() {}
}  // namespace tool

#endif
