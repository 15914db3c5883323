#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Find.h"
#include "databases.h"

/// \file
/// The forms in which plddb find writes its answers.

namespace tool {

/// An answer, and all that is needed to show it.
struct Answer {
  plddb::find::Matches matches;
  std::vector<std::string> suggestions;  ///< When there are no matches.
  std::string reason;                    ///< Why there are none, where that is known.
};

/// The first `shown` matches, and what is near when there are none. With `fuses`, a fuse count, also its candidates.
std::string MatchesJson(const std::vector<Database>& databases, const Answer& answer, std::size_t shown,
                        unsigned long fuses = 0);

}  // namespace tool
