// Findings agree with the lookups: every text and identifier that finds another device, and no other.

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <set>

#include "corpus.h"

namespace {

constexpr std::uint32_t kSeed = 20240517;
constexpr int kDatabases = 150;

/// Makes small databases of which every text is that of another device, too, before long. Each device has its own line.
class RandomDescriptions {
 public:
  std::string Next() {
    std::string text = "<DeviceDatabase>\n";
    for (int f = Below(3) + 1; f > 0; --f) {
      text += "<Family" + Attribute("Name", {"F", "f", "G"}) + Attribute("AliasName", {"G", "H"}) + ">\n";
      for (int d = Below(5); d > 0; --d) text += Device() + "\n";
      text += "</Family>\n";
    }
    return text + "</DeviceDatabase>\n";
  }

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned int>(end)); }

  /// An attribute with one of these values, or none.
  std::string Attribute(const std::string& name, const Texts& values) {
    const auto i = static_cast<std::size_t>(Below(static_cast<int>(values.size()) + 1));
    return i == values.size() ? "" : " " + name + "='" + values[i] + "'";
  }

  std::string Device() {
    const Texts names = {"A", "a", "B", "C", "\xC3\xA4", "\xC3\x84", ""};
    const Texts masks = {"0", "0x0F", "0xFF", "0x3F", "0xFC", "0xF0"};
    std::string text = "<Device Comm='JTAG'" + Attribute("Name", names) + Attribute("CodeName", names);
    text += Attribute("AliasName", names) + Attribute("Vendor", {"Quorel", "quorel", "Example"});
    text += Attribute("DeviceIDScanMask", masks) + " jtagDeviceID='" + std::to_string(Below(256)) + "'";
    text += " ispDeviceID='" + std::to_string(Below(256)) + "'>";
    for (int p = Below(3); p > 0; --p) {
      text += "<Package" + Attribute("PON", {"P1", "p1", "P2"}) + Attribute("AliasPON", {"P2", "P3"}) + "/>";
    }
    return text + "</Device>";
  }

  std::mt19937 random_{kSeed};
};

/// The reported codes, by line of the file.
using Told = std::set<std::pair<int, std::string>>;

/// What the lookups of a database fail to find, as the finding that is due.
class DueFindings {
 public:
  DueFindings(const DeviceList& database, const plddb::Element& outline) : database_(database) {
    for (int f = 0; FamilyList* const family = database.GetFamily(f); ++f) {
      const plddb::Element& element = outline.children[static_cast<std::size_t>(f)];
      AddFamily(*family, element.line);
      for (int d = 0; DeviceInfo* const device = family->GetDevice(d); ++d) {
        line_ = element.children[static_cast<std::size_t>(d)].line;
        AddDevice(*device);
      }
    }
  }

  const Told& Due() const { return due_; }

 private:
  void Add(const DeviceInfo& device, const DeviceInfo* found, const char* code) {
    if (found != nullptr && found != &device) due_.insert({line_, code});
  }

  void AddFamily(const FamilyList& family, int line) {
    for (const char* const name : {family.GetName(), family.GetAliasName()}) {
      if (name != nullptr && database_.GetFamily(name) != &family) due_.insert({line, "family-shadowed"});
    }
  }

  void AddDevice(const DeviceInfo& device) {
    const char* const alias = device.GetAliasName();
    const DeviceInfo* const byAlias = database_.GetDeviceWithCodeName(alias);
    const bool isQuorel = device.GetVendor() != nullptr && std::string(device.GetVendor()) == "Quorel";
    const bool isCodeName = byAlias != nullptr && HasCodeName(*byAlias, alias);
    Add(device, database_.GetDeviceWithName(device.GetName()), "name-shadowed");
    Add(device, database_.GetDeviceWithCodeName(device.GetCodeName()), "code-name-shadowed");
    if (alias != nullptr && isQuorel && !isCodeName) {
      due_.insert({line_, "alias-unused"});
    } else {
      Add(device, byAlias, "alias-shadowed");
    }
    for (int p = 0; const Package* const package = device.GetDevicePackage()->GetPackage(p); ++p) {
      Add(device, database_.GetDeviceWithPON(package->GetBackupPON(), false), "ordering-number-shared");
      Add(device, database_.GetDeviceWithPON(package->GetAliasPON(), false), "ordering-number-shared");
    }
    AddIdentifier(device, "JTAG", device.GetjtagDeviceID());
    AddIdentifier(device, "ISP", device.GetispDeviceID());
  }

  /// Asks for every id that the device answers to: bits 31 to 9 count in no mask, and bit 8, which counts in none either, keeps
  /// the ids from being 0.
  void AddIdentifier(const DeviceInfo& device, const char* comm, unsigned int id) {
    const unsigned int mask = device.GetDeviceIDScanMask();
    int own = 0;
    int others = 0;
    for (unsigned int asked = 256; asked < 512 && mask != 0 && id != 0; ++asked) {
      if (((asked ^ id) & mask) != 0) continue;
      ++(database_.GetDeviceWithCommAndID(comm, asked) == &device ? own : others);
    }
    if (others > 0) due_.insert({line_, own > 0 ? "id-shared" : "id-shadowed"});
  }

  static bool HasCodeName(const DeviceInfo& device, std::string name) {
    if (device.GetCodeName() == nullptr) return false;
    std::string codeName = device.GetCodeName();
    strupr(codeName);
    strupr(name);
    return codeName == name;
  }

  const DeviceList& database_;
  Told due_;
  int line_ = 0;
};

TEST(CheckLookups, FindADeviceShadowedExactlyWhenTheLookupsFindAnother) {
  const std::set<std::string> codes = {"name-shadowed",   "code-name-shadowed",     "alias-shadowed", "alias-unused",
                                       "family-shadowed", "ordering-number-shared", "id-shared",      "id-shadowed"};
  RandomDescriptions descriptions;
  std::map<std::string, int> counts;
  for (int i = 0; i < kDatabases; ++i) {
    const std::string text = descriptions.Next();
    plddb::Outline outline;
    const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "devices.xml", &outline);
    ASSERT_NE(loaded.database, nullptr) << ToString(loaded.faults.front());
    const Told due = DueFindings(*loaded.database, outline.root).Due();
    for (const auto& [line, code] : due) ++counts[code];
    Told told;
    for (const auto& finding : CheckText(text)) {
      if (codes.count(std::string(finding.code)) != 0) told.insert({finding.place.line, std::string(finding.code)});
    }
    EXPECT_EQ(told, due) << "row: database " << i << ", seed " << kSeed << "\n" << text;
  }
  for (const std::string& code : codes) EXPECT_GE(counts[code], 10) << "row: " << code << " hardly occurs";
}

}  // namespace
