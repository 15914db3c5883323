#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plddb::chain {

/// A text as a scanning tool printed it: UTF-16 converted to UTF-8, characters as web pages write them replaced by plain ones,
/// colours, tabs and carriage returns by blanks, and lines wrapped by a terminal joined again.
class ScanText {
 public:
  explicit ScanText(std::string_view raw);

  const std::string& Text() const { return text_; }

  struct Place {
    int line;    // 1-based, as the text was before lines were joined
    int column;  // likewise, in bytes of UTF-8
  };
  Place PlaceOf(std::size_t offset) const;

 private:
  /// From `at` on the text is that of `source` on in the text before lines were joined.
  struct Piece {
    std::size_t at;
    std::size_t source;
  };

  std::string plain_;  // before lines were joined
  std::string text_;
  std::vector<Piece> pieces_;
};

/// Whether a terminal of the usual width may have cut this line.
bool IsFullLine(std::string_view line);

/// `line` without its margin: blanks, and the marks of quotes and comments.
std::string_view WithoutMargin(std::string_view line);

}  // namespace plddb::chain
