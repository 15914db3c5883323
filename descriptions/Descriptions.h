#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DeviceInfo.h"
#include "DeviceList.h"
#include "DeviceListOwner.h"
#include "FamilyList.h"

/// Device descriptions: XML files that fill a device database. docs/descriptions.md says what may stand in them.
namespace plddb {

/// What is wrong in a description file, and where.
struct Fault {
  std::string file;  ///< The path of the file, or the name that came with the text.
  int line = 1;      ///< 1-based.
  int column = 1;    ///< 1-based, in bytes; a byte order mark does not count.
  std::string text;  ///< What is wrong, and what was expected; one line.
};

/// "FILE:LINE:COLUMN: error: TEXT", printable.
std::string ToString(const Fault& fault);

/// What a load gives: a database and no faults, or faults and no database (null). Nothing is ever half-loaded.
struct LoadResult {
  DeviceListOwner database;   ///< Null when there are faults.
  std::vector<Fault> faults;  ///< All faults of the file, in file order; of a hopeless one the first 10,000.
};

/// An attribute of an element. Its texts lie in an Outline.
struct Attribute {
  std::string_view name;   ///< As it was written.
  std::string_view value;  ///< With references such as "&#65;" resolved.
  int line = 0;            ///< Of the value's first byte, as in Fault; 0 where no file was read.
  int column = 0;          ///< Likewise.
};

/// An element of a description file. Its texts lie in an Outline.
struct Element {
  std::string_view name;              ///< As it was written.
  int line = 0;                       ///< Of its '<', as in Fault; 0 where no file was read.
  int column = 0;                     ///< Likewise.
  std::vector<Attribute> attributes;  ///< In file order.
  std::vector<Element> children;      ///< In file order.
};

/// A comment of a description file. Its text lies in an Outline.
struct Comment {
  /// Where it is, seen from its element. Beside: after it, or after its start tag, in the same line, as the line's last.
  enum class Place { kBefore, kBesideStart, kBeforeEnd, kBeside };

  std::string_view text;  ///< Between "<!--" and "-->".
  Place place = Place::kBefore;
  int line = 0;    ///< Of the '<' of its element; 0 for the file itself, whose end a comment after the root is before.
  int column = 0;  ///< Likewise.
};

/// Elements, and the texts that they show. Copies share the texts, which live as long as any of them.
struct Outline {
  Element root;                        ///< With all that is in it.
  std::shared_ptr<const void> texts;   ///< What the elements' names and values lie in.
  std::vector<Comment> comments = {};  ///< In file order.
};

/// What is in a file.
struct FileText {
  std::string text;
  std::string failure;  ///< Why the file cannot be read; empty when it was.
};

/// Reads a description file, which is 64 MiB at most.
FileText ReadDescriptionFile(const std::string& path);

/// Loads a description file. A file that cannot be read, or is larger than 64 MiB, is a fault at 1:1. A pipe or a device is
/// read to its end like a file, or up to that limit. std::bad_alloc passes through. With `outline`, it becomes that of the
/// file: the root's nth Family element made the nth family, the nth Device element in that the family's nth device, and
/// likewise packages and adapters. It stays as it was when there are faults.
LoadResult LoadDescriptions(const std::string& path, Outline* outline = nullptr);

/// Loads descriptions from `text`; `file` is the name that faults carry. Otherwise like LoadDescriptions.
LoadResult ParseDescriptions(std::string_view text, const std::string& file, Outline* outline = nullptr);

/// The folder of the descriptions that were installed with the library: share/plddb beside the folder of the running program,
/// where that has any *.xml file, so that an installation may be moved as a whole; else the folder that was set when the
/// library was built. It need not exist.
std::string DataFolder();

/// What WriteDescriptions writes of `device`, as an element without places.
Outline Describe(DeviceInfo& device);

/// What WriteDescriptions writes of `family`, but for its devices.
Outline Describe(FamilyList& family);

/// The attribute `name` of `element`; null where it is left out. Lends it.
const Attribute* FindAttribute(const Element& element, std::string_view name);

/// `described`, an element that Describe gives, with the places of its values in a file: `outline` is the element of that file
/// which made the record. Records of lists have all their fields, those with their defaults included. What the file does not
/// write has line 0. The texts are those of `described`.
///
/// A list may be given as texts in attributes of the element around it, one for each column, and as elements. The records of
/// the elements come last; the place of a record that texts made is that of the text which made it.
Element Located(const Element& described, const Element& outline);

/// The description file that describes `database`: families and devices in order, attributes in a fixed order, what has its
/// default or what the loader derives left out. Loading it gives an equal database, and writing that gives the same text; what
/// no file can say is listed in docs/descriptions.md.
std::string WriteDescriptions(const DeviceList& database);

/// A database to write, and the outline of the file that it was loaded from; null: none. Neither has changed since. Both are
/// borrowed.
struct Source {
  const DeviceList* database = nullptr;
  const Outline* outline = nullptr;
};

/// The description file that describes all of `sources`, whose databases are not null: their families one after the other,
/// Version and Comment of the first. Comments of their outlines are kept at their elements, and so is the schema that the first
/// root names. Nothing is joined or left out. A text that exceeds what a file may hold is written as well, and
/// will not load.
std::string WriteDescriptions(const std::vector<Source>& sources);

}  // namespace plddb
