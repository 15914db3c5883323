#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "foundation/text_match.h"

namespace plddb::check {

/// A text as lookups compare it, ignoring the case of ASCII letters. It may have a number that must be equal as well.
/// Borrows the text.
struct TextKey {
  std::string_view text;
  unsigned int number = 0;
};

struct HashOfTextKey {
  std::size_t operator()(const TextKey& key) const {
    std::uint64_t hash = key.number;
    for (const char c : key.text) hash = (hash ^ static_cast<unsigned char>(internal::ToUpper(c))) * 1099511628211U;
    return static_cast<std::size_t>(hash ^ hash >> 32);
  }
};

struct EqualTextKeys {
  bool operator()(const TextKey& a, const TextKey& b) const {
    return a.number == b.number && internal::AreEqualIgnoringCase(a.text, b.text);
  }
};

/// The first record that has each key: the one that a lookup finds.
template <class Record>
using FirstRecords = std::unordered_map<TextKey, const Record*, HashOfTextKey, EqualTextKeys>;

}  // namespace plddb::check
