#include "check/records.h"

#include "descriptions/TextForms.h"

namespace plddb::check {
Records::Records(const std::vector<Description>& descriptions) : descriptions_(descriptions) {
  for (std::size_t file = 0; file < descriptions.size(); ++file) AddFamilies(file, descriptions[file]);
}

void Records::AddFamilies(std::size_t file, const Description& description) {
  int familyPosition = 0;
  for (const Element& child : description.outline->root.children) {  // a database holds nothing but families
    const FamilyList* const family = description.database->GetFamily(familyPosition++);
    families_.push_back({{file, &child}, family});
    const std::size_t before = devices_.size();
    int devicePosition = 0;
    for (const Element& grandchild : child.children) {
      if (grandchild.name == "Device") devices_.push_back({{file, &grandchild}, family->GetDevice(devicePosition++)});
    }
    families_.back().deviceCount = devices_.size() - before;
  }
}

std::string Records::NameFor(const DescribedDevice& device, const DescribedDevice& other) const {
  const bool isSameFamily = other.device->GetFamilyObject() == device.device->GetFamilyObject();
  return PrintedName(*other.device) + " (" + PlaceFor(device.file, other) + ", " +
         (isSameFamily ? "the same family" : "family " + PrintedName(other.device->GetFamilyObject())) + ")";
}

std::string Records::PlaceFor(std::size_t file, const Described& other) const {
  const std::string line = std::to_string(other.element->line);
  return file == other.file ? "line " + line : Printable(descriptions_[other.file].file) + ":" + line;
}

std::string QuotedValue(const Described& record, std::string_view attribute) {
  const Attribute* const written = Written(record, attribute);
  return Quoted(written == nullptr ? std::string_view() : written->value);
}

}  // namespace plddb::check
