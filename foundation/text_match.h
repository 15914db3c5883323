#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

#include "characters.h"

/// \file
/// How lookups compare texts: in place, without copies.

namespace plddb::internal {

/// Whether both texts are equal, ignoring letter case. A null text equals nothing.
inline bool EqualIgnoringCase(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return false;
  for (; *a == *b || ToUpper(*a) == ToUpper(*b); ++a, ++b) {
    if (*a == '\0') return true;
  }
  return false;
}

inline bool IsSameLetter(char a, char b) { return ToUpper(a) == ToUpper(b); }

/// The same for texts that are never null.
inline bool AreEqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), IsSameLetter);
}

/// The rest of `text` after `prefix`, ignoring letter case; null if the text does not begin with it.
inline const char* AfterPrefix(const char* text, const char* prefix) {
  for (; *prefix != '\0'; ++text, ++prefix) {
    if (*text != *prefix && ToUpper(*text) != ToUpper(*prefix)) return nullptr;
  }
  return text;
}

/// Whether both texts are equal, including letter case. A null text equals nothing.
inline bool EqualExactly(const char* a, const char* b) { return a != nullptr && b != nullptr && std::strcmp(a, b) == 0; }

/// The longest text that lookups with a bounded comparison know; longer ones match nothing.
inline constexpr std::size_t kLongestComparedText = 1023;

inline bool IsComparable(const char* text) {
  return text != nullptr && std::memchr(text, '\0', kLongestComparedText + 1) != nullptr;
}

/// A text that a walk carries from device to device.
///
/// On purpose: for a device without the text, the text of the last visited device that has one is used, and the empty text
/// before the first. Callers may rely on it.
class CarriedText {
 public:
  /// The text to compare for a device whose own text is `text`. To be called for every device that is visited, whether or not
  /// it can still match.
  const char* Refresh(const char* text) {
    if (text != nullptr) text_ = text;
    return text_;
  }

 private:
  const char* text_ = "";
};

}  // namespace plddb::internal
