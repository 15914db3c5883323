#include "check/findings.h"

#include <algorithm>
#include <tuple>

#include "check/allowances.h"

namespace plddb::check {

void Findings::Add(const Described& record, int line, int column, CodeId code, std::string text) {
  const Code& row = CodeOf(code);
  Finding finding = {{descriptions_[record.file].file, line, column}, row.name, row.severity, std::move(text), {}};
  found_.push_back({record.file, record.element, std::move(finding)});
}

void Findings::Add(const Described& record, const Attribute& written, CodeId code, std::string text) {
  Add(record, written.line, written.column, code, std::move(text));
}

void Findings::Add(const Described& record, CodeId code, std::string text) {
  Add(record, record.element->line, record.element->column, code, std::move(text));
}

void Findings::Add(const Described& record, std::string_view attribute, CodeId code, std::string text) {
  const Attribute* const written = FindAttribute(*record.element, attribute);
  if (written == nullptr) return Add(record, code, std::move(text));
  Add(record, *written, code, std::move(text));
}

void Findings::Add(const Described& record, std::string_view attribute, CodeId code, std::string text, const Described& other) {
  Add(record, attribute, code, std::move(text));
  NameOther(other);
}

void Findings::Add(const Described& record, CodeId code, std::string text, const Described& other) {
  Add(record, code, std::move(text));
  NameOther(other);
}

void Findings::NameOther(const Described& other) {
  found_.back().finding.related = {{descriptions_[other.file].file, other.element->line, other.element->column}};
}

/// Removes every finding that a comment allows; a comment that allows none is a finding itself.
void Findings::DropAllowed() {
  std::vector<Allowances> allowances;
  for (const Description& description : descriptions_) allowances.emplace_back(description.text);
  const auto isAllowed = [&](const Found& found) { return allowances[found.file].Allow(*found.element, found.finding.code); };
  found_.erase(std::remove_if(found_.begin(), found_.end(), isAllowed), found_.end());
  for (std::size_t file = 0; file < allowances.size(); ++file) {
    for (const Allowance& unused : allowances[file].Unused()) {
      Add({file, nullptr}, unused.line, unused.column, CodeId::kAllowUnused, WhyUnused(unused));
    }
  }
}

std::vector<Finding> Findings::Take() {
  DropAllowed();
  const auto isBefore = [](const Found& a, const Found& b) {
    return std::tie(a.file, a.finding.place.line, a.finding.place.column) <
           std::tie(b.file, b.finding.place.line, b.finding.place.column);
  };
  std::stable_sort(found_.begin(), found_.end(), isBefore);
  std::vector<Finding> findings;
  findings.reserve(found_.size());
  for (Found& found : found_) findings.push_back(std::move(found.finding));
  found_.clear();
  return findings;
}

}  // namespace plddb::check
