#include "tests/support/random_tree.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"

namespace support {
namespace {

constexpr std::string_view kPrintable =
    "\n\t\r !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~";

class Random {
 public:
  explicit Random(std::uint64_t seed, bool isPrintable = false) : engine_(seed), isPrintable_(isPrintable) {}

  int Below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned int>(limit)); }

  template <class Number>
  Number Any() {
    using Limits = std::numeric_limits<Number>;
    const Number kinds[] = {Limits::min(), Limits::max(), static_cast<Number>(Below(2)), static_cast<Number>(engine_())};
    return kinds[Below(4)];
  }

  /// Not missing, but empty, short, or long, of any byte but 0 and ';', which separates the items of some lists.
  std::string Text() {
    constexpr std::size_t kLengths[] = {0, 1, 7, 40, 1'100};
    std::string text(kLengths[Below(static_cast<int>(std::size(kLengths)))], ' ');
    std::uint64_t bytes = 0;
    for (char& c : text) {
      if (bytes < 256) bytes = engine_();
      c = isPrintable_ ? kPrintable[(bytes & 0xFF) % kPrintable.size()] : static_cast<char>(bytes & 0xFF);
      if (c == '\0' || (c == ';' && !isPrintable_)) c = '-';
      bytes >>= 8;
    }
    return text;
  }

  /// A list of up to three records that `make(record)` fills.
  template <class Record, class Make>
  std::vector<Record> List(Make make) {
    std::vector<Record> list(static_cast<std::size_t>(Count(4)));
    for (Record& record : list) make(record);
    return list;
  }

  /// Below the limit; of printable trees, whose every list is filled, at least 1.
  int Count(int limit) { return isPrintable_ ? 1 + Below(limit - 1) : Below(limit); }

  bool IsPrintable() const { return isPrintable_; }

  std::vector<std::string> Texts() {
    return List<std::string>([this](std::string& text) { text = Text(); });
  }

  std::vector<int> Numbers() {
    return List<int>([this](int& number) { number = Any<int>(); });
  }

 private:
  std::mt19937_64 engine_;
  bool isPrintable_;
};

/// Sets most texts and numbers of a record.
template <class Record>
void FillPlainFields(const std::vector<Field<Record>>& fields, Record& record, Random& random) {
  ForEachFieldOf<TextField<Record>>(fields, [&](const auto&, const auto& text) {
    if (random.Below(4) != 0) (record.*text.set)(random.Text().c_str());
  });
  ForEachNumber(fields, [&](const auto&, const auto& number) {
    using Number = typename std::decay_t<decltype(number)>::Type;
    if (random.Below(4) != 0) (record.*number.set)(random.Any<Number>());
  });
}

void FillPackage(Package& package, Random& random) {
  for (const auto set : {&Package::SetType, &Package::SetPON, &Package::SetJDF, &Package::SetINI, &Package::SetOrvoSetting,
                         &Package::SetBackupPON, &Package::SetAliasPON}) {
    if (random.Below(3) != 0) (package.*set)(random.Text().c_str());
  }
  for (int adapters = random.Count(3); adapters > 0; --adapters) {
    const std::string vendor = random.Text();
    package.AddAdapter(vendor.c_str(), random.Text().c_str());
  }
}

void FillRegisterLists(DeviceInfo& device, Random& random) {
  device.SetlistControlRegZero(random.List<CControlRegZero>([&](CControlRegZero& record) {
    record.Frequency = random.Text();
    record.MasterClock = random.Text();
    record.ClockDivider = random.Text();
  }));
  device.SetlistControlRegOne(random.List<CControlRegOne>([&](CControlRegOne& record) {
    record.BitName = random.Text();
    record.Value = random.Any<int>();
    record.Address = random.Any<int>();
    record.Column = random.Any<int>();
  }));
  device.SetlistPersistent_fuse(random.List<CPersistent_fuse>([&](CPersistent_fuse& record) {
    record.Value = random.Any<int>();
    record.Address = random.Any<int>();
    record.Column = random.Any<int>();
  }));
  device.SetlistControlStatus(random.List<CControlStatus>([&](CControlStatus& record) {
    record.BitName = random.Text();
    record.Control = random.Text();
    record.Text = random.Text();
    record.Index = random.Any<int>();
  }));
}

void FillOtherLists(DeviceInfo& device, Random& random) {
  const auto fillEntry = [&](CControlEBR& entry) {
    entry.BitName = random.Text();
    entry.Value = random.Below(2) != 0;
    entry.Address = random.Any<int>();
    entry.Column = random.Any<int>();
  };
  device.SetlistControlEBR(random.List<CControlEBRList>([&](CControlEBRList& block) {
    block.Name = random.Text();
    block.Entries = random.List<CControlEBR>(fillEntry);
  }));
  device.SetControlVoltage(random.List<CControlVoltage>([&](CControlVoltage& record) {
    record.VCCCore = random.Text();
    record.VCCJ = random.Text();
    record.PinList = random.Text();
  }));
  std::string ranges = ";";
  for (std::string range : random.Texts()) {
    std::replace(range.begin(), range.end(), ';', '-');
    ranges += range + ";";
  }
  if (random.IsPrintable()) ranges.insert(0, "R;A0-A7; ");
  device.SetlistAddressRange(ranges.c_str());
  if (random.IsPrintable() && random.Below(2) != 0) device.SetSysIOList("\"A\" \" \" \"B;C\"");
  for (const std::string& entry : random.Texts()) device.AddSysIOList(entry.c_str());
  device.SetMultibootCfgAddr(random.Numbers());
  device.SetMultibootAutoAdd(random.Numbers());
  device.SetMultibootChipSelColumn(random.Any<int>());
  device.SetMultibootSourceSelColumn(random.Any<int>());
}

void FillDevice(DeviceInfo& device, Random& random) {
  FillPlainFields(DeviceFields(), device, random);
  FillRegisterLists(device, random);
  FillOtherLists(device, random);
  for (int packages = random.Count(3); packages > 0; --packages) {
    FillPackage(*device.GetDevicePackage()->NewPackage(), random);
  }
}

void FillFamily(FamilyList& family, Random& random) {
  FillPlainFields(FamilyFields(), family, random);
  if (random.IsPrintable() && random.Below(2) != 0) family.SetOperationList("\"Erase\", \"  \"");
  for (const std::string& operation : random.Texts()) family.AddOperationList(operation.c_str());
  family.SetListProgrammingModeControl(random.Texts());
  family.SetListBScanControl(random.List<CBScanControl>([&](CBScanControl& record) {
    record.DefaultValue = random.Any<int>();
    record.Controls = random.Texts();
  }));
  for (int devices = random.Count(4); devices > 0; --devices) FillDevice(*family.NewDevice(), random);
}

DeviceListOwner FilledFrom(Random random) {
  DeviceListOwner database = MakeDeviceList();
  if (random.Below(4) != 0) database->SetVersion(random.Text().c_str());
  if (random.Below(4) != 0) database->SetComment(random.Text().c_str());
  for (int families = random.Count(4); families > 0; --families) FillFamily(*database->NewFamily(), random);
  return database;
}

}  // namespace

DeviceListOwner RandomTree(std::uint64_t seed) { return FilledFrom(Random(seed)); }

DeviceListOwner RandomPrintableTree(std::uint64_t seed) { return FilledFrom(Random(seed, true)); }

DeviceListOwner FilledTree(int families) {
  DeviceListOwner database = MakeDeviceList();
  database->SetVersion("version");
  database->SetComment("comment");
  for (int i = 1; i <= families; ++i) SetSamples(FamilyFields(), *database->NewFamily(), i);
  return database;
}

void SettleForCopying(DeviceList& database) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    for (int k = 0; DeviceInfo* const device = family->GetDevice(k); ++k) {
      device->SetBackupARCHLength(device->GetARCHLength());
      device->SetBackupARCHRow(device->GetARCHRow());
      device->SetBackupELength(device->GetELength());
      device->SetBackupERow(device->GetERow());
      device->SetBitstreamColWidth(device->GetBitstreamColWidth());
    }
  }
}

}  // namespace support
