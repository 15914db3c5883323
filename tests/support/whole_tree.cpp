#include "tests/support/whole_tree.h"

#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"
#include "tests/support/show.h"

namespace support {
namespace {

/// The elements of a list as it is shown: "[a, {b, c}]" gives a and {b, c}. A text that is not a list is one element.
std::vector<std::string> ElementsOf(const std::string& shown) {
  if (shown.front() != '[') return {shown};
  std::vector<std::string> elements;
  int depth = 0;
  bool quoted = false;
  std::size_t start = 1;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const char c = shown[i];
    if (quoted && c == '\\') ++i;
    if (c == '\'') quoted = !quoted;
    if (quoted) continue;
    if (c == '[' || c == '{') ++depth;
    const bool ends = depth == 1 && (c == ',' || c == ']');
    if (ends && i > start) elements.push_back(shown.substr(start, i - start));
    if (ends) start = i + 2;  // after the blank
    if (c == ']' || c == '}') --depth;
  }
  return elements;
}

template <class Record>
void AddFields(const std::vector<Field<Record>>& fields, Record& record, const std::string& place, TreeState& state) {
  for (const auto& field : fields) {
    if (!IsInternal(field)) state[place + field.name] = ElementsOf(Show(field, record));
  }
}

void AddDevice(DeviceInfo& device, const std::string& place, TreeState& state) {
  device.SetListControlEBRName("what was on the scratch list");
  AddFields(DeviceFields(), device, place, state);
  state.erase(place + "FamilyObject");  // another in each tree
  state.erase(place + "Multiboot_fuses");
  state[place + "MultibootCfgAddr"] = ElementsOf(Show(device.GetMultibootCfgAddr()));
  state[place + "MultibootAutoAdd"] = ElementsOf(Show(device.GetMultibootAutoAdd()));
  state[place + "MultibootChipSelColumn"] = {Show(device.GetMultibootChipSelColumn())};
  state[place + "MultibootSourceSelColumn"] = {Show(device.GetMultibootSourceSelColumn())};
}

/// The families of a database, each as one text.
std::vector<std::string> FamiliesOf(DeviceList& database) {
  std::vector<std::string> families;
  for (int i = 0; FamilyList* const family = database.GetFamily(i); ++i) {
    std::string& text = families.emplace_back();
    for (const std::string& shown : ShowAll(FamilyFields(), *family)) text += shown + "\n";
  }
  return families;
}

void AddDatabase(DeviceList& database, const std::string& place, TreeState& state) {
  state[place + "Version"] = {Show(database.GetVersion())};
  state[place + "Comment"] = {Show(database.GetComment())};
  state[place + "families"] = FamiliesOf(database);
}

void Fill(DeviceList& database, int families, int sample) {
  database.SetVersion(("version " + std::to_string(sample)).c_str());
  database.SetComment(("comment " + std::to_string(sample)).c_str());
  for (int i = 0; i < families; ++i) SetSamples(FamilyFields(), *database.NewFamily(), sample + i);  // one device each
}

}  // namespace

WholeTree::WholeTree()
    : family((Fill(*database, 2, 1), *database->GetFamily(0))),
      device(*family.GetDevice(0)),
      packages(*device.GetDevicePackage()),
      package(*packages.GetPackage(0)),
      adapter(*package.GetAdapter(0)) {
  Fill(*other, 1, 3);
  family.SetCDRFixed(true);
  package.SetBackupPON("PLD1234A-5TQ100C, too long for a short string");
  device.SetListControlEBRBitName("2");
  element.SetString("held");
  for (int i = 0; i < 3; ++i) list.AddTail(&element);  // which fills its first block: one more asks for memory
}

WholeTree::~WholeTree() = default;

TreeState StateOf(WholeTree& tree) {
  TreeState state;
  for (int i = 0; FamilyList* const family = tree.database->GetFamily(i); ++i) {
    const std::string place = "family " + std::to_string(i) + " ";
    AddFields(FamilyFields(), *family, place, state);
    state.erase(place + "Devices");  // these follow
    for (int k = 0; DeviceInfo* const device = family->GetDevice(k); ++k) {
      AddDevice(*device, place + "device " + std::to_string(k) + " ", state);
    }
  }
  AddDatabase(*tree.database, "", state);
  AddDatabase(*tree.other, "other ", state);
  state["element"] = {Show(tree.element.GetString())};
  for (int i = 0; i < tree.list.GetCount(); ++i) {
    state["list"].push_back(tree.list.GetAt(i) == nullptr ? "null" : "element");
  }
  return state;
}

}  // namespace support
