#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "Find.h"
#include "databases.h"

/// \file
/// What find, show and list share: the keys, and where devices are described.

namespace tool {

/// A key that is an option of find.
struct KeyOption {
  plddb::find::Key key;  ///< Its NameOf is the option's name.
  const char* help;
};

extern const std::array<KeyOption, 6> kKeys;

/// What the library searches.
plddb::find::Databases ToSearch(const std::vector<Database>& databases);

/// Where a device is described.
struct Place {
  const Database* database;
  const plddb::Element* family;
  const plddb::Element* device;
};

/// The place of `match` among `databases`, which were searched, and loaded with their outlines.
Place PlaceOf(const std::vector<Database>& databases, const plddb::find::Match& match);

/// The keys by which a device was found, or how it was: "name, code-name", "beginning of family", "begins with".
std::string MatchedBy(const plddb::find::Match& match);

/// "Begins with XC9572XL; after it: package VQ44, lead-free; speed grade -10": what a mark on a chip tells. In lines.
std::string RestOfMark(const plddb::find::Match& match);

/// The names and alias names of all families. Lent by the families.
std::vector<std::string_view> FamilyNames(const std::vector<Database>& databases);

/// Each of `texts` once, at its first place.
std::vector<std::string_view> EachOnce(const std::vector<std::string_view>& texts);

}  // namespace tool
