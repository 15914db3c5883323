#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ProgrammingFile.h"

namespace plddb::programming_files {

/// The bytes of a file, from front to back, with a window on what comes next: files of any size take the same memory.
class Input {
 public:
  static constexpr std::size_t kWindow = 1 << 16;

  explicit Input(Source source) : source_(std::move(source)) {}

  /// Up to `size` (at most kWindow) of the next bytes, fewer only at the end. Lent until the next call of any other member.
  std::string_view Window(std::size_t size = kWindow);

  /// The next byte, or -1 at the end.
  int Get() {
    if (next_ == end_ && Window(1).empty()) return -1;
    const char c = buffer_[next_++];
    if (c == '\n') StartLine();
    return static_cast<unsigned char>(c);
  }

  /// The next byte without taking it, or -1 at the end.
  int Peek() { return next_ == end_ && Window(1).empty() ? -1 : static_cast<unsigned char>(buffer_[next_]); }

  /// Skips `count` bytes. If the file has fewer, skips them all and returns false.
  bool Skip(std::uint64_t count);

  std::uint64_t Offset() const { return base_ + next_; }
  Place BytePlace() const { return {Offset(), 0, 0}; }
  Place TextPlace() const { return {Offset(), line_, Offset() - lineStart_ + 1}; }

 private:
  void StartLine() {
    ++line_;
    lineStart_ = Offset();
  }
  void Consume(std::size_t count);

  Source source_;
  bool isAtEnd_ = false;
  std::array<char, 2 * kWindow> buffer_;
  std::size_t next_ = 0;
  std::size_t end_ = 0;
  std::uint64_t base_ = 0;  // the file's offset of buffer_[0]
  std::uint64_t line_ = 1;
  std::uint64_t lineStart_ = 0;
};

/// The unpacked bytes of `packed`, which must outlive the result. They end where it is damaged or cut; then `isDamaged` is set.
Source Unpacked(Input& packed, bool& isDamaged);

}  // namespace plddb::programming_files
