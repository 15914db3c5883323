#pragma once

#include <cstddef>
#include <iterator>
#include <random>
#include <string>

namespace support {

/// Texts strung together from what the setters' text formats are made of: delimiters, every kind of white space, signs, numbers
/// around the limits, halves of words. The same seed gives the same texts on every machine.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned int seed) : engine_(seed) {}

  /// A text of up to eight pieces; lent until the next call.
  const std::string& Next() {
    text_.clear();
    for (auto pieces = Below(9); pieces > 0; --pieces) text_ += kPieces[Below(std::size(kPieces))];
    return text_;
  }

  /// A number below `limit`. Not a distribution of the standard library: these differ between libraries.
  std::size_t Below(std::size_t limit) { return engine_() % limit; }

 private:
  static constexpr const char* kPieces[] = {
      " ",
      " ",
      "\t",
      "\n",
      "\r",
      "\v",
      "\f",
      ";",
      ";",
      ";",
      "\"",
      "\"",
      "to",
      "to",
      " to ",
      "t",
      "o",
      ",",
      "-",
      "-",
      "+",
      "0",
      "1",
      "7",
      "31",
      "010",
      "0x10",
      "x",
      "1.5",
      "\xA0",
      "\xFF",
      "2147483647",
      "2147483648",
      "-2147483648",
      "-2147483649",
      "4294967295",
      "4294967296",
      "99999999999",
      "9223372036854775807",
      "9223372036854775808",
      "-9223372036854775808",
      "-9223372036854775809",
      "18446744073709551616",
      "99999999999999999999999",
  };

  std::mt19937 engine_;
  std::string text_;
};

}  // namespace support
