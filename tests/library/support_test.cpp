#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/allocation_counter.h"

namespace {

struct alignas(64) Wide {
  char bytes[64];
};

/// Keeps the compiler from removing an unused allocation.
bool Look(const void* memory) {
  const void* const volatile seen = memory;
  return seen != nullptr;
}

void AllocateInEveryForm() {
  // Called by name: a compiler may leave out a new expression, but no call.
  const auto alignment = std::align_val_t{64};
  ::operator delete(::operator new(1));
  ::operator delete[](::operator new[](1));
  ::operator delete(::operator new(1, alignment), alignment);
  ::operator delete[](::operator new[](1, alignment), alignment);
  ::operator delete(::operator new(1, std::nothrow), std::nothrow);
  ::operator delete[](::operator new[](1, std::nothrow), std::nothrow);
  ::operator delete(::operator new(1, alignment, std::nothrow), alignment, std::nothrow);
  ::operator delete[](::operator new[](1, alignment, std::nothrow), alignment, std::nothrow);
}

TEST(AllocationCounter, CountsEveryFormOfNewOnce) {
  const long before = support::AllocationCount();
  const long live = support::LiveAllocations();
  AllocateInEveryForm();
  const long allocated = support::AllocationCount() - before;
  const long left = support::LiveAllocations() - live;
  EXPECT_EQ(allocated, 8);
  EXPECT_EQ(left, 0);
}

TEST(AllocationCounter, LiveAllocationsFallWhenMemoryIsFreed) {
  const long before = support::LiveAllocations();
  auto held = std::make_unique<int>(1);
  auto wide = std::make_unique<Wide>();
  Look(held.get());
  Look(wide.get());
  const long holding = support::LiveAllocations() - before;
  held.reset();
  wide.reset();
  const long freed = support::LiveAllocations() - before;
  EXPECT_EQ(holding, 2);
  EXPECT_EQ(freed, 0);
}

TEST(AllocationCounter, AlignedMemoryIsAligned) {
  const auto wide = std::make_unique<Wide>();
  EXPECT_EQ(reinterpret_cast<std::size_t>(wide.get()) % alignof(Wide), 0u);
}

TEST(AllocationCounter, CountsOnlyTheAllocationsOfItsOwnThread) {
  long inside = 0;
  std::thread worker([&inside] {
    const long before = support::AllocationCount();
    const std::string text(1000, 'x');
    Look(text.data());
    inside = support::AllocationCount() - before;
  });
  const long before = support::AllocationCount();
  worker.join();
  const long outside = support::AllocationCount() - before;
  EXPECT_EQ(inside, 1);
  EXPECT_EQ(outside, 0);
}

TEST(FailAllocation, FailsTheNthAllocationAndNoOther) {
  bool thrown = false;
  bool happened = false;
  bool nothrowIsNull = false;
  {
    const support::FailAllocation failing(3);
    ::operator delete(::operator new(1));
    ::operator delete(::operator new(1));
    try {
      ::operator delete(::operator new(1));
    } catch (const std::bad_alloc&) {
      thrown = true;
    }
    happened = failing.Happened();
    ::operator delete(::operator new(1));
  }
  {
    const support::FailAllocation failing(1);
    void* const memory = ::operator new(1, std::nothrow);
    nothrowIsNull = memory == nullptr;
    ::operator delete(memory);
  }
  EXPECT_TRUE(thrown);
  EXPECT_TRUE(happened);
  EXPECT_TRUE(nothrowIsNull);
}

TEST(FailAllocation, EndsWithItsScope) {
  { const support::FailAllocation failing(1); }
  EXPECT_NO_THROW(::operator delete(::operator new(1)));
}

TEST(FailAllocation, AnAbsurdRequestFailsOnEveryMachine) {
  EXPECT_THROW(Look(::operator new((std::size_t{1} << 30) + 1)), std::bad_alloc);
}

TEST(ForEachFailingAllocation, FailsEachAllocationOnceUntilTheOperationSucceeds) {
  int runs = 0;
  int checks = 0;
  int completed = 0;
  const long failures = support::ForEachFailingAllocation(
      [&] {
        ++runs;
        const std::vector<std::string> texts(3, std::string(100, 'x'));  // one text to copy, one vector, three copies
        Look(texts.data());
        ++completed;
      },
      [&] { ++checks; });
  EXPECT_EQ(failures, 5);
  EXPECT_EQ(checks, 5);
  EXPECT_EQ(runs, 6);
  EXPECT_EQ(completed, 1);
}

TEST(ForEachFailingAllocation, GoesOnWhenTheOperationSwallowsAFailure) {
  long completed = 0;
  const long failures = support::ForEachFailingAllocation([&] {
    ::operator delete(::operator new(1, std::nothrow));
    ::operator delete(::operator new(1));
    ++completed;
  });
  EXPECT_EQ(failures, 1);
  EXPECT_EQ(completed, 2);
}

}  // namespace
