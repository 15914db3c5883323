#include "input.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace plddb::programming_files {

std::string_view Input::Window(std::size_t size) {
  if (end_ - next_ < size && !isAtEnd_) {
    std::memmove(buffer_.data(), buffer_.data() + next_, end_ - next_);
    base_ += next_;
    end_ -= next_;
    next_ = 0;
    while (end_ < size && !isAtEnd_) {
      const std::size_t more = source_(buffer_.data() + end_, buffer_.size() - end_);
      end_ += more;
      isAtEnd_ = more == 0;
    }
  }
  return {buffer_.data() + next_, std::min(size, end_ - next_)};
}

void Input::Consume(std::size_t count) {
  const char* const stop = buffer_.data() + next_ + count;
  for (const char* c = buffer_.data() + next_; (c = std::find(c, stop, '\n')) != stop; ++c) {
    ++line_;
    lineStart_ = base_ + static_cast<std::uint64_t>(c - buffer_.data()) + 1;
  }
  next_ += count;
}

bool Input::Skip(std::uint64_t count) {
  while (count > 0) {
    const std::size_t available = Window(kWindow).size();
    if (available == 0) return false;
    const auto step = static_cast<std::size_t>(std::min<std::uint64_t>(available, count));
    Consume(step);
    count -= step;
  }
  return true;
}

namespace {

class Unpacker {
 public:
  Unpacker(Input& packed, bool& isDamaged) : packed_(packed), isDamaged_(isDamaged) {
    constexpr int withGzipHeader = 16 + MAX_WBITS;
    if (inflateInit2(&stream_, withGzipHeader) != Z_OK) throw std::bad_alloc();
  }
  ~Unpacker() { inflateEnd(&stream_); }
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;

  std::size_t Read(char* buffer, std::size_t size) {
    stream_.next_out = reinterpret_cast<Bytef*>(buffer);
    stream_.avail_out = static_cast<uInt>(size);
    while (stream_.avail_out == size && !isAtEnd_) Step();
    return size - stream_.avail_out;
  }

 private:
  void Step() {
    const std::string_view window = packed_.Window();
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(window.data()));  // zlib only reads it
    stream_.avail_in = static_cast<uInt>(window.size());
    const int result = window.empty() ? Z_BUF_ERROR : inflate(&stream_, Z_NO_FLUSH);
    packed_.Skip(window.size() - stream_.avail_in);
    if (result == Z_MEM_ERROR) throw std::bad_alloc();
    if (result == Z_OK) return;
    isAtEnd_ = true;
    if (result != Z_STREAM_END) isDamaged_ = true;
    if (result == Z_STREAM_END && packed_.Window(2) == "\x1F\x8B") isAtEnd_ = inflateReset(&stream_) != Z_OK;  // joined files
  }

  Input& packed_;
  bool& isDamaged_;
  z_stream stream_ = {};
  bool isAtEnd_ = false;
};

}  // namespace

Source Unpacked(Input& packed, bool& isDamaged) {
  const auto unpacker = std::make_shared<Unpacker>(packed, isDamaged);
  return [unpacker](char* buffer, std::size_t size) { return unpacker->Read(buffer, size); };
}

}  // namespace plddb::programming_files
