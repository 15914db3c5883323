#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/Check.h"
#include "check/codes.h"
#include "check/records.h"

namespace plddb::check {

/// Gathers findings, in any order.
class Findings {
 public:
  explicit Findings(const std::vector<Description>& descriptions) : descriptions_(descriptions) {}

  /// At the value of one of the record's attributes.
  void Add(const Described& record, const Attribute& written, CodeId code, std::string text);

  /// At an element.
  void Add(const Described& record, CodeId code, std::string text);

  /// At the value of the record's attribute, or at the element where that lacks it.
  void Add(const Described& record, std::string_view attribute, CodeId code, std::string text);

  /// The same, about two records in conflict: the text names `other`.
  void Add(const Described& record, std::string_view attribute, CodeId code, std::string text, const Described& other);
  void Add(const Described& record, CodeId code, std::string text, const Described& other);

  /// All findings, in the order of the files and of the places in them, without those that comments of the files allow. What
  /// was gathered is used up.
  std::vector<Finding> Take();

 private:
  struct Found {
    std::size_t file;
    const Element* element;
    Finding finding;
  };

  void Add(const Described& record, int line, int column, CodeId code, std::string text);
  void NameOther(const Described& other);
  void DropAllowed();

  const std::vector<Description>& descriptions_;
  std::vector<Found> found_;
};

}  // namespace plddb::check
