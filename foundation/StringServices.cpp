#include "StringServices.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <string_view>

#include "characters.h"

using namespace plddb::internal;

namespace {

/// A position as an `int`; one that does not fit counts as not found.
int ToPosition(std::size_t found) { return found > static_cast<std::size_t>(INT_MAX) ? -1 : static_cast<int>(found); }

/// The length of `text`, at most `most`; nothing after that is read.
std::size_t LengthUpTo(const char* text, std::size_t most) {
  const void* const end = std::memchr(text, '\0', most);
  return end == nullptr ? most : static_cast<std::size_t>(static_cast<const char*>(end) - text);
}

std::size_t FindIgnoringCase(std::string_view text, std::string_view sub, std::size_t start) {
  const auto alike = [](char a, char b) { return ToUpper(a) == ToUpper(b); };
  const auto from = text.begin() + static_cast<std::ptrdiff_t>(start);
  const auto found = std::search(from, text.end(), sub.begin(), sub.end(), alike);
  return found == text.end() && !sub.empty() ? text.npos : static_cast<std::size_t>(found - text.begin());
}

template <char (*Convert)(char)>
void ConvertInPlace(char* s) {
  if (s == nullptr) return;
  for (; *s != '\0'; ++s) *s = Convert(*s);
}

}  // namespace

void util_strncpy(char* dst, const char* src, int n, int /*m*/) {
  if (dst == nullptr) return;
  const std::size_t length = src == nullptr || n < 0 ? 0
                             : n == 0                ? std::strlen(src)
                                                     : LengthUpTo(src, static_cast<std::size_t>(n));
  if (length != 0) std::memmove(dst, src, length);
  dst[length] = '\0';
}

void strupr(std::string& s) { std::transform(s.begin(), s.end(), s.begin(), ToUpper); }

#if defined(_WIN32) || defined(__EMSCRIPTEN__)
extern "C" PLDDB_EXPORT char* strupr(char* s) {
  ConvertInPlace<ToUpper>(s);
  return s;
}

extern "C" PLDDB_EXPORT char* strlwr(char* s) {
  ConvertInPlace<ToLower>(s);
  return s;
}
#else
void strupr(char* s) { ConvertInPlace<ToUpper>(s); }

void strlwr(char* s) { ConvertInPlace<ToLower>(s); }
#endif

int FindSubString(const char* s, const char* sub, int start, bool flag) {
  if (s == nullptr || sub == nullptr) return -1;
  const std::string_view text(s);
  const std::size_t from = start < 0 ? 0 : static_cast<std::size_t>(start);
  if (from > text.size()) return -1;
  return ToPosition(flag ? text.find(sub, from) : FindIgnoringCase(text, sub, from));
}
