// Searches: whatever the text is, each match is a device of the database, found once, and its reason agrees with its kind.

#include "Find.h"

#include <set>

#include "Descriptions.h"
#include "fuzz/input.h"

using fuzz::Check;

namespace {

const DeviceList& Sample() {
  static const plddb::LoadResult loaded = plddb::ParseDescriptions(
      "<DeviceDatabase><Family Name='XC9500XL' AliasName='Old'>"
      "<Device Name='XC9572XL' CodeName='XC9572XL' AliasName='OLD' Vendor='Xilinx' Comm='JTAG' jtagDeviceID='0x09604093' "
      "DeviceIDScanMask='0x0FFFFFFF' FuseNumber='46656'><Package Type='VQ44' PON='XC9572XL-10VQ44C'/></Device>"
      "<Device Name='GW1NR-9' CodeName='GW1NR-9' Vendor='Gowin'/>"
      "<Device Name='5CGXC5' CodeName='5CGXC5'><Package Type='FBGA484' PON='CYCLONE_V_5CGXFC5CF23'/></Device>"
      "<Device Name='T8' CodeName='T8' Vendor='A/B'/></Family></DeviceDatabase>",
      "sample.xml");
  return *loaded.database;
}

void CheckMark(const plddb::find::Match& match) {
  Check(match.mark.has_value() == (match.kind == plddb::find::Kind::kMark), "a mark is read of marks only");
  if (!match.mark) return;
  Check(!match.mark->name.empty(), "a mark begins with a name");
  for (const std::string& part : match.mark->unknown) Check(!part.empty(), "what is unknown is not empty");
  Check(!match.mark->isPackageDescribed || !match.mark->package.empty(), "a described package has a type");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const plddb::find::Databases databases = {nullptr, &Sample()};
  const plddb::find::Matches matches = plddb::find::Find(databases, text);
  std::set<const DeviceInfo*> devices;
  for (const plddb::find::Match& match : matches) {
    Check(match.database == 1 && match.device->GetFamilyObject() == Sample().GetFamily(0), "a match is of the database");
    Check(devices.insert(match.device).second, "a device is found once");
    Check(!match.keys.empty() && match.kind == matches.front().kind, "all matches are of one kind and have a key");
    CheckMark(match);
  }
  Check(plddb::find::NearNames(databases, text).size() <= 5, "at most five names are near");
  plddb::find::FindFullName(databases, 46656, text);
  return 0;
}
