#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Descriptions.h"
#include "DeviceList.h"

/// Finds mistakes in device descriptions that load: values that contradict each other, and devices that lookups will not find.
/// docs/check.md has a paragraph for each code.
namespace plddb::check {

/// An error can never work, or a value is lost; a warning may be intended.
enum class Severity { kWarning, kError };

/// A kind of finding.
struct Code {
  std::string_view name;      ///< "id-shadowed".
  Severity severity;          ///< Of all its findings.
  std::string_view meaning;   ///< In one line.
  std::string_view formerly;  ///< A name that it had before; empty without one.
};

/// All codes, in the order of the documentation.
std::vector<Code> Codes();

/// The code of this name or former name; null without one.
const Code* FindCode(std::string_view name);

/// A place in a file, as in Fault.
struct Place {
  std::string file;
  int line = 1;
  int column = 1;
};

/// A mistake, and its place: that of the value, or of the element that lacks it.
struct Finding {
  Place place;
  std::string_view code;  ///< Code::name.
  Severity severity = Severity::kWarning;
  std::string text;            ///< One line, printable.
  std::vector<Place> related;  ///< The other record that the text names, if any.
};

/// A description file that was loaded. Borrows all but the name.
struct Description {
  std::string file;                  ///< The name that findings carry.
  const DeviceList* database;        ///< What was loaded from the file; never null.
  const Outline* outline = nullptr;  ///< The file's; never null.
  std::string_view text = {};        ///< The file's, for its comments that allow findings; may be empty.
};

/// The findings of `descriptions`, which form one database: lookups search them in this order. Findings come in the order of
/// the descriptions and of the places in them. A comment `<!-- plddb: allow CODE -->` leaves out those of the next element's
/// start tag. std::bad_alloc passes through.
std::vector<Finding> Check(const std::vector<Description>& descriptions);

/// A description file as it is.
struct Source {
  std::string file;     ///< The name that findings carry.
  std::string text;     ///< What is in the file.
  std::string failure;  ///< Why the file could not be read; empty when it could.
};

/// Loads the sources, and checks those that load as one database. Mistakes in the others are findings, too.
std::vector<Finding> CheckTexts(const std::vector<Source>& sources);

}  // namespace plddb::check
