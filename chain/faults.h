#pragma once

#include <utility>

#include "chain/Chain.h"

namespace plddb::chain {

/// Keeps the first faults of very many, and the number of the others.
inline void AddFault(ScanResult& result, Fault fault) {
  constexpr std::size_t most = 100;
  if (result.faults.size() < most) {
    result.faults.push_back(std::move(fault));
  } else {
    ++result.moreFaults;
  }
}

}  // namespace plddb::chain
