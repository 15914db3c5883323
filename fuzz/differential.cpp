// The library against its rules written out literally: each cursor, each way to compare texts, each normal form.
// Input: the text that is asked for, on the first line; the texts of the devices, one a line, where ~ alone is no text.

#include <cstring>

#include "DeviceListOwner.h"
#include "foundation/text_lists.h"
#include "foundation/text_match.h"
#include "fuzz/input.h"
#include "tests/reference/literal_rules.h"
#include "tests/reference/lookup_rules.h"

using namespace plddb::internal;

using fuzz::Check;

namespace {

constexpr std::size_t kMostDevices = 8;
constexpr std::size_t kLongestList = 300;  // the literal cursors take their time
constexpr unsigned int kFuses = 5892;

template <typename Cursor>
std::vector<std::string> Collect(Cursor cursor, const std::string& text) {
  std::vector<std::string> items;
  cursor(text, [&](std::string_view item) { items.emplace_back(item); });
  return items;
}

void CompareCursors(const std::string& text) {
  const auto semicolon = [](const std::string& list, auto visit) { ForEachSemicolonItem(list, visit); };
  const auto quoted = [](const std::string& list, auto visit) { ForEachQuotedItem(list, visit); };
  Check(Collect(semicolon, text) == reference::SemicolonItems(text), "semicolon items are those of the literal rule");
  Check(Collect(quoted, text) == reference::QuotedItems(text), "quoted items are those of the literal rule");
  Check(ParseNumber(text) == reference::ToNumber(text), "a number is that of the literal rule");
  const NumberRange range = ParseRange(text);
  const reference::Range expected = reference::ToRange(text);
  Check(range.first == expected.first && range.last == expected.last, "a range is that of the literal rule");
}

void CompareMultibootNumbers(const std::string& text) {
  FamilyList family;
  DeviceInfo device(family);
  device.SetMultibootCfgAddr(text.c_str());
  device.SetMultibootAutoAdd(text.c_str());
  Check(device.GetMultibootCfgAddr() == reference::MultibootNumbers(text, 1024), "addresses are those of the literal rule");
  Check(device.GetMultibootAutoAdd() == reference::MultibootNumbers(text, 64), "addresses are those of the literal rule");
}

void CompareBlocks(const std::vector<std::string>& lines) {
  const std::string count = fuzz::BoundedCount(lines[0], reference::ToNumber(lines[0]));
  if (reference::ToNumber(count) > 1000 || lines.size() < 3) return;
  FamilyList family;
  DeviceInfo device(family);
  device.SetListControlEBRBitName(count.c_str());
  device.SetListControlEBRColumn(lines[1].c_str());
  device.SetListControlEBRAddress(lines[2].c_str());
  device.SetListControlEBRName("");
  std::vector<reference::EBREntry> expected = reference::FreshEntries(count);
  reference::NumberColumns(expected, lines[1]);
  reference::NumberAddresses(expected, lines[2]);
  const auto& blocks = device.GetlistControlEBR();
  Check(blocks.size() == (expected.empty() ? 0 : 1), "a block has entries");
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const CControlEBR& entry = blocks[0].Entries.at(i);
    Check(entry.BitName == expected[i].BitName && entry.Column == expected[i].Column && entry.Address == expected[i].Address,
          "an entry is that of the literal rule");
  }
}

std::string UpperCased(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return text;
}

std::string LowerCased(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return text;
}

/// Copies of both texts, upper-cased and compared. A null text equals nothing.
bool EqualCopies(const char* a, const char* b) { return a != nullptr && b != nullptr && UpperCased(a) == UpperCased(b); }

std::string WithoutSuffix(std::string number) {
  const auto dash = number.rfind('-');
  if (dash != number.npos && dash > 0) number.erase(dash);
  return number;
}

void CompareTexts(const std::string& a, const std::string& b) {
  const bool equal = EqualCopies(a.c_str(), b.c_str());
  Check(EqualIgnoringCase(a.c_str(), b.c_str()) == equal, "texts are equal when their upper-cased copies are");
  const std::size_t length = std::strlen(b.c_str());
  const bool begins = UpperCased(a.c_str()).compare(0, length, UpperCased(b.c_str())) == 0;
  Check(AfterPrefix(a.c_str(), b.c_str()) == (begins ? a.c_str() + length : nullptr), "a text begins with its prefix");
  Check((LowerCased(a) == LowerCased(b)) == equal, "lower-casing tells the same texts apart");
  std::string upper = a;
  strupr(upper);
  Check(upper == UpperCased(a), "strupr upper-cases the letters");
}

/// A database of one family, whose devices have the same text as their name, code name and ordering numbers.
struct Devices {
  explicit Devices(const std::vector<std::string>& lines) : texts(lines.size()) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
      texts[i] = lines[i] == "~" ? nullptr : lines[i].c_str();
      Add(texts[i]);
    }
  }

  void Add(const char* text) const {
    DeviceInfo* const device = family->NewDevice();
    device->SetName(text);
    device->SetCodeName(text);
    device->SetVendor(text);
    device->SetComm("JTAG");
    device->SetFuseNumber(kFuses);
    device->SetPhysicalUESLength(1);
    Package* const package = device->GetDevicePackage()->NewPackage();
    package->SetType("T");
    package->SetPON(text);
    package->SetBackupPON(text);
    package->SetJDF(text);
  }

  /// The first device whose text satisfies a literal rule.
  template <typename Rule>
  const DeviceInfo* First(Rule rule) const {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (rule(texts[i])) return family->GetDevice(static_cast<int>(i));
    }
    return nullptr;
  }

  DeviceListOwner database = MakeDeviceList();
  FamilyList* family = database->NewFamily();
  std::vector<const char*> texts;
};

bool Fits(const char* text) { return std::strlen(text) < 1024; }

/// The device that a lookup finds which compares the carried-over text. The literal rule knows texts that fit its buffers; one
/// that does not is put to it as a text that is not asked for.
const DeviceInfo* FirstCarriedOver(const Devices& devices, const char* asked) {
  if (!Fits(asked)) return nullptr;
  const char* const other = UpperCased(asked) == "X" ? "y" : "x";
  std::vector<reference::CarriedDevice> rows;
  for (const char* const text : devices.texts) rows.push_back({text == nullptr || Fits(text) ? text : other, "JTAG"});
  return devices.family->GetDevice(reference::FirstByCarriedText(rows, "JTAG", asked));
}

void CompareNameLookups(const Devices& devices, const char* asked) {
  const DeviceInfo* const exact = devices.First([&](const char* text) { return EqualCopies(text, asked); });
  const DeviceInfo* const bounded = Fits(asked) ? exact : nullptr;
  const DeviceInfo* const carried = FirstCarriedOver(devices, asked);
  const DeviceList& database = *devices.database;
  const FamilyList& family = *devices.family;
  Check(database.GetDeviceWithName(asked) == exact, "by name");
  Check(database.GetDeviceWithCodeName(asked) == exact, "by code name");
  Check(family.GetDevice(asked) == bounded, "by name in the family");
  Check(database.GetDeviceWithComm("JTAG", asked) == carried, "by access mode and name");
  Check(database.GetDeviceWithCommAndCodeName("JTAG", asked) == carried, "by access mode and code name");
  Check(database.GetDeviceWithPackage("T", asked) == carried, "by package and name");
  Check(database.GetDeviceWithPackageAndCodeName("T", asked) == carried, "by package and code name");
  Check(family.GetDeviceWithCodeName(asked) == carried, "by code name in the family");
  Check(family.GetDeviceWithCodeNameandVendor(asked, asked) == carried, "by code name and vendor in the family");
  Check(family.GetDeviceWithComm("JTAG", asked) == carried, "by access mode and name in the family");
  Check(family.GetDeviceWithCodeName("JTAG", asked) == carried, "by access mode and code name in the family");
  Check(family.GetDeviceWithPackage("T", asked) == carried, "by package and name in the family");
  Check(family.GetDevice("T", asked) == carried, "by package and code name in the family");
}

void CompareNormalForms(const Devices& devices, const char* asked) {
  const auto hasEntityName = [&](const char* text) {
    return Fits(asked) && (text == nullptr || Fits(text)) && reference::IsEntityName(text, asked);
  };
  const std::string askedName = reference::NormalFullName(asked);
  const auto hasFullName = [&](const char* text) { return text != nullptr && reference::NormalFullName(text) == askedName; };
  const auto hasNumber = [&](const char* text) { return EqualCopies(text, asked); };
  const auto hasStrippedNumber = [&](const char* text) {
    return text != nullptr && EqualCopies(WithoutSuffix(text).c_str(), asked);
  };
  const auto hasJDF = [&](const char* text) {
    return text != nullptr && std::strncmp(text, asked, 6) == 0 && std::strlen(text) == std::strlen(asked);
  };
  const DeviceList& database = *devices.database;
  Check(database.GetDeviceWithEntityName(asked) == devices.First(hasEntityName), "by entity name");
  Check(database.GetDeviceWithEntityNameDisregardUES(asked) == devices.First(hasEntityName), "by entity name alone");
  Check(database.GetDeviceWithFuseMapAndFullName(kFuses, asked) == devices.First(hasFullName), "by full name");
  Check(database.GetDeviceWithPON(asked, false) == devices.First(hasNumber), "by ordering number");
  Check(database.GetDeviceWithPON(asked, true) == devices.First(hasStrippedNumber), "by ordering number without suffix");
  Check(database.GetDeviceWithJDFFileName(asked) == devices.First(hasJDF), "by device file");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::TextOf(data, size);
  std::vector<std::string> lines = fuzz::LinesOf(text, kMostDevices + 1);
  if (text.size() <= kLongestList) CompareCursors(text);
  CompareMultibootNumbers(text);
  CompareBlocks(lines);
  const std::string asked = lines.front();
  lines.erase(lines.begin());
  for (const std::string& line : lines) CompareTexts(asked, line);
  const Devices devices(lines);
  CompareNameLookups(devices, asked.c_str());
  CompareNormalForms(devices, asked.c_str());
  return 0;
}
