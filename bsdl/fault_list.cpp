#include "fault_list.h"

#include <algorithm>
#include <utility>

namespace plddb::bsdl {
namespace {

/// A file that is no BSDL may have millions.
constexpr std::size_t kMostFaults = 10000;

}  // namespace

std::string ToString(const Fault& fault) {
  return fault.file + ':' + std::to_string(fault.place.line) + ':' + std::to_string(fault.place.column) +
         (fault.severity == Severity::kError ? ": error: " : ": warning: ") + fault.text;
}

bool IsBefore(const Fault& a, const Fault& b) {
  return a.place.line != b.place.line ? a.place.line < b.place.line : a.place.column < b.place.column;
}

bool HasErrors(const std::vector<Fault>& faults) {
  return std::any_of(faults.begin(), faults.end(), [](const Fault& fault) { return fault.severity == Severity::kError; });
}

void FaultList::Add(Place place, Severity severity, std::string text) {
  if (faults_.size() < kMostFaults) {
    faults_.push_back({file_, place, severity, std::move(text)});
  } else {
    full_ = true;
  }
}

std::vector<Fault> FaultList::Take() {
  std::stable_sort(faults_.begin(), faults_.end(), IsBefore);
  if (full_) {
    faults_.push_back({file_, faults_.back().place, Severity::kError, "too many faults: the rest of them is not listed"});
  }
  return std::move(faults_);
}

}  // namespace plddb::bsdl
