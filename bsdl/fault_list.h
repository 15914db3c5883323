#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bsdl/Bsdl.h"

namespace plddb::bsdl {

/// Of two faults of one file.
bool IsBefore(const Fault& a, const Fault& b);

/// Gathers the faults of a file, in any order.
class FaultList {
 public:
  explicit FaultList(std::string file) : file_(std::move(file)) {}

  void Add(Place place, Severity severity, std::string text);
  void Error(Place place, std::string text) { Add(place, Severity::kError, std::move(text)); }
  void Warning(Place place, std::string text) { Add(place, Severity::kWarning, std::move(text)); }

  /// Whether there are so many that looking for more is pointless.
  bool Full() const { return full_; }

  /// The faults in file order. The list is empty afterwards.
  std::vector<Fault> Take();

 private:
  const std::string file_;
  std::vector<Fault> faults_;
  bool full_ = false;
};

}  // namespace plddb::bsdl
