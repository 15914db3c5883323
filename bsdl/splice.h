#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plddb::bsdl {

/// Puts text into XML elements and leaves the rest as it is. The XML has been read by the loader: it is well-formed, and has
/// no '<' within values.
class Splice {
 public:
  /// Borrows the text.
  explicit Splice(const std::string& text) : text_(text) {}

  /// Notes `lines`, each with its line end, to be put before the end tag of the element `name` whose '<' is at the 1-based
  /// line and column. An element without content, "<Name/>", gets an end tag, indented by `indent`.
  void PutAtEnd(std::string_view name, int line, int column, std::string_view indent, const std::string& lines);

  /// The text with all that was noted.
  std::string Result();

 private:
  struct Edit {
    std::size_t at;
    std::size_t erased;
    std::string text;
  };

  std::size_t OffsetOf(int line, int column) const;
  std::size_t EndOfStartTag(std::size_t at) const;
  std::size_t EndTag(std::string_view name, std::size_t at) const;

  const std::string& text_;
  std::vector<Edit> edits_;
};

}  // namespace plddb::bsdl
