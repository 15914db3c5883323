// The corpus: the findings in each of its files. The first line of each file states them.

#include "corpus.h"

#include <gtest/gtest.h>

#include "tests/support/words.h"

namespace {

TEST(CheckCorpus, FindsEachFaultAtItsPlaceAndNothingElse) {
  for (const std::string& file : CorpusFiles())
    EXPECT_EQ(Brief(CheckText(CorpusText(file))), Expected(file)) << "row: " << file;
}

TEST(CheckCodes, HaveAParagraphEachThatNamesTheirSeverity) {
  const std::string page = support::ReadFile(PLDDB_TEST_DIR "/../docs/check.md");
  for (const auto& code : plddb::check::Codes()) {
    const std::string severity = code.severity == plddb::check::Severity::kError ? "(error)" : "(warning)";
    std::size_t heading = page.find("### `" + std::string(code.name) + "`");
    if (heading == page.npos) heading = page.find(", `" + std::string(code.name) + "` (");  // one of two in a heading
    ASSERT_NE(heading, page.npos) << "row: " << code.name;
    EXPECT_NE(page.substr(heading, page.find('\n', heading) - heading).find(severity), page.npos) << "row: " << code.name;
  }
}

TEST(CheckCodes, AreFoundByTheirFormerNamesToo) {
  for (const auto& code : plddb::check::Codes()) {
    ASSERT_NE(plddb::check::FindCode(code.name), nullptr) << "row: " << code.name;
    EXPECT_EQ(plddb::check::FindCode(code.name)->name, code.name);
    if (code.formerly.empty()) continue;
    EXPECT_EQ(plddb::check::FindCode(code.formerly)->name, code.name);
  }
  EXPECT_EQ(plddb::check::FindCode("id-hidden")->name, "id-shadowed");
  EXPECT_EQ(plddb::check::FindCode(""), nullptr);
  EXPECT_EQ(plddb::check::FindCode("ID-SHADOWED"), nullptr);
}

}  // namespace
