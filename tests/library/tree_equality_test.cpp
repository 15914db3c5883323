#include "tests/support/tree_equality.h"

#include <gtest/gtest.h>

#include <string>

#include "DeviceListOwner.h"
#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"

namespace {

using support::DifferenceOf;

bool Names(const std::string& difference, const std::string& place) { return difference.compare(0, place.size(), place) == 0; }

TEST(TreeEquality, SeesADifferenceInEveryFieldOfADevice) {
  for (const auto& field : support::DeviceFields()) {
    if (IsInternal(field) || field.name == "FamilyObject") continue;
    DeviceInfo a(support::SampleFamily(1));
    DeviceInfo b(support::SampleFamily(2));
    EXPECT_EQ(DifferenceOf(a, b), "") << "field: " << field.name;
    SetSample(field, b, 1);
    EXPECT_TRUE(Names(DifferenceOf(a, b), field.name + ": ")) << DifferenceOf(a, b);
    EXPECT_NE(support::Describe(a), support::Describe(b)) << "field: " << field.name;
  }
}

TEST(TreeEquality, SeesADifferenceInEveryFieldOfAFamily) {
  for (const auto& field : support::FamilyFields()) {
    const auto a = support::MakeFamily();
    const auto b = support::MakeFamily();
    EXPECT_EQ(DifferenceOf(*a, *b), "") << "field: " << field.name;
    SetSample(field, *b, 1);
    const std::string place = field.name == "Devices" ? "device 0: " : field.name + ": ";
    EXPECT_TRUE(Names(DifferenceOf(*a, *b), place)) << DifferenceOf(*a, *b);
  }
}

TEST(TreeEquality, TellsAnUnsetTextFromAnEmptyOne) {
  DeviceInfo a(support::SampleFamily(1));
  DeviceInfo b(support::SampleFamily(1));
  b.SetPON("");
  EXPECT_EQ(DifferenceOf(a, b), "PON: null / ''");
  a.SetPON("null");
  EXPECT_EQ(DifferenceOf(a, b), "PON: 'null' / ''");
}

TEST(TreeEquality, SeesADeviceThatIsLinkedToAnotherFamily) {
  const auto a = support::MakeFamily();
  const auto b = support::MakeFamily();
  a->NewDevice();
  b->NewDevice()->SetFamilyObject(*a);
  EXPECT_EQ(DifferenceOf(*a, *b), "device 0: FamilyObject: its own / another");
}

TEST(TreeEquality, SeesADifferenceAnywhereInADatabase) {
  const auto make = [] {
    auto database = MakeDeviceList();
    database->NewFamily()->NewDevice();
    database->NewFamily()->NewDevice();
    database->GetFamily(1)->NewDevice();
    return database;
  };
  const struct {
    const char* place;
    void (*change)(DeviceList&);
  } cases[] = {
      {"Version: null / 'x'", [](DeviceList& database) { database.SetVersion("x"); }},
      {"Comment: null / ''", [](DeviceList& database) { database.SetComment(""); }},
      {"family 0: Hidden: false / true", [](DeviceList& database) { database.GetFamily(0)->SetHidden(true); }},
      {"family 1: device 1: Pin: 0 / 44", [](DeviceList& database) { database.GetFamily(1)->GetDevice(1)->SetPin(44); }},
      {"family 1: device 2: in one family only", [](DeviceList& database) { database.GetFamily(1)->NewDevice(); }},
      {"family 2: in one database only", [](DeviceList& database) { database.NewFamily(); }},
  };
  for (const auto& row : cases) {
    const auto a = make();
    const auto b = make();
    EXPECT_EQ(DifferenceOf(*a, *b), "") << "place: " << row.place;
    row.change(*b);
    EXPECT_EQ(DifferenceOf(*a, *b), row.place);
    EXPECT_NE(DifferenceOf(*b, *a), "") << "place: " << row.place;
  }
}

}  // namespace
