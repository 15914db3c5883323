// Lookups by fuse count, full name and entity name.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "DeviceList.h"
#include "tests/reference/lookup_rules.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/sample_tree.h"
#include "tests/support/show.h"

namespace {

using support::SampleDevice;
using support::SampleTree;
using support::Show;
using Texts = std::vector<std::string>;

constexpr const char* kNull = nullptr;

/// Calls `ask(count)` if `count` can be asked for: a long has 32 bits on some systems.
template <typename Ask>
void AskIfLong(unsigned long long count, Ask ask) {
  const auto asked = static_cast<unsigned long>(count);
  if (asked == count) ask(asked);
}

/// Seeded random texts of up to eight letters from an alphabet of eight, so that two of them often agree in part.
class SmallTexts {
 public:
  SmallTexts(const char* alphabet, unsigned int seed) : alphabet_(alphabet), engine_(seed) {}

  unsigned int Below(unsigned int limit) { return Draw() % limit; }

  std::string Next() {
    const unsigned int draw = Draw();
    std::string text(draw >> 24 & 7, ' ');
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = alphabet_[draw >> (3 * i) & 7];
    return text;
  }

  /// The text, mostly with a letter inserted, replaced or taken out.
  std::string Like(const std::string& text) {
    const unsigned int draw = Draw();
    std::string like = text;
    const std::size_t at = (draw & 0xFF) % (text.size() + 1);
    like.replace(at, draw >> 8 & 1, draw >> 9 & 1, alphabet_[draw >> 10 & 7]);
    return like;
  }

 private:
  unsigned int Draw() { return engine_() & 0xFFFFFFFF; }

  const char* alphabet_;
  std::mt19937 engine_;
};

// Whether an ISP device has a count

TEST(GetDeviceCommISPWithFuseMap, TellsWhetherAnISPDeviceHasExactlyThisCount) {
  const SampleTree tree;
  EXPECT_EQ(tree->GetDeviceCommISPWithFuseMap(0), 0);
  tree.AddDevice().Fuses(100).Comm("JTAG");
  tree.AddDevice().Fuses(200).Comm("ISP");
  tree.AddDevice().Fuses(300).Comm("DUAL");
  tree.AddDevice().Fuses(400);
  tree.AddDevice().Fuses(500).Comm("isp");
  tree.AddFamily().SetHidden(true);
  tree.AddDevice().Fuses(100).Comm("ISP");
  tree.AddDevice().Fuses(5828).Comm("ISP");
  tree.AddDevice().Fuses(4982712).Comm("ISP");
  tree.AddDevice().Fuses(0xFFFFFFFF).Comm("ISP");
  const struct {
    unsigned long long count;
    int answer;
  } cases[] = {
      {100, 1},
      {200, 1},
      {300, 0},
      {400, 0},
      {500, 0},
      {0, 0},
      {5828, 1},
      {5892, 0},
      {4982712, 1},
      {4988064, 0},
      {0xFFFFFFFF, 1},
      {0x1000000C8, 0},
      {0xFFFFFFFFFFFFFFFF, 0},
  };
  for (const auto& row : cases) {
    AskIfLong(row.count, [&](unsigned long count) {
      EXPECT_EQ(tree->GetDeviceCommISPWithFuseMap(count), row.answer) << "count: " << count;
    });
  }
}

// By entity name

using EntityLookup = DeviceInfo* (DeviceList::*)(const char*) const;
constexpr EntityLookup kEntityLookups[] = {&DeviceList::GetDeviceWithEntityName,
                                           &DeviceList::GetDeviceWithEntityNameDisregardUES};

TEST(EntityNameLookups, MapTheBackupNumberOfAPackage) {
  const std::string longest(1'023, 'x');
  const std::string longestUpper(1'023, 'X');
  const std::string tooLong(1'024, 'x');
  const std::string spaced = longest + " ";  // too long before its space is dropped
  const struct {
    const char* stored;
    const char* entityName;
    bool found;
  } cases[] = {
      {"ABC-123", "abc_123", true},
      {"ABC/123", "abc_123", true},
      {"abc_123", "ABC_123", true},
      {"ABC 123", "abc_123", false},  // a space is dropped, not written as _
      {"ABC 123", "abc123", true},
      {" A B C ", "ABC", true},
      {"A--B//C", "a__b__c", true},
      {"-", "_", true},
      {"ABC-123", "ABC-123", false},  // the argument is not mapped
      {"ABC/123", "ABC/123", false},
      {"ABC123", "ABC 123", false},
      {"A(B)", "a(b)", true},  // unlike Package::GetEntityName
      {"A(B)", "a_b_", false},
      {"A\tB", "a\tb", true},
      {"A\tB", "ab", false},
      {"ABC", "AB", false},
      {"AB", "ABC", false},
      {"\xE9", "\xC9", false},
      {kNull, "", true},  // no backup number: the empty entity name
      {"", "", true},
      {"   ", "", true},
      {kNull, "A", false},
      {"A", "", false},
      {kNull, kNull, false},
      {"", kNull, false},
      {longest.c_str(), longestUpper.c_str(), true},
      {tooLong.c_str(), tooLong.c_str(), false},
      {tooLong.c_str(), longest.c_str(), false},
      {longest.c_str(), tooLong.c_str(), false},
      {spaced.c_str(), longest.c_str(), false},
  };
  for (const EntityLookup& find : kEntityLookups) {
    for (const auto& row : cases) {
    AskIfLong(row.asked, [&](unsigned long asked) {
        const SampleTree tree;
        DeviceInfo* const device = tree.AddDevice().UES(1).BackupPON(row.stored);
        EXPECT_EQ(((*tree).*find)(row.entityName), row.found ? device : nullptr)
            << "stored: " << Show(row.stored) << ", entity name: " << Show(row.entityName);
      }
    });
  }
}

TEST(EntityNameLookups, AgreeWithTheLiteralRuleOnRandomTexts) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().UES(1).BackupPON("");
  Package* const package = device->GetDevicePackage()->GetPackage(0);
  SmallTexts random(" -/_aA(\t", 531);
  int found = 0;
  for (int i = 0; i < 300'000; ++i) {
    const std::string stored = random.Next();
    std::string asked = random.Like(stored);
    for (char& c : asked) {
      if (random.Below(2) == 0 && (c == '-' || c == '/')) c = '_';
    }
    package->SetBackupPON(stored.c_str());
    const bool expected = reference::IsEntityName(stored.c_str(), asked.c_str());
    ASSERT_EQ(tree->GetDeviceWithEntityName(asked.c_str()) == device, expected)
        << "stored: " << Show(stored) << ", entity name: " << Show(asked);
    if (expected) ++found;
  }
  EXPECT_GT(found, 30'000);
  EXPECT_LT(found, 270'000);
}

TEST(EntityNameLookups, DifferInTheLengthOfTheUES) {
  const SampleTree tree;
  tree.AddDevice().UES(0).BackupPON("A");
  tree.AddDevice().UES(8).BackupPON("B");
  tree.AddFamily();
  tree.AddDevice().UES(0xFFFFFFFF).BackupPON("A");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithEntityName("a")), "1.0");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithEntityNameDisregardUES("a")), "0.0");
}

TEST(EntityNameLookups, TakeAnyPackageOfTheFirstDevice) {
  const SampleTree tree;
  tree.AddDevice().UES(8);
  tree.AddDevice().UES(8).BackupPON("X").BackupPON("A-1");
  tree.AddDevice().UES(8).BackupPON("A/1").PackagePON("A").AliasPON("Z");
  for (const EntityLookup& find : kEntityLookups) {
    EXPECT_EQ(tree.PlaceOf(((*tree).*find)("a_1")), "0.1");
    EXPECT_EQ(tree.PlaceOf(((*tree).*find)("")), "0.2") << "a device without packages has no entity name";
    EXPECT_EQ(tree.PlaceOf(((*tree).*find)("a")), "none") << "the primary number is not read";
    EXPECT_EQ(tree.PlaceOf(((*tree).*find)("z")), "none") << "nor is the alias number";
  }
}

TEST(EntityNameLookups, HaveARuleOfTheirOwn) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().UES(8).BackupPON("AB-12 (C)/D");
  const std::string other = device->GetDevicePackage()->GetPackage(0)->GetEntityName();
  EXPECT_EQ(other, "AB_12 _C__D");
  EXPECT_EQ(tree->GetDeviceWithEntityName(other.c_str()), nullptr);
  EXPECT_EQ(tree->GetDeviceWithEntityName("AB_12(C)_D"), device);
}

// By fuse count and full name

struct FullNameCase {
  const char* stored;
  const char* fullName;
  bool found;
};

const std::vector<FullNameCase>& FullNameCases() {
  static const std::vector<FullNameCase> cases = {
      {"ABC", "abc", true},
      {"ab c-7x/1", "ABC/1", true},
      {"ab c-7x/1", "abc", false},
      {"abc-7x", "ABC", true},
      {"abc-7x", "ABC-8Y", true},     // both are cut
      {"abc-7x", "A B C - 9", true},  // spaces anywhere
      {"abc", "abc-7x", true},
      {"a-b-c", "a-b", false},  // cut at the last "-"; the other side is cut as well
      {"a-b-c", "a-b-d", true},
      {"a-b-c", "a", false},
      {"a-b", "a", true},
      {"-abc", "-ABC", true},  // one in front is no place to cut
      {"-abc", "", false},
      {"-abc", "-", false},
      {"  -abc", "-abc", true},  // in front once the spaces are gone
      {"--abc", "-", true},
      {"-", "-", true},
      {"-", "", false},
      {"a-", "a", true},
      {"abc/1", "ABC/1", true},  // nothing cut, nothing appended
      {"abc/1", "abc", false},
      {"abc-7/1", "abc/1-9", true},  // ABC/1 both
      {"abc-7/1", "abc/1", true},
      {"abc/1-9", "abc", false},
      {"abc/1-9", "abc/1", true},
      {"abc-7/1", "abc-8/1", true},
      {"abc-7/ 1", "abc/1", true},  // spaces go before the end is looked at
      {"abc-7/1 ", "abc/1", true},
      {"abc-7/\t1", "abc/1", false},
      {"abc-7/11", "abc", true},
      {"abc-7/1/1", "abc/1", true},
      {"abc-/1", "abc/1", true},
      {"abc/1-", "abc/1", true},
      {"-/1", "-/1", true},
      {"a/1-/1", "a/1/1", true},
      {"abc\t", "abc", false},  // tabs stay
      {"a\tbc-7", "A\tBC", true},
      {"abc\t-7", "abc", false},
      {"abc_7", "abc-7", false},
      {"", "", true},
      {"   ", "", true},
      {"", " ", true},
      {"", "A", false},
      {"A", "", false},
      {"\xE9", "\xC9", false},
      {kNull, "", false},
      {kNull, kNull, false},
      {"", kNull, false},
      {"A", kNull, false},
  };
  return cases;
}

TEST(GetDeviceWithFuseMapAndFullName, ComparesNormalisedTexts) {
  for (const FullNameCase& row : FullNameCases()) {
    const SampleTree byCodeName;
    DeviceInfo* const named = byCodeName.AddDevice().Fuses(100).Comm("JTAG").CodeName(row.stored);
    EXPECT_EQ(byCodeName->GetDeviceWithFuseMapAndFullName(100, row.fullName), row.found ? named : nullptr)
        << "code name: " << Show(row.stored) << ", full name: " << Show(row.fullName);
    const SampleTree byNumber;
    DeviceInfo* const numbered = byNumber.AddDevice().Fuses(100).Comm("JTAG").PackagePON(row.stored);
    EXPECT_EQ(byNumber->GetDeviceWithFuseMapAndFullName(100, row.fullName), row.found ? numbered : nullptr)
        << "ordering number: " << Show(row.stored) << ", full name: " << Show(row.fullName);
  }
}

TEST(GetDeviceWithFuseMapAndFullName, AgreesWithTheLiteralRuleOnRandomTexts) {
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().Fuses(100).Comm("DUAL");
  SmallTexts random("-/1aAb \t", 530);
  int found = 0;
  for (int i = 0; i < 100'000; ++i) {
    const std::string stored = random.Next();
    const std::string normal = reference::NormalFullName(stored);
    device->SetCodeName(stored.c_str());
    for (int k = 0; k < 10; ++k) {
      const std::string fullName = random.Like(stored);
      const bool expected = reference::NormalFullName(fullName) == normal;
      ASSERT_EQ(tree->GetDeviceWithFuseMapAndFullName(100, fullName.c_str()) == device, expected)
          << "stored: " << Show(stored) << ", full name: " << Show(fullName);
      if (expected) ++found;
    }
  }
  EXPECT_GT(found, 200'000);
  EXPECT_LT(found, 800'000);
}

TEST(GetDeviceWithFuseMapAndFullName, ComparesTextsOfAnyLength) {
  const std::string stored = std::string(3'000, 'x') + " - 7 / 1";
  const std::string fullName = std::string(3'000, 'X') + "/1";
  const std::string other = std::string(2'999, 'X') + "/1";
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().Fuses(100).Comm("JTAG").CodeName(stored.c_str());
  EXPECT_EQ(tree->GetDeviceWithFuseMapAndFullName(100, fullName.c_str()), device);
  EXPECT_EQ(tree->GetDeviceWithFuseMapAndFullName(100, other.c_str()), nullptr);
}

TEST(GetDeviceWithFuseMapAndFullName, TakesDualAndJtagDevicesOfTheCountAndAnyOfItsAlias) {
  const struct {
    unsigned int stored;
    const char* comm;
    unsigned long long asked;
    bool found;
  } cases[] = {
      {100, "JTAG", 100, true},
      {100, "DUAL", 100, true},
      {100, "ISP", 100, false},
      {100, "jtag", 100, false},
      {100, "Dual", 100, false},
      {100, "JTAG ", 100, false},
      {100, "", 100, false},
      {100, kNull, 100, false},
      {100, "JTAG", 101, false},
      {0, "JTAG", 0, true},
      {0xFFFFFFFF, "JTAG", 0xFFFFFFFF, true},
      {0xFFFFFFFF, "JTAG", 0xFFFFFFFFFFFFFFFF, false},  // widened without a sign
      {100, "JTAG", 0x100000064, false},                // all bits count
      {5828, "JTAG", 5892, true},
      {5828, "ISP", 5892, true},  // an alias takes any access mode
      {5828, "other", 5892, true},
      {5828, kNull, 5892, true},
      {5892, "JTAG", 5892, true},
      {5892, "ISP", 5892, false},  // an alias applies to other counts only
      {5828, "JTAG", 5828, true},
      {5828, "ISP", 5828, false},
      {5892, "JTAG", 5828, false},  // and one way only
      {5828, "JTAG", 0x100001704, false},
      {4982712, "JTAG", 4988064, false},  // this lookup does not know the other alias
      {4982712, "JTAG", 4982712, true},
      {4988064, "JTAG", 4988064, true},
  };
  for (const auto& row : cases) {
    const SampleTree byCodeName;
    DeviceInfo* const named = byCodeName.AddDevice().Fuses(row.stored).Comm(row.comm).CodeName("A");
    EXPECT_EQ(byCodeName->GetDeviceWithFuseMapAndFullName(row.asked, "a"), row.found ? named : nullptr)
        << row.stored << ' ' << Show(row.comm) << ", asked: " << row.asked;
    const SampleTree byNumber;
    DeviceInfo* const numbered = byNumber.AddDevice().Fuses(row.stored).Comm(row.comm).PackagePON("A");
    EXPECT_EQ(byNumber->GetDeviceWithFuseMapAndFullName(row.asked, "a"), row.found ? numbered : nullptr)
        << row.stored << ' ' << Show(row.comm) << ", asked: " << row.asked;
  }
}

TEST(GetDeviceWithFuseMapAndFullName, TakesTheFirstDeviceByCodeNameOrAnyPrimaryNumber) {
  const SampleTree tree;
  tree.AddDevice().Fuses(100).Comm("JTAG").Name("A").AliasName("A").BackupPON("A").AliasPON("A");
  tree.AddDevice().Fuses(100).Comm("JTAG").CodeName("B").PackagePON(kNull).PackagePON("X").PackagePON("A-2");
  tree.AddFamily();
  tree.AddDevice().Fuses(100).Comm("JTAG").CodeName("A");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithFuseMapAndFullName(100, "A-1")), "0.1");
  EXPECT_EQ(tree.PlaceOf(tree->GetDeviceWithFuseMapAndFullName(100, "B")), "0.1");
}

TEST(GetDeviceWithFuseMapAndFullName, AnISPDeviceOfTheCountIsOnlyTold) {
  const SampleTree tree;
  tree.AddDevice().Fuses(100).Comm("ISP").CodeName("A").PackagePON("A");
  EXPECT_EQ(tree->GetDeviceWithFuseMapAndFullName(100, "A"), nullptr);
  EXPECT_EQ(tree->GetDeviceCommISPWithFuseMap(100), 1);
}

// By fuse count and full name, in two passes

TEST(GetDeviceWithFuseMapAndFullNameEx, PrefersAJtagDeviceOfExactlyThisCodeName) {
  struct Device {
    unsigned int fuses;
    const char* comm;
    const char* codeName;
    const char* pon = nullptr;
  };
  const struct {
    const char* what;
    std::vector<std::vector<Device>> families;
    unsigned long asked;
    const char* fullName;
    const char* place;
  } cases[] = {
      {"ignoring case", {{{100, "JTAG", "Abc-7x"}}}, 100, "aBC-7X", "0.0"},
      {"a later exact name beats an earlier normalised one",
       {{{100, "JTAG", "ABC"}}, {{100, "JTAG", "abc-7x"}}},
       100,
       "ABC-7x",
       "1.0"},
      {"the first of the exact names", {{{100, "JTAG", "abc"}, {100, "JTAG", "ABC"}}}, 100, "Abc", "0.0"},
      {"DUAL devices wait for the second pass", {{{100, "DUAL", "abc"}, {100, "JTAG", "abc"}}}, 100, "abc", "0.1"},
      {"... and are found there", {{{100, "DUAL", "abc"}}}, 100, "abc", "0.0"},
      {"spaces count in the first pass", {{{100, "JTAG", "a bc"}, {100, "JTAG", "abc"}}}, 100, "abc", "0.1"},
      {"... and not in the second", {{{100, "JTAG", "a bc"}}}, 100, "abc", "0.0"},
      {"numbers are not compared in the first pass", {{{100, "JTAG", "x", "abc"}, {100, "JTAG", "abc"}}}, 100, "abc", "0.1"},
      {"... but in the second", {{{100, "JTAG", "x", "abc"}}}, 100, "abc", "0.0"},
      {"another count", {{{101, "JTAG", "abc"}}}, 100, "abc", "none"},
      {"ISP devices are never found", {{{100, "ISP", "abc"}}}, 100, "abc", "none"},
      {"the first pass knows no alias", {{{5828, "JTAG", "abc"}, {5892, "JTAG", "abc"}}}, 5892, "abc", "0.1"},
      {"... the second does", {{{5828, "ISP", "abc"}}}, 5892, "abc-1", "0.0"},
      {"neither knows the other alias", {{{4982712, "JTAG", "abc"}}}, 4988064, "abc", "none"},
      {"no access mode, no code name", {{{100, nullptr, "abc"}, {100, "JTAG", nullptr}}}, 100, "abc", "none"},
      {"a code name that is missing is not empty", {{{100, "JTAG", nullptr}, {100, "JTAG", ""}}}, 100, "", "0.1"},
      {"null", {{{100, "JTAG", nullptr}, {100, "JTAG", ""}}}, 100, nullptr, "none"},
  };
  for (const auto& row : cases) {
    const SampleTree tree;
    for (const auto& family : row.families) {
      for (const Device& device : family) {
        tree.AddDevice().Fuses(device.fuses).Comm(device.comm).CodeName(device.codeName).PackagePON(device.pon);
      }
      tree.AddFamily();
    }
    const DeviceInfo* const found = tree->GetDeviceWithFuseMapAndFullNameEx(row.asked, row.fullName);
    EXPECT_EQ(tree.PlaceOf(found), row.place) << "row: " << row.what;
  }
}

TEST(GetDeviceWithFuseMapAndFullNameEx, FallsBackToTheNormalisedComparison) {
  for (const FullNameCase& row : FullNameCases()) {
    const SampleTree tree;
    DeviceInfo* const device = tree.AddDevice().Fuses(100).Comm("DUAL").CodeName(row.stored);
    EXPECT_EQ(tree->GetDeviceWithFuseMapAndFullNameEx(100, row.fullName), row.found ? device : nullptr)
        << "code name: " << Show(row.stored) << ", full name: " << Show(row.fullName);
  }
}

// Candidate lists

/// A device of each kind that the candidate lists tell apart; names are lower case, code names upper case.
SampleTree CandidateTree() {
  SampleTree tree;
  const auto add = [&](unsigned int fuses, const char* comm, const char* name, const char* codeName, unsigned int ues = 8) {
    tree.AddDevice().Fuses(fuses).Comm(comm).Name(name).CodeName(codeName).UES(ues);
  };
  add(100, "JTAG", "a", "A");
  add(100, "DUAL", "b", "B");
  add(100, "ISP", "c", "C");
  add(100, "dual", "d", "D");
  add(100, nullptr, "e", "E");
  add(100, "JTAG", nullptr, nullptr);
  add(100, "DUAL", nullptr, nullptr);
  add(100, "DUAL", "", "");
  add(100, "DUAL", "f", "F", 0);
  tree.AddFamily().SetHidden(true);
  add(100, "JTAG", "a", "A");
  add(5828, "DUAL", "g", "G");
  add(5892, "DUAL", "h", "H");
  add(5828, nullptr, nullptr, nullptr);
  add(5828, "DUAL", "i", "I", 0);
  add(4982712, "DUAL", "j", "J");
  add(4988064, "JTAG", "k", "K");
  add(0xFFFFFFFF, "JTAG", "l", "L");
  add(0, "JTAG", "m", "M");
  return tree;
}

TEST(GetDeviceCodeNameWithFuseMap, ListsTheCodeNamesOfTheCountAndItsAliases) {
  const SampleTree tree = CandidateTree();
  const struct {
    unsigned long long count;
    Texts candidates;
  } cases[] = {
      {100, {"A", "B<ISP>", "B<JTAG>", "C", "D", "E", "", "<ISP>", "<JTAG>", "<ISP>", "<JTAG>", "F<ISP>", "F<JTAG>", "A"}},
      {5892, {"G", "H<ISP>", "H<JTAG>", "", "I"}},  // no markers through an alias
      {5828, {"G<ISP>", "G<JTAG>", "", "I<ISP>", "I<JTAG>"}},
      {4988064, {"J", "K"}},
      {4982712, {"J<ISP>", "J<JTAG>"}},
      {0xFFFFFFFF, {"L"}},
      {0, {"M"}},
      {101, {}},
      {0xFFFFFFFFFFFFFFFF, {}},
      {0x100000064, {}},
      {0x100001704, {}},
  };
  for (const auto& row : cases) {
    AskIfLong(row.count, [&](unsigned long count) {
      Texts candidates = {"old"};
      EXPECT_EQ(tree->GetDeviceCodeNameWithFuseMap(count, candidates), row.candidates.size()) << "count: " << count;
      EXPECT_EQ(candidates, row.candidates) << "count: " << count;
    });
  }
}

TEST(GetDeviceWithFuseMap, AppendsTheNamesOfDevicesThatHaveAUES) {
  const SampleTree tree = CandidateTree();
  const struct {
    unsigned long long count;
    Texts candidates;
  } cases[] = {
      {100, {"a", "b<ISP>", "b<JTAG>", "c", "d", "e", "", "<ISP>", "<JTAG>", "<ISP>", "<JTAG>", "a"}},
      {5892, {"g", "h<ISP>", "h<JTAG>", ""}},
      {5828, {"g<ISP>", "g<JTAG>", ""}},
      {4988064, {"j", "k"}},
      {4982712, {"j<ISP>", "j<JTAG>"}},
      {0xFFFFFFFF, {"l"}},
      {0, {"m"}},
      {101, {}},
      {0xFFFFFFFFFFFFFFFF, {}},
      {0x100000064, {}},
      {0x100001704, {}},
  };
  for (const auto& row : cases) {
    AskIfLong(row.count, [&](unsigned long count) {
      Texts candidates;
      EXPECT_EQ(tree->GetDeviceWithFuseMap(count, candidates), row.candidates.size()) << "count: " << count;
      EXPECT_EQ(candidates, row.candidates) << "count: " << count;
    });
  }
}

TEST(GetDeviceWithFuseMap, CountsWhatTheCallerPutThere) {
  const SampleTree tree = CandidateTree();
  Texts candidates = {"old"};
  EXPECT_EQ(tree->GetDeviceWithFuseMap(4988064, candidates), 3);
  EXPECT_EQ(candidates, Texts({"old", "j", "k"}));
  EXPECT_EQ(tree->GetDeviceWithFuseMap(4988064, candidates), 5);
  EXPECT_EQ(candidates, Texts({"old", "j", "k", "j", "k"}));
  EXPECT_EQ(tree->GetDeviceWithFuseMap(101, candidates), 5);
  EXPECT_EQ(tree->GetDeviceCodeNameWithFuseMap(101, candidates), 0);
  EXPECT_EQ(candidates, Texts());
}

TEST(GetDeviceWithFuseMap, ASecondCallDoublesTheList) {
  const SampleTree tree = CandidateTree();
  Texts candidates;
  const int once = tree->GetDeviceWithFuseMap(100, candidates);
  EXPECT_EQ(tree->GetDeviceWithFuseMap(100, candidates), 2 * once);
  EXPECT_EQ(candidates.size(), static_cast<std::size_t>(2 * once));
}

TEST(CandidateLists, RunningOutOfMemoryLosesNothing) {
  const SampleTree tree;
  const std::string longName(100, 'x');
  for (int i = 0; i < 3; ++i) {
    tree.AddDevice().Fuses(100).Comm("DUAL").UES(8).Name(longName.c_str()).CodeName(longName.c_str());
  }
  const long live = support::LiveAllocations();
  const auto nothingIsLost = [&] {
    const long left = support::LiveAllocations();
    EXPECT_EQ(left, live);
  };
  const long codeNames = support::ForEachFailingAllocation(
      [&] {
        Texts candidates;
        tree->GetDeviceCodeNameWithFuseMap(100, candidates);
      },
      nothingIsLost);
  const long names = support::ForEachFailingAllocation(
      [&] {
        Texts candidates;
        tree->GetDeviceWithFuseMap(100, candidates);
      },
      nothingIsLost);
  EXPECT_GT(codeNames, 6);
  EXPECT_GT(names, 6);
}

TEST(GetDeviceWithFuseMapAndFullName, RunningOutOfMemoryLosesNothing) {
  const std::string fullName(100, 'x');
  const SampleTree tree;
  DeviceInfo* const device = tree.AddDevice().Fuses(100).Comm("JTAG").CodeName(fullName.c_str());
  const long live = support::LiveAllocations();
  const DeviceInfo* found = nullptr;
  support::ForEachFailingAllocation([&] { found = tree->GetDeviceWithFuseMapAndFullName(100, fullName.c_str()); },
                                    [&] {
                                      const long left = support::LiveAllocations();
                                      EXPECT_EQ(left, live);
                                    });
  EXPECT_EQ(found, device);
}

}  // namespace
