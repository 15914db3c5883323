#include "foundation/record_block.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/allocation_counter.h"

using plddb::internal::RecordBlock;

namespace {

/// A container of records of one size, as the records' owner sees them.
class Container {
 public:
  explicit Container(std::size_t size) : size_(size) {}
  ~Container() { RecordBlock::LetGo(block_); }
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;

  void* Take() {
    void* const record = RecordBlock::Take(block_, size_);
    std::memset(record, 0xA5, size_);  // it is all ours
    return record;
  }

  void PutBack() { RecordBlock::PutBack(block_); }

  std::vector<void*> Take(int count) {
    std::vector<void*> records;
    for (int i = 0; i < count; ++i) records.push_back(Take());
    return records;
  }

 private:
  std::size_t size_;
  RecordBlock* block_ = nullptr;
};

std::intptr_t Distance(const void* from, const void* to) {
  return reinterpret_cast<std::intptr_t>(to) - reinterpret_cast<std::intptr_t>(from);
}

void FreeAll(const std::vector<void*>& records) {
  for (void* const record : records) RecordBlock::Free(record);
}

TEST(RecordBlock, BlocksDoubleUpToSixtyFourPlaces) {
  const struct {
    int records;
    long blocks;
  } cases[] = {{1, 1},  {2, 2},  {3, 2},  {4, 3},  {7, 3},   {8, 4},   {15, 4},  {16, 5},
               {31, 5}, {32, 6}, {63, 6}, {64, 7}, {127, 7}, {128, 8}, {191, 8}, {192, 9}};
  for (const auto& row : cases) {
    std::vector<void*> records;
    records.reserve(1000);
    Container container(100);
    const long before = support::LiveAllocations();
    for (int i = 0; i < row.records; ++i) records.push_back(container.Take());
    const long blocks = support::LiveAllocations() - before;
    EXPECT_EQ(blocks, row.blocks) << row.records << " records";
    FreeAll(records);
  }
}

TEST(RecordBlock, RecordsOfABlockLieSideBySide) {
  for (const std::size_t size : {1u, 8u, 16u, 17u, 864u}) {
    Container container(size);
    const std::vector<void*> records = container.Take(31);
    const std::intptr_t step = Distance(records[15], records[16]);
    EXPECT_LE(step, static_cast<std::intptr_t>(size) + 31) << "size: " << size;
    for (std::size_t i = 16; i < records.size(); ++i) {
      EXPECT_EQ(Distance(records[i - 1], records[i]), step) << "size: " << size << ", record " << i;
    }
    FreeAll(records);
  }
}

TEST(RecordBlock, RecordsAreAlignedForEveryType) {
  for (const std::size_t size : {1u, 9u, 24u, 864u}) {
    Container container(size);
    const std::vector<void*> records = container.Take(31);
    for (void* const record : records) {
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record) % alignof(std::max_align_t), 0U) << "size: " << size;
    }
    FreeAll(records);
  }
}

/// Four records in three blocks and the container (-1) end in the order of `ends`.
long LeftAfter(const std::vector<int>& ends) {
  const long live = support::LiveAllocations();
  auto* const container = new Container(24);
  void* const records[] = {container->Take(), container->Take(), container->Take(), container->Take()};
  for (const int end : ends) {
    if (end < 0) {
      delete container;
    } else {
      RecordBlock::Free(records[end]);
    }
  }
  return support::LiveAllocations() - live;
}

TEST(RecordBlock, BlocksGoWithTheirLastRecordInWhateverOrder) {
  std::vector<int> ends = {-1, 0, 1, 2, 3};
  do {
    const long left = LeftAfter(ends);
    std::string order;
    for (const int end : ends) order += std::to_string(end) + ' ';
    EXPECT_EQ(left, 0) << "order: " << order;
  } while (std::next_permutation(ends.begin(), ends.end()));
}

TEST(RecordBlock, AFullBlockGoesWithItsRecordsThoughTheContainerLivesOn) {
  std::vector<void*> records;
  records.reserve(10);
  Container container(24);
  const long before = support::LiveAllocations();
  for (int i = 0; i < 4; ++i) records.push_back(container.Take());  // blocks of 1, 2 and 4
  FreeAll(records);
  const long left = support::LiveAllocations() - before;
  EXPECT_EQ(left, 1);  // the one that takes the next records
}

TEST(RecordBlock, WhatIsPutBackIsTheNextRecordAgain) {
  Container container(24);
  const std::vector<void*> records = container.Take(2);
  void* const third = container.Take();
  container.PutBack();
  void* const again = container.Take();
  EXPECT_EQ(again, third);
  FreeAll(records);
  RecordBlock::Free(again);
}

TEST(RecordBlock, ABlockGoesWithItsOnlyRecordWhenThatIsPutBack) {
  std::vector<void*> records;
  records.reserve(10);
  Container container(24);
  const long before = support::LiveAllocations();
  container.Take();
  container.PutBack();
  EXPECT_EQ(support::LiveAllocations() - before, 0);
  records.push_back(container.Take());
  container.Take();
  container.PutBack();
  EXPECT_EQ(support::LiveAllocations() - before, 1);
  FreeAll(records);
}

TEST(RecordBlock, ABlockThatCannotBeHadLeavesTheOldOne) {
  for (const int present : {0, 1, 3}) {
    RecordBlock* block = nullptr;
    std::vector<void*> records;
    for (int i = 0; i < present; ++i) records.push_back(RecordBlock::Take(block, 24));
    RecordBlock* const before = block;
    bool thrown = false;
    {
      const support::FailAllocation failing(1);
      try {
        RecordBlock::Take(block, 24);
      } catch (const std::bad_alloc&) {
        thrown = true;
      }
    }
    EXPECT_TRUE(thrown) << present << " records";
    EXPECT_EQ(block, before) << present << " records";
    FreeAll(records);
    RecordBlock::LetGo(block);
  }
}

TEST(RecordBlock, NullIsNoRecordAndNoBlock) {
  const long live = support::LiveAllocations();
  RecordBlock::Free(nullptr);
  RecordBlock::LetGo(nullptr);
  EXPECT_EQ(support::LiveAllocations(), live);
}

TEST(RecordBlock, ThreadsMayFreeRecordsWhileOthersAreMade) {
  const long live = support::LiveAllocations();
  {
    Container container(24);
    std::vector<void*> odd;
    std::vector<void*> even;
    for (int i = 0; i < 1000; ++i) (i % 2 == 0 ? even : odd).push_back(container.Take());
    std::thread first([&] { FreeAll(odd); });
    std::thread second([&] { FreeAll(even); });
    const std::vector<void*> late = container.Take(1000);
    first.join();
    second.join();
    FreeAll(late);
  }
  EXPECT_EQ(support::LiveAllocations(), live);
}

}  // namespace
