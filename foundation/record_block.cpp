#include "foundation/record_block.h"

#include <algorithm>
#include <new>

#ifdef __has_feature  // clang
#if __has_feature(address_sanitizer)
#define PLDDB_ADDRESS_SANITIZER
#endif
#elif defined __SANITIZE_ADDRESS__  // g++
#define PLDDB_ADDRESS_SANITIZER
#endif

// The address sanitizer is told what is no record, so that it finds those who use a device that has ended.
#ifdef PLDDB_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(start, size)
#define ASAN_UNPOISON_MEMORY_REGION(start, size)
#endif

namespace plddb::internal {
namespace {

/// Each block has twice the places of the one before it, up to this many: most families are small.
constexpr int kMostPlaces = 64;

/// Stands in front of each record. It is as long as the strictest alignment of a plain `new`.
struct alignas(std::max_align_t) Mark {
  RecordBlock* block;
};

constexpr std::size_t WholeMarks(std::size_t size) { return (size + sizeof(Mark) - 1) / sizeof(Mark) * sizeof(Mark); }

constexpr std::size_t kHeadSize = WholeMarks(sizeof(RecordBlock));

Mark* MarkOf(void* record) { return static_cast<Mark*>(record) - 1; }

}  // namespace

RecordBlock* RecordBlock::Make(const RecordBlock* last, std::size_t size) {
  const int places = last == nullptr ? 1 : std::min(2 * last->places_, kMostPlaces);
  const std::size_t placeSize = sizeof(Mark) + WholeMarks(size);
  const std::size_t allPlaces = static_cast<std::size_t>(places) * placeSize;
  auto* const block = new (::operator new(kHeadSize + allPlaces)) RecordBlock(places, placeSize);
  ASAN_POISON_MEMORY_REGION(block->PlaceAt(0), allPlaces);
  return block;
}

void* RecordBlock::PlaceAt(int index) {
  return reinterpret_cast<char*>(this) + kHeadSize + static_cast<std::size_t>(index) * placeSize_;
}

void* RecordBlock::Take(RecordBlock*& block, std::size_t size) {
  if (block == nullptr || block->taken_ == block->places_) {
    RecordBlock* const next = Make(block, size);
    LetGo(block);
    block = next;
  }
  void* const place = block->PlaceAt(block->taken_);
  ASAN_UNPOISON_MEMORY_REGION(place, block->placeSize_);
  ++block->taken_;
  ++block->holds_;
  return new (place) Mark{block} + 1;
}

void RecordBlock::PutBack(RecordBlock*& block) noexcept {
  --block->taken_;
  Free(static_cast<Mark*>(block->PlaceAt(block->taken_)) + 1);
  if (block->taken_ > 0) return;
  LetGo(block);
  block = nullptr;
}

void RecordBlock::Free(void* record) noexcept {
  if (record == nullptr) return;
  Mark* const mark = MarkOf(record);
  RecordBlock* const block = mark->block;
  ASAN_POISON_MEMORY_REGION(mark, block->placeSize_);
  block->Drop();
}

void RecordBlock::LetGo(RecordBlock* block) noexcept {
  if (block != nullptr) block->Drop();
}

void RecordBlock::Drop() noexcept {
  if (--holds_ > 0) return;
  this->~RecordBlock();
  ::operator delete(this);
}

}  // namespace plddb::internal
