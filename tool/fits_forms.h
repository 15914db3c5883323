#pragma once

#include <string>

#include "ProgrammingFile.h"
#include "json_text.h"

/// \file
/// The forms in which plddb fits writes its answers.

namespace tool {

/// A file that was judged.
struct Judged {
  std::string path;
  plddb::programming_files::File file;
  plddb::programming_files::Verdict verdict;
};

/// Its format, devices and verdict, each in a line, and the reasons; without the verdict where no chain was given.
std::string AsText(const Judged& judged, bool hasChain);
Json AsJson(const Judged& judged);

}  // namespace tool
