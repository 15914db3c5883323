#include "check/findings.h"

#include <algorithm>
#include <tuple>

namespace plddb::check {

void Findings::Add(std::size_t file, int line, int column, CodeId code, std::string text) {
  const Code& row = CodeOf(code);
  found_.push_back({file, {{descriptions_[file].file, line, column}, row.name, row.severity, std::move(text), {}}});
}

void Findings::Add(std::size_t file, const Attribute& written, CodeId code, std::string text) {
  Add(file, written.line, written.column, code, std::move(text));
}

void Findings::Add(const Described& record, CodeId code, std::string text) {
  Add(record.file, record.element->line, record.element->column, code, std::move(text));
}

void Findings::Add(const Described& record, std::string_view attribute, CodeId code, std::string text) {
  const Attribute* const written = FindAttribute(*record.element, attribute);
  if (written == nullptr) return Add(record, code, std::move(text));
  Add(record.file, *written, code, std::move(text));
}

void Findings::Add(const Described& record, std::string_view attribute, CodeId code, std::string text, const Described& other) {
  Add(record, attribute, code, std::move(text));
  found_.back().finding.related = {{descriptions_[other.file].file, other.element->line, other.element->column}};
}

std::vector<Finding> Findings::Take() {
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
