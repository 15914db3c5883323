#pragma once

#include <cstddef>
#include <vector>

/// \file
/// What this program asks of the heap. Its global operators new and delete are replaced, so that all allocations of the library
/// are seen; they cost a test more than the ordinary ones, for the library and for what it is compared with alike.

namespace bench {

/// The allocations since the program started. Only differences mean something.
long AllocationCount();

struct Block {
  std::byte* address;
  std::size_t size;  ///< As it was asked for.
};

/// Writes down every allocation and release while it lives. They do not nest.
class AllocationRecorder {
 public:
  AllocationRecorder();
  ~AllocationRecorder();
  AllocationRecorder(const AllocationRecorder&) = delete;
  AllocationRecorder& operator=(const AllocationRecorder&) = delete;

  /// Ends the recording; the blocks that were allocated in it and not released, in order of their allocation.
  std::vector<Block> LiveBlocks();

  /// Ends the recording; the addresses that were released in it, in order.
  std::vector<const std::byte*> Releases();
};

}  // namespace bench
