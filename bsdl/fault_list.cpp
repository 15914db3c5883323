#include "fault_list.h"

#include <algorithm>
#include <utility>

namespace plddb::bsdl {
namespace {

/// A file that is no BSDL may have millions.
constexpr std::size_t kMostFaults = 10000;

constexpr std::size_t kLongestQuote = 60;

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

std::string Quoted(std::string_view text) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string quoted = "\"";
  for (const char c : text) {
    if (quoted.size() > kLongestQuote) return quoted + "...\"";
    if (c >= ' ' && c <= '~') {
      quoted += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      quoted += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return quoted += '"';
}

}  // namespace plddb::bsdl
