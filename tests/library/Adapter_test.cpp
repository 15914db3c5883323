#include "Adapter.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <type_traits>

#include "tests/support/allocation_counter.h"
#include "tests/support/exported_operations.h"

namespace {

static_assert(std::is_base_of_v<LObject, Adapter>);
static_assert(!std::is_copy_constructible_v<Adapter> && !std::is_copy_assignable_v<Adapter>);
static_assert(!std::is_move_constructible_v<Adapter> && !std::is_move_assignable_v<Adapter>);
static_assert(std::is_constructible_v<Adapter, Adapter*> && !std::is_convertible_v<Adapter*, Adapter>);

struct Field {
  const char* name;
  void (Adapter::*set)(const char*);
  char* (Adapter::*get)() const;
};

constexpr Field kFields[] = {
    {"VendorName", &Adapter::SetVendorName, &Adapter::GetVendorName},
    {"AdapterName", &Adapter::SetAdapterName, &Adapter::GetAdapterName},
};

void Fill(Adapter& adapter) {
  for (const Field& field : kFields) (adapter.*field.set)(field.name);
}

TEST(Adapter, EachSetterHasARowInTheTable) {
  std::set<std::string> named;
  for (const Field& field : kFields) named.insert(std::string("Set") + field.name);
  EXPECT_EQ(named, support::ExportedSetters("Adapter"));
}

TEST(Adapter, EveryTextIsNullUntilSet) {
  const Adapter adapter;
  for (const Field& field : kFields) EXPECT_EQ((adapter.*field.get)(), nullptr) << field.name;
}

TEST(Adapter, EveryTextIsKeptAsAPrivateCopy) {
  for (const Field& field : kFields) {
    Adapter adapter;
    char text[] = "one";
    (adapter.*field.set)(text);
    text[0] = 'X';
    EXPECT_STREQ((adapter.*field.get)(), "one") << field.name;
    (adapter.*field.set)("");
    EXPECT_STREQ((adapter.*field.get)(), "") << field.name;
  }
}

TEST(Adapter, NullKeepsTheOldText) {
  for (const Field& field : kFields) {
    Adapter adapter;
    (adapter.*field.set)(nullptr);
    EXPECT_EQ((adapter.*field.get)(), nullptr) << field.name;
    (adapter.*field.set)("one");
    (adapter.*field.set)(nullptr);
    EXPECT_STREQ((adapter.*field.get)(), "one") << field.name;
  }
}

TEST(Adapter, SettingOneTextLeavesTheOther) {
  Adapter adapter;
  Fill(adapter);
  adapter.SetVendorName("V");
  EXPECT_STREQ(adapter.GetAdapterName(), "AdapterName");
  adapter.SetAdapterName("A");
  EXPECT_STREQ(adapter.GetVendorName(), "V");
}

TEST(Adapter, ItsOwnTextIsALegalArgument) {
  Adapter adapter;
  Fill(adapter);
  adapter.SetVendorName(adapter.GetVendorName());
  adapter.SetAdapterName(adapter.GetVendorName() + 6);
  EXPECT_STREQ(adapter.GetVendorName(), "VendorName");
  EXPECT_STREQ(adapter.GetAdapterName(), "Name");
}

TEST(AdapterCopy, HasBothTextsOfItsOwn) {
  auto source = std::make_unique<Adapter>();
  Fill(*source);
  Adapter copy(source.get());
  source->SetVendorName("changed");
  source.reset();
  for (const Field& field : kFields) EXPECT_STREQ((copy.*field.get)(), field.name) << field.name;
}

TEST(AdapterCopy, NullTextsStayNull) {
  for (const Field& field : kFields) {
    Adapter source;
    (source.*field.set)("set");
    const Adapter copy(&source);
    for (const Field& other : kFields) {
      if (&other == &field) {
        EXPECT_STREQ((copy.*other.get)(), "set") << field.name;
      } else {
        EXPECT_EQ((copy.*other.get)(), nullptr) << field.name;
      }
    }
  }
}

TEST(AdapterCopy, ANullSourceGivesAnEmptyAdapter) {
  const Adapter copy(nullptr);
  for (const Field& field : kFields) EXPECT_EQ((copy.*field.get)(), nullptr) << field.name;
}

TEST(AdapterCopy, AFailedAllocationLeaksNothing) {
  Adapter source;
  Fill(source);
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { const Adapter copy(&source); },
                                                          [&] { EXPECT_EQ(support::LiveAllocations(), live); });
  EXPECT_EQ(failures, 2);
  EXPECT_EQ(support::LiveAllocations(), live);
}

TEST(Adapter, AFailedAllocationKeepsTheOldText) {
  for (const Field& field : kFields) {
    Adapter adapter;
    Fill(adapter);
    const long failures = support::ForEachFailingAllocation([&] { (adapter.*field.set)("new"); },
                                                            [&] { EXPECT_STREQ((adapter.*field.get)(), field.name); });
    EXPECT_EQ(failures, 1) << field.name;
  }
}

TEST(Adapter, FreesItsTextsWhenDeletedThroughTheBase) {
  const long live = support::LiveAllocations();
  auto adapter = std::make_unique<Adapter>();
  Fill(*adapter);
  std::unique_ptr<LObject> object = std::move(adapter);
  object.reset();
  EXPECT_EQ(support::LiveAllocations(), live);
}

}  // namespace
