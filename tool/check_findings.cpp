#include "check_findings.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "device_text.h"

namespace tool {
namespace {

constexpr bool RowsStandInTheOrderOfTheCodes() {
  for (std::size_t i = 0; i < std::size(kCodes); ++i) {
    if (kCodes[i].code != static_cast<Code>(i)) return false;
  }
  return true;
}
static_assert(RowsStandInTheOrderOfTheCodes());

}  // namespace

void Findings::Add(const plddb::Element& element, std::string_view attribute, Code code, std::string text) {
  const plddb::Attribute* const written = FindAttribute(element, attribute);
  if (written == nullptr) return Add(element.line, element.column, code, std::move(text));
  Add(written->line, written->column, code, std::move(text));
}

std::vector<Finding> Findings::Take() {
  const auto stands_before = [](const Finding& a, const Finding& b) {
    return std::tie(a.line, a.column) < std::tie(b.line, b.column);
  };
  std::stable_sort(found_.begin(), found_.end(), stands_before);
  return std::move(found_);
}

std::string Quoted(std::string_view text) { return '"' + Printable(std::string(text)) + '"'; }

}  // namespace tool
