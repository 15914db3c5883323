// The rules of the plain accessors, for every row of the field table.

#include <gtest/gtest.h>

#include <memory>

#include "tests/support/device_fields.h"
#include "tests/support/field_rules.h"

namespace {

using support::DeviceFields;

std::unique_ptr<DeviceInfo> FreshDevice() { return std::make_unique<DeviceInfo>(support::SampleFamily(1)); }

TEST(DeviceFields, HaveARowForEachSetter) { support::ExpectARowForEachSetter(DeviceFields(), "DeviceInfo"); }

TEST(DeviceFields, NameTheFieldsThatTheyReferTo) {
  for (const auto& field : DeviceFields()) {
    for (const auto& other : {field.copiedFrom, field.alsoChanges}) {
      if (other.empty()) continue;
      EXPECT_EQ(support::FieldNamed(DeviceFields(), other).name, other) << "field: " << field.name;
    }
  }
}

TEST(DeviceAccessors, AFreshRecordHasNoTextsNoNumbersEmptyListsAndItsFamily) {
  support::ExpectDefaults(DeviceFields(), FreshDevice);
  EXPECT_EQ(FreshDevice()->GetFamilyObject(), &support::SampleFamily(1));
}

TEST(DeviceAccessors, AGetterAnswersWhatWasSetLast) { support::ExpectRoundTrips(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, AFieldHoldsEveryValueOfItsWidth) { support::ExpectFullWidths(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, SettingAFieldChangesNoOther) { support::ExpectIndependence(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, ANullTextKeepsTheOldOne) { support::ExpectNullTextRule(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, AnEmptyTextIsStoredAsOne) { support::ExpectEmptyTextRule(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, TheRecordKeepsACopyOfATextOfAnyLength) { support::ExpectPrivateCopies(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, ATextOfTheRecordIsALegalArgument) { support::ExpectOwnTextsAsArguments(DeviceFields(), FreshDevice); }

TEST(DeviceAccessors, ATextThatCannotBeStoredChangesNothing) {
  support::ExpectFailedSetsChangeNothing(DeviceFields(), FreshDevice);
}

}  // namespace
