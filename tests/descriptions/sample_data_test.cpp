// The descriptions of real devices in data/ do the library's main job, as the command asks them: file after file, by name.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "parse.h"

namespace {

struct File {
  const char* name;
  int families;
  int devices;
  int packages;
  std::set<std::string> makers;
};

const std::string kNeighbours = "neighbours.xml";

const std::vector<File>& Files() {
  static const std::vector<File> files = {
      {"altera.xml", 42, 327, 313, {"Altera/Intel"}},
      {"anlogic.xml", 4, 4, 0, {"Anlogic"}},
      {"cologne-chip.xml", 1, 1, 0, {"Cologne Chip"}},
      {"efinix.xml", 2, 19, 0, {"Efinix"}},
      {"gowin.xml", 8, 17, 0, {"Gowin"}},
      {"microchip.xml", 11, 45, 5, {"Microchip/Actel", "Microchip/Atmel"}},
      {"neighbours.xml", 24, 375, 0, {}},
      {"xilinx.xml", 35, 284, 1527, {"Xilinx"}},
  };
  return files;
}

struct Database {
  const File* file;
  plddb::LoadResult loaded;
};

/// Never empty; a file that does not load gives a test that fails.
const std::vector<Database>& Databases() {
  static const std::vector<Database> databases = [] {
    std::vector<Database> all;
    for (const File& file : Files()) {
      all.push_back({&file, plddb::LoadDescriptions(std::string(PLDDB_DATA_DIR) + "/" + file.name)});
    }
    return all;
  }();
  return databases;
}

/// A device, and what it is a part of.
struct Described {
  DeviceInfo* device;
  FamilyList* family;
  const Database* database;
  bool IsNeighbour() const { return database->file->name == kNeighbours; }
  unsigned int Id() const { return device->GetjtagDeviceID(); }
  unsigned int Mask() const { return device->GetDeviceIDScanMask(); }
  std::string Row() const { return std::string(database->file->name) + ": " + device->GetName(); }
};

/// All devices, in the order of the lookups.
const std::vector<Described>& Devices() {
  static const std::vector<Described> devices = [] {
    std::vector<Described> all;
    for (const Database& database : Databases()) {
      if (database.loaded.database == nullptr) continue;
      for (int f = 0; FamilyList* family = database.loaded.database->GetFamily(f); ++f) {
        for (int d = 0; DeviceInfo* device = family->GetDevice(d); ++d) all.push_back({device, family, &database});
      }
    }
    return all;
  }();
  return devices;
}

template <typename Visit>
void ForEachPackage(const DeviceInfo& device, Visit visit) {
  for (unsigned short p = 0; Package* package = device.GetDevicePackage()->GetPackage(p); ++p) visit(*package);
}

/// The first answer of `lookup`, in the order of the files.
template <typename Lookup>
const DeviceInfo* FirstOf(Lookup lookup) {
  for (const Database& database : Databases()) {
    if (database.loaded.database == nullptr) continue;
    if (const DeviceInfo* const found = lookup(*database.loaded.database)) return found;
  }
  return nullptr;
}

const DeviceInfo* FindId(unsigned int id) {
  return FirstOf([id](const DeviceList& database) { return database.GetDeviceWithCommAndID("JTAG", id); });
}

std::string NameOf(const DeviceInfo* device) { return device == nullptr ? "none" : device->GetName(); }

bool HasJtag(const DeviceInfo& device) { return device.GetjtagDeviceID() != 0; }

/// Whether `mask` counts all bits of `other`, and more.
bool IsMoreExact(unsigned int mask, unsigned int other) { return mask != other && (mask & other) == other; }

}  // namespace

TEST(SampleData, LoadsWithoutFaultAndHoldsAllRows) {
  for (const Database& database : Databases()) {
    const File& file = *database.file;
    for (const plddb::Fault& fault : database.loaded.faults) ADD_FAILURE() << plddb::ToString(fault);
    if (database.loaded.database == nullptr) continue;
    EXPECT_EQ(database.loaded.database->GetFamilyCount(), file.families) << "row: " << file.name;
    EXPECT_EQ(database.loaded.database->GetDeviceCount(), file.devices) << "row: " << file.name;
    int packages = 0;
    for (const Described& row : Devices()) {
      if (row.database == &database) ForEachPackage(*row.device, [&](Package&) { ++packages; });
    }
    EXPECT_EQ(packages, file.packages) << "row: " << file.name;
  }
}

TEST(SampleData, EveryDeviceIsFoundByItsIdcodeWhateverTheBitsOutsideItsMask) {
  std::set<std::string> shadowedInPart;
  for (const Described& row : Devices()) {
    if (!HasJtag(*row.device)) continue;
    const unsigned int free = ~row.Mask();
    unsigned int bits = 0;
    do {  // all subsets of the free bits
      const DeviceInfo* const found = FindId(row.Id() | bits);
      ASSERT_NE(found, nullptr) << "row: " << row.Row();
      const bool sharesAll = found->GetDeviceIDScanMask() == row.Mask() && found->GetjtagDeviceID() == row.Id();
      if (found != row.device && !sharesAll) {
        EXPECT_TRUE(IsMoreExact(found->GetDeviceIDScanMask(), row.Mask()))
            << "row: " << row.Row() << ", found " << NameOf(found);
        shadowedInPart.insert(NameOf(row.device) + " by " + NameOf(found));
      }
      bits = (bits - free) & free;
    } while (bits != 0);
  }
  const std::set<std::string> expected = {
      "ARM JTAG-DP (ADIv5), any revision by ARM JTAG-DP (ADIv5) revision 1",
      "ARM JTAG-DP (ADIv5), any revision by ARM JTAG-DP (ADIv5) revision 3",
      "ARM JTAG-DP (ADIv5), any revision by ARM JTAG-DP (ADIv5) revision 4",
      "ARM JTAG-DP (ADIv5), any revision by ARM JTAG-DP (ADIv5) revision 5",
      "ARM JTAG-DP (ADIv5), any revision by ARM JTAG-DP (ADIv5.2) revision 6",
      "XCR3064XL by XCKU9P",
  };
  EXPECT_EQ(shadowedInPart, expected);
}

TEST(SampleData, ANeighbourNeverComesBeforeLogicThatMatchesAsExactly) {
  int pairs = 0;
  for (const Described& logic : Devices()) {
    if (logic.IsNeighbour() || !HasJtag(*logic.device)) continue;
    for (const Described& neighbour : Devices()) {
      const bool share = ((logic.Id() ^ neighbour.Id()) & logic.Mask() & neighbour.Mask()) == 0;
      if (!neighbour.IsNeighbour() || !share || IsMoreExact(neighbour.Mask(), logic.Mask())) continue;
      ++pairs;
      EXPECT_NE(FindId(logic.Id() | neighbour.Id()), neighbour.device) << "row: " << logic.Row() << ", " << neighbour.Row();
    }
  }
  EXPECT_EQ(pairs, 4);  // CCGM1A1, T4, T8, MPFS025
}

TEST(SampleData, DevicesThatShareAnIdcodeAreAllThere) {
  const std::vector<std::pair<unsigned int, std::vector<std::string>>> rows = {
      {0x020F10DD, {"10CL006", "10CL010", "EP3C10", "EP3C5", "EP4CE10", "EP4CE6"}},
      {0x020F30DD, {"10CL025", "EP3C25", "EP4CE22"}},
      {0x170640DD, {"EPM3064A", "EPM7064AE"}},
      {0x00000001, {"T4", "T8"}},
      {0x2D0210DD, {}},
      {0x6484A093, {"XCKU9P", "XCR3064XL"}},
  };
  for (const auto& [id, names] : rows) {
    std::vector<std::string> found;
    for (const Database& database : Databases()) {
      if (database.loaded.database == nullptr || database.file->name == kNeighbours) continue;
      std::vector<std::string> more;
      database.loaded.database->GetDeviceListWithCommAndID("JTAG", id, more);
      found.insert(found.end(), more.begin(), more.end());
    }
    EXPECT_EQ(found, names) << "row: 0x" << std::hex << id;
  }
}

TEST(SampleData, WhereTheVersionTellsFamiliesApartItCounts) {
  const std::pair<unsigned int, const char*> rows[] = {
      {0x071280DD, "EPM7128A"},
      {0x171280DD, "EPM3128A"},
      {0x271280DD, "EPM7128B"},
      {0x371280DD, "none"},
      {0x010500DD, "EPF10K50"},
      {0x110500DD, "EP1K50"},
      {0x20000001, "CCGM1A1"},
      {0x30000001, "none"},
      {0x4BA00477, "ARM JTAG-DP (ADIv5) revision 4"},
      {0x2BA00477, "ARM JTAG-DP (ADIv5), any revision"},
  };
  for (const auto& [id, name] : rows) EXPECT_EQ(NameOf(FindId(id)), name) << "row: 0x" << std::hex << id;
}

TEST(SampleData, EveryPackageIsFoundByOrderingNameAndEntityName) {
  for (const Described& row : Devices()) {
    ForEachPackage(*row.device, [&](const Package& package) {
      ASSERT_NE(package.GetPON(), nullptr) << "row: " << row.Row();
      const auto byPon = [&](const DeviceList& all) { return all.GetDeviceWithPON(package.GetPON(), false); };
      EXPECT_EQ(FirstOf(byPon), row.device) << "row: " << row.Row() << " " << package.GetPON();
      const std::string entity = package.GetEntityName();
      const auto byEntity = [&](const DeviceList& all) { return all.GetDeviceWithEntityNameDisregardUES(entity.c_str()); };
      EXPECT_EQ(FirstOf(byEntity), row.device) << "row: " << row.Row() << " " << entity;
    });
  }
}

TEST(SampleData, EntityNamesOfTheMakersFindTheirDevices) {
  const std::pair<const char*, const char*> rows[] = {
      {"xc9572xl_vq44", "XC9572XL"},
      {"XC9572XL_VQ44", "XC9572XL"},
      {"xc2c64a_cp56", "XC2C64A"},
      {"xc3s50_tq144", "XC3S50"},
      {"xc7a35t_cpg236", "XC7A35T"},
      {"xc7z020_clg484", "XC7Z020"},
      {"xczu28dr_fsve1156", "XCZU28DR"},
      {"EP1C12F256", "EP1C12"},
      {"ep1k50f256", "EP1K50"},
      {"CYCLONE_10_LP_10CL010M164", "10CL010"},
      {"CYCLONE_V_5CGTFD9DF27", "5CGTD9"},
      {"MAX_10_10M08SCU169", "10M08S"},
      {"MPF100Tfcg484", "MPF100"},
      {"xc9572xl", "none"},
      {"xc9572xl_vq45", "none"},
      {"", "none"},
  };
  for (const auto& [entity, name] : rows) {
    const char* const text = entity;
    const auto byEntity = [text](const DeviceList& all) { return all.GetDeviceWithEntityNameDisregardUES(text); };
    EXPECT_EQ(NameOf(FirstOf(byEntity)), name) << "row: " << entity;
  }
}

TEST(SampleData, FuseCountsFindAllDevicesThatHaveThem) {
  using Names = std::vector<std::string>;
  const std::pair<unsigned long, Names> rows[] = {
      {46656, {"XC9572XL", "XC9572XV"}},
      {186624, {"XC95216", "XC95288XL", "XC95288XV"}},
      {25812, {"XC2C64A"}},
      {25808, {"XC2C64"}},
      {16808, {"ATF1502AS", "ATF1502ASV"}},
      {2194, {"ATF16V8"}},
      {5828, {"ATF22V10C"}},
      {5892, {"ATF22V10C"}},  // with a signature: the library knows the pair
      {5893, {}},
      {1, {}},
  };
  for (const auto& [count, names] : rows) {
    Names found;
    for (const Database& database : Databases()) {
      if (database.loaded.database == nullptr) continue;
      Names more;
      database.loaded.database->GetDeviceCodeNameWithFuseMap(count, more);
      found.insert(found.end(), more.begin(), more.end());
    }
    EXPECT_EQ(found, names) << "row: " << count;
  }
  int known = 0;
  for (const Described& row : Devices()) known += row.device->GetFuseNumber() != 0 ? 1 : 0;
  EXPECT_EQ(known, 37);
}

TEST(SampleData, EveryDeviceHasWhatItsReadmePromises) {
  for (const Described& row : Devices()) {
    const DeviceInfo& device = *row.device;
    EXPECT_STREQ(device.GetCodeName(), device.GetName()) << "row: " << row.Row();
    EXPECT_STREQ(device.GetFamily(), row.family->GetName()) << "row: " << row.Row();
    if (!row.IsNeighbour()) {
      EXPECT_EQ(row.database->file->makers.count(device.GetVendor()), 1U) << "row: " << row.Row() << ", " << device.GetVendor();
    }
    EXPECT_EQ(IsHidenFamily(row.family), row.IsNeighbour()) << "row: " << row.Row();
    if (!HasJtag(device)) continue;
    EXPECT_STREQ(device.GetComm(), "JTAG") << "row: " << row.Row();
    EXPECT_EQ(device.GetIDLength(), 32) << "row: " << row.Row();
    EXPECT_EQ(device.GetBypassLength(), 1) << "row: " << row.Row();
    EXPECT_EQ(row.Id() & 1, 1U) << "row: " << row.Row();
    EXPECT_EQ(row.Id() & ~row.Mask(), 0U) << "row: " << row.Row();
    EXPECT_EQ(device.GetDeviceIDMask(), row.Mask()) << "row: " << row.Row();
  }
}

TEST(SampleData, TheIrLengthIsUnknownOfFourNeighboursAndOfNoLogicWithJtag) {
  std::set<std::string> unknown;
  for (const Described& row : Devices()) {
    if (row.device->GetIRLength() == 0) unknown.insert(row.device->GetName());
  }
  const std::set<std::string> expected = {
      "BCM63146 chip TAP", "BCM63146 second TAP", "IPQ40xx Qualcomm TAP", "IPQ40xx second TAP", "ATF16V8", "ATF20V8",
      "ATF22V10C"};
  EXPECT_EQ(unknown, expected);
}

TEST(SampleData, NamesAreUnique) {
  for (const Described& row : Devices()) {
    const char* const name = row.device->GetName();
    EXPECT_EQ(FirstOf([&](const DeviceList& all) { return all.GetDeviceWithName(name); }), row.device) << "row: " << row.Row();
    EXPECT_EQ(FirstOf([&](const DeviceList& all) { return all.GetDeviceWithCodeName(name); }), row.device)
        << "row: " << row.Row();
  }
}

TEST(SampleData, NeighboursSayWhatToExpectInAChain) {
  const std::pair<unsigned int, const char*> rows[] = {
      {0x2B94402F, "more TAPs appear when the router enables them"},
      {0x06413041, "beside an Arm debug port, which is nearer TDO"},
  };
  for (const auto& [id, hint] : rows) {
    const DeviceInfo* const found = FindId(id);
    ASSERT_NE(found, nullptr) << "row: " << hint;
    EXPECT_STREQ(found->GetAccess(), hint) << "row: " << found->GetName();
  }
}
