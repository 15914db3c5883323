#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "DeviceInfo.h"
#include "DeviceList.h"

/// All devices that a text may mean, and why.
///
/// Texts go in, values come out: nothing here prints, touches files, changes a database or throws anything but std::bad_alloc.
/// Names are compared by the rules of the lookups (DeviceList): the case of letters does not count, unless a key states
/// otherwise. A lookup returns the first device; these functions return all, those of earlier databases and families first.
namespace plddb::find {

/// What is searched, in this order. Null pointers are skipped.
using Databases = std::vector<const DeviceList*>;

/// The text of a device that a text is compared with.
enum class Key {
  kName,
  kCodeName,
  kAlias,     ///< On purpose: those of the vendor "Quorel" count for no lookup, and not here.
  kId,        ///< The identifier for JTAG, under the scan mask.
  kIspId,     ///< The identifier for ISP, under the scan mask.
  kPon,       ///< An ordering number of a package: backup or alias; failing that, without what follows its last '-'.
  kJdf,       ///< The JEDEC device file of a package, by its first six characters and its length; the case of letters counts.
  kEntity,    ///< The entity name of a package.
  kFuses,     ///< The fuse count, in decimal digits; aliases of counts included.
  kFullName,  ///< A name from a fuse-map file (FindFullName).
  kFamily,    ///< The name or alias name of the family.
  kPackage,   ///< The type of a package.
};

/// "name", "code-name", "id", "id for ISP", "pon", "full name", ...
const char* NameOf(Key key);

/// How a text agrees with a key.
enum class Kind {
  kExact,     ///< It is the key, whole.
  kBegins,    ///< The key begins with it.
  kContains,  ///< The key contains it.
  kPattern,   ///< The key matches the pattern.
  kMark,      ///< It begins with the key: a mark on a chip, or an ordering number that is not described.
};

/// "exact", "begins", "contains", "pattern", "mark".
const char* NameOf(Kind kind);

/// What a mark on a chip shows beyond the device.
struct Mark {
  std::string name;                  ///< The name or ordering number that the text begins with, as in the database.
  std::string package;               ///< The package type of the device, or as in the text if that is not described.
  bool isPackageDescribed = false;   ///< Whether the device has a package of that type.
  bool isLeadFree = false;           ///< The package's letters end in an additional G, or the mark in N or G.
  std::string speed;                 ///< The speed grade, such as "-10"; empty: not given.
  char temperature = '\0';           ///< The letter of the temperature grade; 0: not given.
  std::vector<std::string> unknown;  ///< What is not understood, in the order of the text.
};

/// "commercial", "industrial", ...; empty for a letter that is no temperature grade.
const char* TemperatureName(char letter);

/// A device, and why it is one.
struct Match {
  const DeviceInfo* device;
  std::size_t database;  ///< Its index in the databases.
  Kind kind;
  std::vector<Key> keys;          ///< Those that agree, in the order of Key; at least one.
  std::optional<Mark> mark = {};  ///< Of Kind::kMark.
};

using Matches = std::vector<Match>;

/// Whether `matches` answer a question for one device with several: exact matches by a key that identifies a device. Families,
/// package types, fuse counts and parts of names are shared by devices.
bool IsAmbiguous(const Matches& matches);

/// The devices that `text` may mean, by the first of these rules that finds any. All matches are of one kind.
///
///   1. a name, code name, alias name, id, ordering number, JEDEC device file, entity name or fuse count
///   2. a family, a package type
///   3. with '*' (any characters) or '?' (one character) a pattern of a name, family, package type or ordering number
///   4. the beginning of one of these
///   5. a part of one of these
///   6. a mark on a chip: the longest name that the text begins with, also one after a missing "XC"; the name has 4 characters
///      or more, or all of the rest is understood. A number at its end is not cut. A maker or family before it is skipped;
///      if nothing matches, hyphens and blanks within the name are ignored, too.
///
/// White space around the text is ignored. If the text finds nothing as it is, dashes and blanks of printed pages are taken as
/// '-' and ' '. `family`, unless empty, limits the search to families of this name or alias name.
Matches Find(const Databases& databases, std::string_view text, std::string_view family = {});

/// The devices that have `text` as their `key`, exactly; none for kFullName.
Matches FindByKey(const Databases& databases, Key key, std::string_view text, std::string_view family = {});

/// The devices of this name that have a package of this type; in the type the case of letters counts.
Matches FindPackage(const Databases& databases, std::string_view type, std::string_view name, std::string_view family = {});

/// The devices that a fuse-map file of `fuses` fuses names by `fullName`. As GetDeviceWithFuseMapAndFullNameEx finds them;
/// failing that, without the speed grade that such files write between name and package: XC9572XL-10-VQ44.
Matches FindFullName(const Databases& databases, unsigned long fuses, std::string_view fullName, std::string_view family = {});

/// The fuse count that `text` is in decimal digits; 0, which is no count, for other texts.
unsigned long ParseFuses(std::string_view text);

/// \name What is near
///@{

/// Up to five texts of `known` that `wanted` was probably meant to be: those that begin with it, or else the nearest.
std::vector<std::string> Near(std::string_view wanted, const std::vector<std::string_view>& known);

/// The texts of all devices by which `key` finds them: names, code names, alias names, ordering numbers, JEDEC device files,
/// families, package types; none for other keys. Lent by the databases.
std::vector<std::string_view> TextsOf(const Databases& databases, Key key);

/// Up to five names, code names, alias names and families near to `text`, by Near; by one key alone with the second form.
std::vector<std::string> NearNames(const Databases& databases, std::string_view text);
std::vector<std::string> NearNames(const Databases& databases, std::string_view text, Key key);

/// Why FindPackage found nothing: "the case of letters counts in package types: TQ100"; empty when unknown.
std::string WhyNoPackage(const Databases& databases, std::string_view type, std::string_view name);

/// Why FindFullName found nothing: the name has another fuse count, or access mode; empty when unknown.
std::string WhyNoFullName(const Databases& databases, unsigned long fuses, std::string_view fullName);
///@}

}  // namespace plddb::find
