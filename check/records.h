#pragma once

#include <string>
#include <vector>

#include "check/Check.h"
#include "family/printed_names.h"

/// \file
/// The records of all description files, with the elements that describe them.

namespace plddb::check {

/// An element, and the position of its file.
struct Described {
  std::size_t file;
  const Element* element;
};

struct DescribedFamily : Described {
  const FamilyList* family;
  std::size_t deviceCount = 0;  // that are described; they are the next ones in Records::Devices
};

struct DescribedDevice : Described {
  const DeviceInfo* device;
};

struct DescribedPackage : Described {
  const Package* package;
};

/// The families and devices of all files, in the order in which lookups visit them. Borrows databases and outlines.
class Records {
 public:
  explicit Records(const std::vector<Description>& descriptions);

  const std::vector<DescribedFamily>& Families() const { return families_; }
  const std::vector<DescribedDevice>& Devices() const { return devices_; }

  /// Describes `other` to the author of `device`: "XC9572XL (line 12, family XC9500XL)".
  std::string NameFor(const DescribedDevice& device, const DescribedDevice& other) const;

  /// "line 12", or "other.xml:12" where that is another file than the one at `file`.
  std::string PlaceFor(std::size_t file, const Described& other) const;

 private:
  void AddFamilies(std::size_t file, const Description& description);

  const std::vector<Description>& descriptions_;
  std::vector<DescribedFamily> families_;
  std::vector<DescribedDevice> devices_;
};

/// Calls `visit(package)` for each package of the device.
template <typename Visit>
void ForEachPackage(const DescribedDevice& device, Visit visit) {
  int position = 0;
  for (const Element& child : device.element->children) {
    if (child.name != "Package") continue;
    visit(DescribedPackage{{device.file, &child}, device.device->GetDevicePackage()->GetPackage(position++)});
  }
}

/// The attribute as it is written in the record's element, null where it is left out; lent.
inline const Attribute* Written(const Described& record, std::string_view attribute) {
  return FindAttribute(*record.element, attribute);
}

/// \name Texts of findings
///@{
using internal::PrintedName;
std::string QuotedValue(const Described& record, std::string_view attribute);  ///< As it is written.
///@}

}  // namespace plddb::check
