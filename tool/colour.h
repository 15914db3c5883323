#pragma once

#include <string>

#include "console.h"

namespace tool {

enum class Paint {
  kError,    ///< Red.
  kWarning,  ///< Yellow.
  kMark,     ///< Bold: what a reader must not miss.
};

/// Whether what goes to `descriptor` (kOutput, kMessages) is seen in colour: on a terminal that knows colours,
/// unless NO_COLOR is set and not empty.
bool ShowsColour(int descriptor);

/// `text` in the colour of `paint` where `descriptor` shows colour, else as it is. Tables know that the colour has no width.
std::string Painted(Paint paint, const std::string& text, int descriptor = kOutput);

/// `lines` with the severity of each line ("FILE:1:2: error: TEXT", "FILE:1:2: warning[code]: TEXT") painted like Painted.
std::string WithPaintedSeverities(const std::string& lines, int descriptor);

}  // namespace tool
