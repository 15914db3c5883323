#pragma once

#include <cstddef>
#include <string_view>

namespace plddb::descriptions {

struct TextPosition {
  int line = 1;    // 1-based
  int column = 1;  // 1-based, in bytes
};

/// Gives the line and column of bytes of a text. It walks along the text once: the offsets must not decrease.
class TextPositions {
 public:
  explicit TextPositions(std::string_view text) : text_(text) {}

  TextPosition At(std::size_t offset);

 private:
  std::string_view text_;
  std::size_t reached_ = 0;
  std::size_t lineStart_ = 0;
  int line_ = 1;
};

}  // namespace plddb::descriptions
