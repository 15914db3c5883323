#pragma once

#include <atomic>
#include <cstddef>

namespace plddb::internal {

/// Memory for some records of one size, so that a walk finds them side by side. Each record owns many small blocks of the heap,
/// which would lie between it and the next one otherwise, and the walk would wait for another page of memory at every step.
///
/// A container fills one block after the other. Records may go in any order, on any thread, and after their container: a block
/// goes with the last of its records, once its container has let go of it. A place is not used twice.
class RecordBlock {
 public:
  /// The next place in `block`, or in a new one that takes its stead. std::bad_alloc leaves `block` as it was.
  static void* Take(RecordBlock*& block, std::size_t size);

  /// Undoes the last Take, whose record could not be made.
  static void PutBack(RecordBlock*& block) noexcept;

  /// Frees the place of a record that has ended; null is ignored.
  static void Free(void* record) noexcept;

  /// Ends the container's hold on its block; null is ignored.
  static void LetGo(RecordBlock* block) noexcept;

 private:
  RecordBlock(int places, std::size_t placeSize) : places_(places), placeSize_(placeSize) {}

  static RecordBlock* Make(const RecordBlock* last, std::size_t size);
  void* PlaceAt(int index);
  void Drop() noexcept;

  const int places_;
  const std::size_t placeSize_;  // bytes
  int taken_ = 0;
  std::atomic<int> holds_{1};  // the container's, and one for each record
};

}  // namespace plddb::internal
