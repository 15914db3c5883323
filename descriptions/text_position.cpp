#include "text_position.h"

namespace plddb::descriptions {

TextPosition TextPositions::At(std::size_t offset) {
  const std::string_view before = text_.substr(0, offset);
  for (auto end = before.find('\n', reached_); end != before.npos; end = before.find('\n', lineStart_)) {
    lineStart_ = end + 1;
    ++line_;
  }
  reached_ = offset;
  return {line_, static_cast<int>(offset - lineStart_) + 1};
}

}  // namespace plddb::descriptions
