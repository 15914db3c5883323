// The corpus: what is found in each of its files, and where. The first line of each says what is to be found in it.

#include "corpus.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/support/words.h"

namespace {

/// "LINE:COLUMN SEVERITY[CODE]" of all that is to be found in a file of the corpus.
Texts Expected(const std::string& file) {
  const std::string before = "<!-- expect ";
  const std::string after = " -->";
  const std::string text = CorpusText(file);
  std::string line = text.substr(0, text.find('\n'));
  if (line.substr(0, before.size()) != before || line.size() < before.size() + after.size()) return {"nothing is expected"};
  line = line.substr(before.size(), line.size() - before.size() - after.size());
  return line == "nothing" ? Texts{} : support::Split(line, ", ");
}

TEST(CheckCorpus, FindsEachFaultAtItsPlaceAndNothingElse) {
  for (const std::string& file : CorpusFiles())
    EXPECT_EQ(Brief(CheckText(CorpusText(file))), Expected(file)) << "row: " << file;
}

TEST(CheckCorpus, HasAFileForEveryCode) {
  std::set<std::string> expected = {"unreadable"};  // no file can be that
  std::size_t faulty = 0;
  for (const std::string& file : CorpusFiles()) {
    const Texts findings = Expected(file);
    if (!findings.empty()) ++faulty;
    for (const std::string& finding : findings) {
      const auto start = finding.find('[') + 1;
      expected.insert(finding.substr(start, finding.size() - start - 1));
    }
  }
  std::set<std::string> codes;
  for (const auto& code : plddb::check::Codes()) codes.emplace(code.name);
  EXPECT_EQ(expected, codes);
  EXPECT_GE(faulty, 40U);
  EXPECT_GE(CorpusFiles().size() - faulty, 5U);
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
