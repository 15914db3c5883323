#include "unknown_id.h"

#include <algorithm>
#include <iterator>

#include "chain.h"
#include "device_text.h"

namespace tool {
namespace {

constexpr unsigned int kVersionBits = 0xF0000000;
constexpr unsigned int kManufacturerBits = 0x00000FFE;
constexpr std::size_t kMostNear = 5;

struct KindRule {
  bool (*holds)(const std::string& comm, std::optional<unsigned int> id);
  IdKind kind;
};

/// The first rule that holds says the kind.
constexpr KindRule kKindRules[] = {
    {[](const std::string&, std::optional<unsigned int> id) { return !id.has_value(); },
     {"no-idcode", false, "a BYPASS bit instead of an IDCODE: the device has none, or its instruction is BYPASS"}},
    {[](const std::string&, std::optional<unsigned int> id) { return *id == 0; },
     {"stuck-at-0", false, "all bits are 0: TDO is stuck at 0, the chain is broken, or it has no power"}},
    {[](const std::string&, std::optional<unsigned int> id) { return *id == 0xFFFFFFFF; },
     {"stuck-at-1", false, "all bits are 1: nothing drives TDO, or it is stuck at 1; the end of a chain reads so as well"}},
    {[](const std::string& comm, std::optional<unsigned int>) { return comm == "ISP"; },
     {"isp-identifier", false, "an ISP identifier has no fields"}},
    {[](const std::string&, std::optional<unsigned int> id) { return (*id & 1) == 0; },
     {"bypass-bit", false, "bit 0 is 0: the BYPASS bit of a TAP without IDCODE and bits of the next TAPs, not an IDCODE"}},
    {[](const std::string&, std::optional<unsigned int>) { return true; }, {"idcode", true, ""}},
};

/// The bits of `id` that count for `device` and differ from its identifier; 0 for a device that no identifier finds.
unsigned int DifferentBits(const DeviceInfo& device, unsigned int id) {
  return device.GetjtagDeviceID() == 0 ? 0 : (device.GetjtagDeviceID() ^ id) & device.GetDeviceIDScanMask();
}

bool IsOtherVersion(unsigned int bits) { return bits != 0 && (bits & ~kVersionBits) == 0; }
bool IsOneBitApart(unsigned int bits) { return BitCount(bits) == 1 && !IsOtherVersion(bits); }

std::string OneBit(unsigned int bits) { return "bit " + std::to_string(BitCount(bits - 1)) + " differs: a wiring fault?"; }
std::string OtherVersion(unsigned int) { return "other version"; }

constexpr struct {
  bool (*holds)(unsigned int bits);
  std::string (*text)(unsigned int bits);
} kDifferences[] = {{IsOtherVersion, OtherVersion}, {IsOneBitApart, OneBit}};

std::string XmlAttribute(const std::string& name, const std::string& value) {
  std::string text;
  for (const char c : Printable(value)) {
    text += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
  }
  return " " + name + "=\"" + text + "\"";
}

}  // namespace

IdcodeFields SplitIdcode(unsigned int id) {
  return {id >> 28, id >> 12 & 0xFFFF, id >> 1 & 0x7FF, id >> 8 & 0xF, id >> 1 & 0x7F};
}

const IdKind& KindOf(const std::string& comm, std::optional<unsigned int> id) {
  return std::find_if(std::begin(kKindRules), std::end(kKindRules) - 1,
                      [&](const KindRule& rule) { return rule.holds(comm, id); })
      ->kind;
}

std::vector<NearDevice> NearestDevices(const std::vector<Database>& databases, unsigned int id) {
  std::vector<NearDevice> near;
  for (const auto& difference : kDifferences) {
    for (const Database& database : databases) {
      ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
        const unsigned int bits = DifferentBits(device, id);
        if (near.size() < kMostNear && difference.holds(bits)) near.push_back({&device, &database, difference.text(bits)});
      });
    }
  }
  return near;
}

const char* VendorOf(const std::vector<Database>& databases, unsigned int manufacturer) {
  const char* vendor = nullptr;
  for (const Database& database : databases) {
    ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
      const char* const own = device.GetVendor();
      const bool has_idcode = (device.GetjtagDeviceID() & 1) != 0;
      const bool is_same = has_idcode && (device.GetjtagDeviceID() & kManufacturerBits) == manufacturer << 1;
      if (vendor == nullptr && is_same && own != nullptr && *own != '\0') vendor = own;
    });
  }
  return vendor;
}

std::string DescriptionStub(unsigned int id, const char* vendor, unsigned long ir_length, const std::string& indent) {
  const std::string ir = ir_length == 0 ? "?" : std::to_string(ir_length);
  return "<Device" + XmlAttribute("Name", "?") + XmlAttribute("CodeName", "?") +
         XmlAttribute("Vendor", vendor == nullptr ? "?" : vendor) + XmlAttribute("Comm", "JTAG") +
         XmlAttribute("jtagDeviceID", IdText(id & ~kVersionBits)) + XmlAttribute("DeviceIDScanMask", IdText(~kVersionBits)) +
         "\n" + indent + "       " + XmlAttribute("IDLength", "32") + XmlAttribute("IRLength", ir) +
         XmlAttribute("BypassLength", "1") + "/>";
}

}  // namespace tool
