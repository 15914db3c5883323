#include "chain/Chain.h"
#include "device/identifiers.h"
#include "foundation/printed_forms.h"

namespace plddb::chain {
namespace {

using internal::kVersionBits;

std::string XmlAttribute(const std::string& name, const std::string& value) {
  std::string text;
  for (const char c : internal::Printable(value)) {
    const char* const escape = c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : nullptr;
    escape == nullptr ? text.append(1, c) : text.append(escape);
  }
  return " " + name + "=\"" + text + "\"";
}

}  // namespace

std::string DescriptionStub(unsigned int id, const char* vendor, unsigned long irLength, const std::string& indent) {
  const std::string ir = irLength == 0 ? "?" : std::to_string(irLength);
  return "<Device" + XmlAttribute("Name", "?") + XmlAttribute("CodeName", "?") +
         XmlAttribute("Vendor", vendor == nullptr ? "?" : vendor) + XmlAttribute("Comm", "JTAG") + "\n" + indent + "       " +
         XmlAttribute("jtagDeviceID", internal::Hex(id & ~kVersionBits, 8)) +
         XmlAttribute("DeviceIDScanMask", internal::Hex(~kVersionBits, 8)) + "\n" + indent + "       " +
         XmlAttribute("IDLength", "32") + XmlAttribute("IRLength", ir) + XmlAttribute("BypassLength", "1") + "/>";
}

}  // namespace plddb::chain
