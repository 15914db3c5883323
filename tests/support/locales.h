#pragma once

#include <clocale>
#include <string>

namespace support {

/// Runs `check(locale name)` in every locale of this list that the machine has ("C" is always there), and sets the old locale
/// again. The list has the well-known offenders: Turkish letters, one-byte character sets, the comma as decimal point.
template <typename Check>
void ForEachLocale(Check check) {
  const std::string old = std::setlocale(LC_ALL, nullptr);
  for (const char* const name :
       {"C", "C.UTF-8", "en_US.UTF-8", "de_DE.UTF-8", "de_DE.ISO-8859-1", "tr_TR.UTF-8", "tr_TR.ISO-8859-9"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) check(std::string(name));
  }
  std::setlocale(LC_ALL, old.c_str());
}

}  // namespace support
