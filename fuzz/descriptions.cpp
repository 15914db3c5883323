// Description files: whatever the text is, the load gives a sound database or faults that lead to a place in the text.

#include "Descriptions.h"

#include "fuzz/input.h"
#include "fuzz/tree_checks.h"

using fuzz::Check;

namespace {

/// Whether the text could ask for memory that takes long to fill: a number of five digits or more.
bool HasLargeNumber(std::string_view text) {
  std::size_t digits = 0;
  for (const char c : text) {
    digits = c >= '0' && c <= '9' ? digits + 1 : 0;
    if (digits >= 5) return true;
  }
  return false;
}

/// Each place is within the text, and after the previous one.
void CheckPlaces(const plddb::Element& element, std::pair<int, int>& last) {
  const auto check = [&](int line, int column) {
    Check(last < std::pair(line, column), "places follow each other");
    last = {line, column};
  };
  check(element.line, element.column);
  for (const plddb::Attribute& attribute : element.attributes) check(attribute.line, attribute.column);
  for (const plddb::Element& child : element.children) CheckPlaces(child, last);
}

/// A written file loads, and writing it again gives the same text.
void CheckCanonicalForm(const DeviceList& database, const plddb::Outline& outline) {
  const std::string once = plddb::WriteDescriptions(std::vector<plddb::Source>{{&database, &outline}});
  plddb::Outline again;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(once, "written.xml", &again);
  Check(loaded.database != nullptr, "what is written loads");
  const std::string twice = plddb::WriteDescriptions(std::vector<plddb::Source>{{loaded.database.get(), &again}});
  Check(twice == once, "the canonical form is written alike again");
  Check(again.comments.size() == outline.comments.size(), "no comment is lost");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (text.find("EBR") != text.npos && HasLargeNumber(text)) return 0;
  plddb::Outline outline;
  const plddb::LoadResult result = plddb::ParseDescriptions(text, "input.xml", &outline);
  Check((result.database == nullptr) == !result.faults.empty(), "there is a database or there are faults");
  if (result.database != nullptr) {
    fuzz::CheckDatabase(*result.database);
    std::pair<int, int> last = {0, 0};
    CheckPlaces(outline.root, last);
    CheckCanonicalForm(*result.database, outline);
  }
  for (const plddb::Fault& fault : result.faults) {
    Check(fault.file == "input.xml", "a fault names the file");
    Check(fault.line >= 1 && static_cast<std::size_t>(fault.line) <= size + 1, "a fault has a line of the text");
    Check(fault.column >= 1 && static_cast<std::size_t>(fault.column) <= size + 1, "a fault has a column of the text");
    Check(!fault.text.empty() && fault.text.find('\n') == fault.text.npos, "a fault is one line of text");
    Check(plddb::ToString(fault).find("error: " + fault.text) != std::string::npos, "a fault shows as an error");
  }
  return 0;
}
