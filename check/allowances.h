#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/Check.h"

namespace plddb::check {

/// What a comment allows: findings of a code in the start tag of the next element.
struct Allowance {
  std::string name;  // as it is written
  int line;          // of the comment
  int column;
  bool hasElement;
  bool isUsed = false;
};

/// The comments of a file that allow findings: `<!-- plddb: allow CODE, CODE: REASON -->`; the reason may be left out.
class Allowances {
 public:
  /// The text is one that loads.
  explicit Allowances(std::string_view text);

  bool Empty() const { return allowances_.empty(); }

  /// Whether a finding of `code` is allowed in the start tag of `element`.
  bool Allow(const Element& element, std::string_view code);

  std::vector<Allowance> Unused() const;

 private:
  void AddComment(std::string_view comment, int line, int column);
  void AddElement(int line, int column);

  std::vector<Allowance> allowances_;
  std::size_t pending_ = 0;  // those from here on wait for their element
  std::map<std::pair<int, int>, std::pair<std::size_t, std::size_t>>
      ofElement_;  // its place; the allowances from here to there
};

/// The mistake in an allowance that allows nothing.
std::string WhyUnused(const Allowance& allowance);

}  // namespace plddb::check
