#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "DeviceInfo.h"
#include "foundation/characters.h"

/// \file
/// How the texts of fuse-map files, boundary-scan descriptions and JEDEC device files are compared with those of devices.

namespace plddb::internal {

/// Two fuse counts find devices that are stored with another one.
struct FuseAlias {
  unsigned long asked;
  unsigned int stored;

  bool Accepts(const DeviceInfo& device, unsigned long fuseCount) const {
    return fuseCount == asked && device.GetFuseNumber() == stored;
  }
};
inline constexpr FuseAlias kAlias5892 = {5892, 5828};
inline constexpr FuseAlias kAlias4988064 = {4988064, 4982712};

/// The character of an entity name that one of a backup ordering number becomes; spaces are dropped. On purpose not the rule of
/// Package::GetEntityName.
constexpr char ToEntityCharacter(char c) { return c == '-' || c == '/' ? '_' : ToLower(c); }

/// On purpose: of the names of JEDEC device files, so many characters and the length are compared.
inline constexpr std::size_t kComparedJdfCharacters = 6;

/// Whether the text ends in "/1" when its spaces are left out.
inline bool EndsInSlashOne(std::string_view text) {
  const auto one = text.find_last_not_of(' ');
  if (one == text.npos || text[one] != '1') return false;
  const auto slash = text.substr(0, one).find_last_not_of(' ');
  return slash != text.npos && text[slash] == '/';
}

/// Calls `visit(char)` for each character of the normal form of a full name until it returns false; returns whether it never
/// did. The normal form has no spaces, ends before the last '-' and is upper case:
///
///   "abc-7x"       ABC
///   "ab c-7x/1"    ABC/1     a closing "/1" is kept when something was cut
///   "abc/1"        ABC/1
///   "-7x"          -7X       a '-' in front is not a place to cut
template <typename Visit>
bool ForEachNormalCharacter(std::string_view text, Visit visit) {
  const auto dash = text.rfind('-');
  const bool isCut = dash != text.npos && text.find_first_not_of(' ') < dash;
  for (const char c : text.substr(0, isCut ? dash : text.npos)) {
    if (c != ' ' && !visit(ToUpper(c))) return false;
  }
  return !isCut || !EndsInSlashOne(text) || (visit('/') && visit('1'));
}

inline std::string NormalForm(std::string_view text) {
  std::string form;
  ForEachNormalCharacter(text, [&](char c) {
    form.push_back(c);
    return true;
  });
  return form;
}

}  // namespace plddb::internal
