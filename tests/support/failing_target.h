#pragma once

#include <new>

#include "tests/support/allocation_counter.h"

namespace support {

/// How often the operation allocates. A test that fails each of its allocations in turn meets as many failures.
template <typename Operation>
long AllocationsOf(Operation operation) {
  const long before = AllocationCount();
  operation();
  return AllocationCount() - before;
}

/// ForEachFailingAllocation for an operation that changes a target: every run starts from its own target, which `make()`
/// makes (as a smart pointer) while no allocation fails. `afterFailure(target)` runs after each std::bad_alloc that came out;
/// the target is destroyed afterwards in any case. Returns how often std::bad_alloc came out.
template <typename Make, typename Operation, typename AfterFailure>
long ForEachFailureOn(Make make, Operation operation, AfterFailure afterFailure) {
  long failures = 0;
  for (long nth = 1;; ++nth) {
    const auto target = make();
    bool thrown = false;
    bool happened = false;
    {
      FailAllocation failing(nth);
      try {
        operation(*target);
      } catch (const std::bad_alloc&) {
        thrown = true;
      }
      happened = failing.Happened();
    }
    if (thrown) {
      ++failures;
      afterFailure(*target);
    }
    if (!happened) return failures;
  }
}

}  // namespace support
