#pragma once

#include <new>

/// \file
/// Counts the allocations of the unit test program and lets one of them fail. The program's global operators new and delete
/// are replaced, so that the library, the standard library and GoogleTest all go through them.
///
/// GoogleTest allocates too: take the counts into variables first, and make EXPECTs of them afterwards.
/// A request of more than 1 GiB always fails, so that "absurd sizes end in bad_alloc" does not depend on the machine.

namespace support {

/// The successful allocations of this thread since it started. Only differences mean something.
long AllocationCount();

/// Allocated and not yet freed, by all threads. Only differences mean something.
long LiveAllocations();

/// \name Where LiveAllocations() does not show leaks
/// Both are tried out once; if so, a line on standard error tells that leaks are not tested.
///@{
bool StandardLibraryLeaks();    ///< When an allocation fails while a container is copied, as in libc++ 14.
bool LibraryHasOwnOperators();  ///< New and delete: those of a DLL are not the program's, and what one allocates the other may
                                ///< free.
///@}

/// LiveAllocations() after failures, for a comparison with `live`, from before them; just `live` where leaks do not show.
long LiveAfterFailures(long live);

/// From now on as many allocations count as live as when LiveAllocations() was `live`.
void ForgetAllocationsSince(long live);

/// While it lives, the `nth` allocation of this thread from now on fails (1: the next one); the others succeed.
/// The failing operator throws std::bad_alloc, the nothrow forms give null. They do not nest.
class FailAllocation {
 public:
  explicit FailAllocation(long nth);
  ~FailAllocation();
  FailAllocation(const FailAllocation&) = delete;
  FailAllocation& operator=(const FailAllocation&) = delete;

  bool Happened() const;  ///< Whether the allocation that was to fail has been asked for.
};

/// Runs `operation` with its first allocation failing, then its second, and so on, until it runs to its end without meeting
/// the failure. `afterFailure` runs after each std::bad_alloc that came out, with allocations working again: make the checks
/// there. Other exceptions pass through. Returns how often std::bad_alloc came out.
///
///     const long live = support::LiveAllocations();
///     const long failures = support::ForEachFailingAllocation([&] { DeviceInfo copy(&source); },
///                                                             [&] { EXPECT_EQ(support::LiveAllocations(), live); });
///     EXPECT_GT(failures, 0);
template <typename Operation, typename AfterFailure>
long ForEachFailingAllocation(Operation operation, AfterFailure afterFailure) {
  long failures = 0;
  for (long nth = 1;; ++nth) {
    bool thrown = false;
    bool happened = false;
    const long live = LiveAllocations();
    {
      FailAllocation failing(nth);
      try {
        operation();
      } catch (const std::bad_alloc&) {
        thrown = true;
      }
      happened = failing.Happened();
    }
    if (LibraryHasOwnOperators() || (thrown && StandardLibraryLeaks())) ForgetAllocationsSince(live);
    if (thrown) {
      ++failures;
      afterFailure();
    }
    if (!happened) return failures;
  }
}

/// The same without its own checks after each failure.
template <typename Operation>
long ForEachFailingAllocation(Operation operation) {
  return ForEachFailingAllocation(operation, [] {});
}

}  // namespace support
