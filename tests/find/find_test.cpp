// Finding devices by any text: which keys there are, and in which order they are tried.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sample.h"

namespace {

using namespace plddb::find;

/// Two devices share a number, a name and nothing else.
const char* const kFamilies =
    "<Family Name='First'>"
    "<Device Name='PLD1264A' CodeName='C1' AliasName='OLD1' Comm='JTAG' FuseNumber='5828' jtagDeviceID='0x11111111' "
    "DeviceIDScanMask='0x0FFFFFFF'><Package Type='TQ144' PON='PLD1264A-5TQ144C' JDF='PLD12645.jdf'/></Device>"
    "<Device Name='OTHER' CodeName='C2' AliasName='OLDQ' Vendor='Quorel' Comm='ISP' FuseNumber='5892' "
    "ispDeviceID='0x22222222' DeviceIDScanMask='0xFFFFFFFF'/>"
    "</Family>"
    "<Family Name='Second' AliasName='Zweite'>"
    "<Device Name='PLD1264A' CodeName='C3' Comm='DUAL' FuseNumber='4982712' jtagDeviceID='0x21111111' "
    "DeviceIDScanMask='0x0FFFFFFF'><Package Type='TQ144' PON='PLD1264A-5TQ144C'/><Package Type='BG256'/></Device>"
    "<Device Name='C2' CodeName='C4' Comm='JTAG' FuseNumber='46656'><Package Type='VQ44' PON='C4-VQ44'/></Device>"
    "</Family>";

TEST(Find, AnswersWithAllDevicesThatATextMeans) {
  const DeviceListOwner database = Described(kFamilies);
  const struct {
    const char* text;
    const char* found;
  } rows[] = {
      {"", ""},
      {"  ", ""},
      {"QQQQ", ""},
      {"C1", "exact: C1 (code-name)"},
      {" c1\t", "exact: C1 (code-name)"},
      {"pld1264a", "exact: C1 (name), C3 (name)"},
      {"C2", "exact: C4 (name), C2 (code-name)"},
      {"old1", "exact: C1 (alias)"},
      {"OLDQ", "begins: C2 (alias)"},  // no lookup finds it by its alias name; as a part of its names it is found
      {"PLD1264A-5TQ144C", "exact: C1 (pon), C3 (pon)"},
      {"PLD1264A_5TQ144C", "exact: C1 (entity), C3 (entity)"},
      {"PLD126xx.jdf", "exact: C1 (jdf)"},
      {"pld126xx.jdf", ""},  // the case of letters counts
      {"0x11111111", "exact: C1 (id), C3 (id)"},
      {"31111111", "exact: C1 (id), C3 (id)"},
      {"0x22222222", "exact: C2 (id for ISP)"},
      {"46656", "exact: C4 (fuses)"},
      {"046656", "exact: C4 (fuses)"},
      {"5892", "exact: C1 (fuses), C2 (fuses)"},
      {"4988064", "exact: C3 (fuses)"},
      {"5828", "exact: C1 (fuses)"},
      {"first", "exact: C1 (family), C2 (family)"},
      {"ZWEITE", "exact: C3 (family), C4 (family)"},
      {"tq144", "exact: C1 (package), C3 (package)"},
      {"BG256", "exact: C3 (package)"},
      {"PLD", "begins: C1 (name, pon), C3 (name, pon)"},
      {"TQ", "begins: C1 (package), C3 (package)"},
      {"sec", "begins: C3 (family), C4 (family)"},
      {"1264", "contains: C1 (name, pon), C3 (name, pon)"},
      {"eit", "contains: C3 (family), C4 (family)"},
      {"*",
       "pattern: C1 (name, code-name, alias, pon, family, package), C2 (name, code-name, alias, family), "
       "C3 (name, code-name, pon, family, package), C4 (name, code-name, pon, family, package)"},
      {"PLD*A", "pattern: C1 (name), C3 (name)"},
      {"?th?r", "pattern: C2 (name)"},
      {"*5tq*c", "pattern: C1 (pon), C3 (pon)"},
      {"Z*e", "pattern: C3 (family), C4 (family)"},
      {"PLD?", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Shown(Find({database.get()}, row.text)), row.found) << "row: " << row.text;
  }
}

}  // namespace
