#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "descriptions/Descriptions.h"
#include "descriptions/TextForms.h"

namespace plddb::descriptions {

/// Collects the faults of a text, in any order.
class Faults {
 public:
  void Add(std::size_t offset, std::string text);

  /// Whether there are so many that searching for more is pointless.
  bool Full() const { return full_; }
  bool Empty() const { return found_.empty(); }

  /// The faults in the order of the text. Call it once: it empties the collection.
  std::vector<Fault> Located(std::string_view text, const std::string& file);

 private:
  struct Found {
    std::size_t offset;
    std::string text;
  };

  std::vector<Found> found_;
  bool full_ = false;
};

}  // namespace plddb::descriptions
