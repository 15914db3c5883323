#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Check.h"
#include "tests/support/read_file.h"
#include "tests/support/words.h"

/// \file
/// Findings in the form in which the tests compare them.

using Texts = std::vector<std::string>;

/// "LINE:COLUMN SEVERITY[CODE]".
inline std::string Brief(const plddb::check::Finding& finding) {
  const bool isError = finding.severity == plddb::check::Severity::kError;
  return std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column) + (isError ? " error[" : " warning[") +
         std::string(finding.code) + "]";
}

inline Texts Brief(const std::vector<plddb::check::Finding>& findings) {
  Texts texts;
  for (const auto& finding : findings) texts.push_back(Brief(finding));
  return texts;
}

inline std::vector<plddb::check::Finding> CheckText(const std::string& text) {
  return plddb::check::CheckTexts({{"devices.xml", text, ""}});
}

/// The names of the files of the corpus, in order.
inline Texts CorpusFiles() {
  Texts files;
  for (const auto& entry : std::filesystem::directory_iterator(PLDDB_TEST_DIR "/check/corpus")) {
    files.push_back(entry.path().filename().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

inline std::string CorpusText(const std::string& file) { return support::ReadFile(PLDDB_TEST_DIR "/check/corpus/" + file); }

/// "LINE:COLUMN SEVERITY[CODE]" of all that is to be found in a file of the corpus.
inline Texts Expected(const std::string& file) {
  const std::string before = "<!-- expect ";
  const std::string after = " -->";
  const std::string text = CorpusText(file);
  std::string line = text.substr(0, text.find('\n'));
  if (line.substr(0, before.size()) != before || line.size() < before.size() + after.size()) return {"nothing is expected"};
  line = line.substr(before.size(), line.size() - before.size() - after.size());
  return line == "nothing" ? Texts{} : support::Split(line, ", ");
}
