// Operations, programming modes and boundary-scan controls of a family.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <type_traits>
#include <vector>

#include "FamilyList.h"
#include "tests/reference/literal_rules.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/random_texts.h"
#include "tests/support/show.h"

namespace {

using support::Show;
using Texts = std::vector<std::string>;

static_assert(std::is_default_constructible_v<CBScanControl> && std::is_copy_constructible_v<CBScanControl>);
static_assert(std::is_copy_assignable_v<CBScanControl> && std::has_virtual_destructor_v<CBScanControl>);
static_assert(!std::is_base_of_v<LObject, CBScanControl>);
static_assert(std::is_same_v<decltype(std::declval<const FamilyList&>().GetOperationCount()), unsigned short>);
static_assert(std::is_same_v<decltype(std::declval<FamilyList&>().GetListProgrammingModeControl()), Texts&>);
static_assert(std::is_same_v<decltype(std::declval<FamilyList&>().GetListBScanControl()), std::vector<CBScanControl>&>);

CBScanControl Record(int defaultValue, const Texts& controls) {
  CBScanControl record;
  record.DefaultValue = defaultValue;
  record.Controls = controls;
  return record;
}

Texts Operations(const FamilyList& family) {
  Texts operations;
  for (int i = 0; const char* const operation = family.GetOperation(i); ++i) operations.emplace_back(operation);
  return operations;
}

void AddOperations(FamilyList& family, const Texts& operations) {
  for (const std::string& operation : operations) family.AddOperationList(operation.c_str());
}

bool IsStartOf(const Texts& start, const Texts& whole) {
  return start.size() <= whole.size() && std::equal(start.begin(), start.end(), whole.begin());
}

TEST(FamilyLists, AreEmptyAtFirst) {
  FamilyList family;
  EXPECT_EQ(family.GetOperationCount(), 0);
  EXPECT_TRUE(family.GetListProgrammingModeControl().empty());
  EXPECT_TRUE(family.GetListBScanControl().empty());
}

TEST(CBScanControl, StartsWithZeroAndNoControlsAndCopiesDeeply) {
  CBScanControl record;
  EXPECT_EQ(record.DefaultValue, 0);
  EXPECT_TRUE(record.Controls.empty());
  record = Record(7, {"IN"});
  CBScanControl copy(record);
  copy.Controls[0] = "OUT";
  EXPECT_EQ(Show(record), Show(Record(7, {"IN"})));
}

// Operations

TEST(SetOperationList, ReplacesTheListByTheQuotedItems) {
  const struct {
    const char* text;
    Texts operations;
  } cases[] = {
      {R"("Erase", "Program" , "Verify")", {"Erase", "Program", "Verify"}},
      {R"("Read")", {"Read"}},
      {R"("Erase""Program")", {"Erase", "Program"}},
      {R"(list of "Erase" and "Program" only)", {"Erase", "Program"}},
      {R"("Erase" "" "Verify")", {"Erase"}},  // an empty pair of quotes ends the list
      {R"("" "Erase")", {}},
      {R"("Erase" " " "Verify")", {"Erase", "", "Verify"}},  // blanks do not
      {"\"Erase\" \"\t\n\v\f\r \" \"Verify\"", {"Erase", "", "Verify"}},
      {"\" \t\n\v\f\rErase \t\n\v\f\r\"", {"Erase"}},
      {R"(" Erase  all ")", {"Erase  all"}},  // trimmed at both ends
      {R"("Erase" "Verify)", {"Erase"}},      // a missing closing quote drops the name
      {R"("Erase)", {}},
      {R"(Erase")", {}},
      {R"(")", {}},
      {"abc", {}},
      {" ", {}},
      {R"("Erase", "Erase")", {"Erase", "Erase"}},
      {R"("a;b" "\" "c")", {"a;b", "\\", "c"}},  // no escapes
      {"\"\xE9\xA0\"", {"\xE9\xA0"}},
  };
  for (const auto& row : cases) {
    FamilyList family;
    AddOperations(family, {"old", "older"});
    family.SetOperationList(row.text);
    EXPECT_EQ(Operations(family), row.operations) << "text: " << row.text;
    EXPECT_EQ(family.GetOperationCount(), row.operations.size()) << "text: " << row.text;
  }
}

TEST(SetOperationList, AnEmptyTextAndNullKeepTheList) {
  FamilyList family;
  AddOperations(family, {"Erase", "Program"});
  family.SetOperationList("");
  EXPECT_EQ(Operations(family), Texts({"Erase", "Program"}));
  family.SetOperationList(nullptr);
  EXPECT_EQ(Operations(family), Texts({"Erase", "Program"}));
}

TEST(SetOperationList, ASecondCallReplacesTheFirst) {
  FamilyList family;
  family.SetOperationList(R"("Erase", "Program" , "Verify")");
  family.SetOperationList(R"("Read")");
  EXPECT_EQ(Operations(family), Texts({"Read"}));
}

TEST(SetOperationList, TakesAnOperationOfItsOwn) {
  FamilyList family;
  AddOperations(family, {R"("A" "B")", "other"});
  family.SetOperationList(family.GetOperation(0));
  EXPECT_EQ(Operations(family), Texts({"A", "B"}));
  family.SetOperationList(family.GetOperation(0));  // no quotes
  EXPECT_EQ(Operations(family), Texts());
}

TEST(SetOperationList, AgreesWithTheLiteralRuleOnRandomTexts) {
  support::RandomTexts random(4'201);
  FamilyList family;
  for (int i = 0; i < 50'000; ++i) {
    const std::string& text = random.Next();
    const Texts expected = text.empty() ? Operations(family) : reference::QuotedItems(text);
    family.SetOperationList(text.c_str());
    ASSERT_EQ(Operations(family), expected) << "text: " << Show(text);
  }
}

TEST(SetOperationList, RunningOutOfMemoryKeepsTheOldListOrTheItemsStoredSoFar) {
  const std::string item(100, 'x');
  const std::string text = '"' + item + "1\" \"" + item + "2\" \"" + item + "3\"";
  const Texts items = {item + "1", item + "2", item + "3"};
  FamilyList family;
  const long failures =
      support::ForEachFailingAllocation([&] { family.SetOperationList(text.c_str()); },
                                        [&] { EXPECT_TRUE(IsStartOf(Operations(family), items)) << Show(Operations(family)); });
  EXPECT_GT(failures, 3);
  EXPECT_EQ(Operations(family), items);
}

TEST(AddOperationList, AppendsTheTextExactlyAsGiven) {
  FamilyList family;
  for (const char* const name : {"Erase", " Erase ", "\"Erase\"", " ", "Erase"}) family.AddOperationList(name);
  EXPECT_EQ(Operations(family), Texts({"Erase", " Erase ", "\"Erase\"", " ", "Erase"}));
}

TEST(AddOperationList, AnEmptyNameAndNullAddNothing) {
  FamilyList family;
  family.AddOperationList("");
  family.AddOperationList(nullptr);
  EXPECT_EQ(family.GetOperationCount(), 0);
}

TEST(AddOperationList, TakesAnOperationOfItsOwn) {
  FamilyList family;
  family.AddOperationList("Erase");
  for (int i = 0; i < 10; ++i) family.AddOperationList(family.GetOperation(0));
  EXPECT_EQ(Operations(family), Texts(11, "Erase"));
}

TEST(AddOperationList, RunningOutOfMemoryKeepsTheList) {
  const std::string name(100, 'x');
  FamilyList family;
  family.AddOperationList("Erase");
  const long live = support::LiveAllocations();
  const long failures = support::ForEachFailingAllocation([&] { family.AddOperationList(name.c_str()); },
                                                          [&] {
                                                            const long left = support::LiveAllocations();
                                                            EXPECT_EQ(left, live);
                                                            EXPECT_EQ(Operations(family), Texts({"Erase"}));
                                                          });
  EXPECT_GT(failures, 0);
  EXPECT_EQ(Operations(family), Texts({"Erase", name}));
}

TEST(DeleteOperationList, DestroysTheFirstOfExactlyThisName) {
  const struct {
    Texts operations;
    const char* name;
    Texts left;
  } cases[] = {
      {{"Erase", "Program", "Program"}, "Program", {"Erase", "Program"}},
      {{"Program", "Erase", "Program"}, "Program", {"Erase", "Program"}},
      {{"Erase"}, "Erase", {}},
      {{"Erase", "erase"}, "erase", {"Erase"}},
      {{"Erase"}, "ERASE", {"Erase"}},
      {{"Erase "}, "Erase", {"Erase "}},
      {{"Erase all"}, "Erase", {"Erase all"}},
      {{"Erase"}, "Erase all", {"Erase"}},
      {{"Erase"}, "Verify", {"Erase"}},
      {{"Erase"}, nullptr, {"Erase"}},
      {{"Erase"}, "", {"Erase"}},
      {{}, "Erase", {}},
  };
  for (const auto& row : cases) {
    FamilyList family;
    AddOperations(family, row.operations);
    const std::string which = Show(row.name) + " of " + Show(row.operations);
    family.DeleteOperationList(row.name);
    EXPECT_EQ(Operations(family), row.left) << "row: " << which;
  }
}

TEST(DeleteOperationList, PassesOverEmptyNames) {
  FamilyList family;
  family.SetOperationList(R"("A" " " "B")");
  family.DeleteOperationList("");
  EXPECT_EQ(Operations(family), Texts({"A", "", "B"}));
  family.DeleteOperationList("B");
  EXPECT_EQ(Operations(family), Texts({"A", ""}));
}

TEST(DeleteOperationList, FreesWhatItRemovesAndTakesAnOperationOfItsOwn) {
  FamilyList family;
  AddOperations(family, {"Erase", "Program"});
  const long live = support::LiveAllocations();
  family.AddOperationList("Verify");
  family.DeleteOperationList(family.GetOperation(2));
  const long left = support::LiveAllocations() - live;
  EXPECT_LE(left, 0);  // the list itself may have grown, into a block for the one that it freed
  EXPECT_EQ(Operations(family), Texts({"Erase", "Program"}));
}

TEST(GetOperation, LendsNullOutsideTheList) {
  FamilyList family;
  AddOperations(family, {"Erase", "Program"});
  const struct {
    int i;
    const char* operation;
  } cases[] = {{0, "Erase"}, {1, "Program"}, {2, nullptr}, {-1, nullptr}, {INT_MAX, nullptr}, {INT_MIN, nullptr}};
  for (const auto& row : cases) EXPECT_EQ(Show(family.GetOperation(row.i)), Show(row.operation)) << "position: " << row.i;
}

TEST(GetOperationCount, IsSixteenBitsWide) {
  FamilyList family;
  for (int i = 0; i < 65'536; ++i) family.AddOperationList("x");
  EXPECT_EQ(family.GetOperationCount(), 0);
  EXPECT_STREQ(family.GetOperation(65'535), "x");
  family.AddOperationList("last");
  EXPECT_EQ(family.GetOperationCount(), 1);
  family.DeleteOperationList("last");
  EXPECT_EQ(family.GetOperation(65'536), nullptr) << "the whole list is searched";
}

// Programming modes

const struct {
  const char* text;
  Texts items;
} kSemicolonTexts[] = {
    {"P;JTAG;", {"JTAG"}},
    {"P;JTAG;SPI;", {"JTAG", "SPI"}},
    {"P; JTAG ;\tSPI\n;", {"JTAG", "SPI"}},
    {";JTAG;", {"JTAG"}},        // no label
    {"P;JTAG;SPI", {"JTAG"}},    // not closed
    {"P;JTAG;;SPI;", {"JTAG"}},  // an empty segment ends the text
    {"P;;JTAG;", {}},
    {"P;JTAG; ;SPI;", {"JTAG", "", "SPI"}},
    {"P;", {}},
    {";", {}},
    {"P", {}},
    {"JTAG;", {}},
    {"", {}},
    {"P;a,b;\"c\";", {"a,b", "\"c\""}},
    {"P;A;A;", {"A", "A"}},
};

TEST(SetListProgrammingModeControl, ReplacesTheListByTheItemsOfTheText) {
  for (const auto& row : kSemicolonTexts) {
    FamilyList family;
    family.SetListProgrammingModeControl(Texts{"old", "older"});
    family.SetListProgrammingModeControl(row.text);
    EXPECT_EQ(family.GetListProgrammingModeControl(), row.items) << "text: " << row.text;
  }
}

TEST(SetListProgrammingModeControl, NullKeepsTheList) {
  FamilyList family;
  family.SetListProgrammingModeControl(Texts{"JTAG"});
  family.SetListProgrammingModeControl(nullptr);
  EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"JTAG"}));
}

TEST(SetListProgrammingModeControl, AWholeListReplacesTheOldUnlessItIsEmpty) {
  FamilyList family;
  family.SetListProgrammingModeControl(Texts{"A", "", "A"});
  EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"A", "", "A"}));
  family.SetListProgrammingModeControl(Texts{"B"});
  EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"B"}));
  family.SetListProgrammingModeControl(Texts());
  EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"B"}));
}

TEST(SetListProgrammingModeControl, TakesWhatTheListHolds) {
  const std::string tooLongToBeHeldInPlace = "P;A;B;;" + std::string(100, 'x');
  for (const std::string& text : {std::string("P;A;B;"), tooLongToBeHeldInPlace}) {
    FamilyList family;
    family.SetListProgrammingModeControl(Texts{text, "other"});
    family.SetListProgrammingModeControl(family.GetListProgrammingModeControl());
    EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({text, "other"}));
    family.SetListProgrammingModeControl(family.GetListProgrammingModeControl()[0].c_str());
    EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"A", "B"})) << "text: " << text;
  }
}

TEST(SetListProgrammingModeControl, TheGetterLendsTheListItself) {
  FamilyList family;
  family.SetListProgrammingModeControl("P;A;B;");
  Texts& list = family.GetListProgrammingModeControl();
  list[0] = "changed";
  list.emplace_back("added");
  EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"changed", "B", "added"}));
  family.SetListProgrammingModeControl("P;C;");
  EXPECT_EQ(list, Texts({"C"}));
}

TEST(SetListProgrammingModeControl, AgreesWithTheLiteralRuleOnRandomTexts) {
  support::RandomTexts random(4'202);
  FamilyList family;
  for (int i = 0; i < 50'000; ++i) {
    const std::string& text = random.Next();
    family.SetListProgrammingModeControl(text.c_str());
    ASSERT_EQ(family.GetListProgrammingModeControl(), reference::SemicolonItems(text)) << "text: " << Show(text);
  }
}

// Boundary-scan controls

TEST(SetListBScanControl, AppendsOneRecordWithTheItemsOfTheText) {
  for (const auto& row : kSemicolonTexts) {
    FamilyList family;
    family.SetListBScanControl({Record(7, {"old"})});
    family.SetListBScanControl(row.text);
    EXPECT_EQ(Show(family.GetListBScanControl()), Show(std::vector<CBScanControl>{Record(7, {"old"}), Record(1, row.items)}))
        << "text: " << row.text;
  }
}

TEST(SetListBScanControl, EveryTextButNullAddsARecord) {
  FamilyList family;
  std::vector<CBScanControl> expected = {Record(1, {"IN", "OUT"})};
  family.SetListBScanControl("B;IN;OUT;");
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(expected));
  family.SetListBScanControl(nullptr);
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(expected));
  family.SetListBScanControl("");
  expected.push_back(Record(1, {}));
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(expected));
  family.SetListBScanControl("B;IN;");
  expected.push_back(Record(1, {"IN"}));
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(expected));
}

TEST(SetListBScanControl, AWholeListReplacesTheOldUnlessItIsEmpty) {
  FamilyList family;
  const std::vector<CBScanControl> list = {Record(0, {}), Record(-5, {"A", "", "B"})};
  family.SetListBScanControl("B;IN;");
  family.SetListBScanControl(list);
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(list));
  family.SetListBScanControl(std::vector<CBScanControl>());
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(list));
}

TEST(SetListBScanControl, TakesWhatTheListHolds) {
  FamilyList family;
  family.SetListBScanControl({Record(3, {"B;IN;OUT;", "other"})});
  family.SetListBScanControl(family.GetListBScanControl());
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(std::vector<CBScanControl>{Record(3, {"B;IN;OUT;", "other"})}));
  for (int i = 0; i < 10; ++i) family.SetListBScanControl(family.GetListBScanControl()[0].Controls[0].c_str());
  ASSERT_EQ(family.GetListBScanControl().size(), 11u);
  EXPECT_EQ(Show(family.GetListBScanControl()[0]), Show(Record(3, {"B;IN;OUT;", "other"})));
  EXPECT_EQ(Show(family.GetListBScanControl()[10]), Show(Record(1, {"IN", "OUT"})));
}

TEST(SetListBScanControl, TheGetterLendsTheListItself) {
  FamilyList family;
  family.SetListBScanControl("B;IN;");
  family.GetListBScanControl()[0].Controls.emplace_back("added");
  family.GetListBScanControl().push_back(Record(9, {}));
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(std::vector<CBScanControl>{Record(1, {"IN", "added"}), Record(9, {})}));
}

TEST(SetListBScanControl, AgreesWithTheLiteralRuleOnRandomTexts) {
  support::RandomTexts random(4'203);
  FamilyList family;
  for (int i = 0; i < 50'000; ++i) {
    const std::string& text = random.Next();
    family.SetListBScanControl(text.c_str());
    ASSERT_EQ(family.GetListBScanControl().back().Controls, reference::SemicolonItems(text)) << "text: " << Show(text);
  }
  EXPECT_EQ(family.GetListBScanControl().size(), 50'000u);
}

TEST(SetBScanDefaultValue, ChangesTheFirstRecordOnly) {
  FamilyList family;
  family.SetBScanDefaultValue(5);
  EXPECT_TRUE(family.GetListBScanControl().empty());
  family.SetListBScanControl("B;IN;");
  family.SetListBScanControl("B;OUT;");
  for (const int value : {5, 0, -1, INT_MAX, INT_MIN}) {
    family.SetBScanDefaultValue(value);
    EXPECT_EQ(Show(family.GetListBScanControl()), Show(std::vector<CBScanControl>{Record(value, {"IN"}), Record(1, {"OUT"})}));
  }
  family.SetListBScanControl("B;LATER;");
  EXPECT_EQ(family.GetListBScanControl().back().DefaultValue, 1) << "it is no default for records to come";
}

TEST(FamilyLists, RunningOutOfMemoryInATextKeepsTheItemsStoredSoFarAndNoHalfRecord) {
  const std::string item(100, 'x');
  const std::string text = "label;" + item + "1;" + item + "2;" + item + "3;";
  const Texts items = {item + "1", item + "2", item + "3"};
  FamilyList family;
  const long modes =
      support::ForEachFailingAllocation([&] { family.SetListProgrammingModeControl(text.c_str()); },
                                        [&] { EXPECT_TRUE(IsStartOf(family.GetListProgrammingModeControl(), items)); });
  EXPECT_GT(modes, 3);
  EXPECT_EQ(family.GetListProgrammingModeControl(), items);

  const long records = support::ForEachFailingAllocation([&] { family.SetListBScanControl(text.c_str()); },
                                                         [&] { EXPECT_TRUE(family.GetListBScanControl().empty()); });
  EXPECT_GT(records, 3);
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(std::vector<CBScanControl>{Record(1, items)}));
}

TEST(FamilyLists, RunningOutOfMemoryInAWholeListKeepsTheOldOne) {
  FamilyList family;
  family.SetListProgrammingModeControl("P;A;");
  family.SetListBScanControl("B;IN;");
  const Texts modes(3, std::string(100, 'x'));
  const std::vector<CBScanControl> records(3, Record(2, modes));
  const long failedModes =
      support::ForEachFailingAllocation([&] { family.SetListProgrammingModeControl(modes); },
                                        [&] { EXPECT_EQ(family.GetListProgrammingModeControl(), Texts({"A"})); });
  const long failedRecords = support::ForEachFailingAllocation(
      [&] { family.SetListBScanControl(records); },
      [&] { EXPECT_EQ(Show(family.GetListBScanControl()), Show(std::vector<CBScanControl>{Record(1, {"IN"})})); });
  EXPECT_GT(failedModes, 0);
  EXPECT_GT(failedRecords, 0);
  EXPECT_EQ(family.GetListProgrammingModeControl(), modes);
  EXPECT_EQ(Show(family.GetListBScanControl()), Show(records));
}

TEST(FamilyLists, GoWithTheirFamily) {
  const long live = support::LiveAllocations();
  {
    FamilyList family;
    family.SetOperationList(R"("Erase" "Program")");
    family.SetListProgrammingModeControl("P;JTAG;");
    family.SetListBScanControl("B;IN;");
  }
  const long left = support::LiveAllocations() - live;
  EXPECT_EQ(left, 0);
}

}  // namespace
