#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DeviceInfo.h"
#include "DeviceList.h"
#include "DeviceListOwner.h"
#include "FamilyList.h"

/// Device descriptions: XML files that fill a device database. docs/descriptions.md explains their form.
namespace plddb {

/// A mistake in a description file, and its place.
struct Fault {
  std::string file;  ///< The path of the file, or the name given with the text.
  int line = 1;      ///< 1-based.
  int column = 1;    ///< 1-based, in bytes; a byte order mark does not count.
  std::string text;  ///< The mistake and what was expected, in one line.
};

/// "FILE:LINE:COLUMN: error: TEXT", printable.
std::string ToString(const Fault& fault);

/// The result of loading: a database and no faults, or faults and no database (null). Nothing is ever half-loaded.
struct LoadResult {
  DeviceListOwner database;   ///< Null if there are faults.
  std::vector<Fault> faults;  ///< All faults of the file, in file order, but at most 10,000.
};

/// An attribute of an element. An Outline holds its texts.
struct Attribute {
  std::string_view name;   ///< As written.
  std::string_view value;  ///< With references such as "&#65;" resolved.
  int line = 0;            ///< Of the value's first byte, as in Fault; 0 if no file was read.
  int column = 0;          ///< Likewise.
};

/// An element of a description file. An Outline holds its texts.
struct Element {
  std::string_view name;              ///< As written.
  int line = 0;                       ///< Of its '<', as in Fault; 0 if no file was read.
  int column = 0;                     ///< Likewise.
  std::vector<Attribute> attributes;  ///< In file order.
  std::vector<Element> children;      ///< In file order.
};

/// A comment of a description file. An Outline holds its text.
struct Comment {
  /// Its place relative to its element. Beside means last on the same line, after the element or its start tag.
  enum class Place { kBefore, kBesideStart, kBeforeEnd, kBeside };

  std::string_view text;  ///< Between "<!--" and "-->".
  Place place = Place::kBefore;
  int line = 0;  ///< Of the '<' of its element; 0 for the file itself. A comment after the root is before the end of the file.
  int column = 0;  ///< Likewise.
};

/// Elements, and the texts that they refer to. Copies share the texts, which live as long as any copy.
struct Outline {
  Element root;                        ///< With everything in it.
  std::shared_ptr<const void> texts;   ///< Holds the names and values of the elements.
  std::vector<Comment> comments = {};  ///< In file order.
};

/// The content of a file.
struct FileText {
  std::string text;
  std::string failure;  ///< Why the file cannot be read; empty if it was read.
};

/// Reads a description file, which is 64 MiB at most.
FileText ReadDescriptionFile(const std::string& path);

/// Loads a description file. A file that cannot be read, or is larger than 64 MiB, is a fault at 1:1. A pipe or a device is
/// read to its end like a file, or up to that limit. std::bad_alloc passes through. If `outline` is given, it is set to the
/// outline of the file: the root's nth Family element describes the nth family, the nth Device element in it the family's nth
/// device, and likewise packages and adapters. If there are faults, it does not change.
LoadResult LoadDescriptions(const std::string& path, Outline* outline = nullptr);

/// Loads descriptions from `text`; faults report the name `file`. Otherwise like LoadDescriptions.
LoadResult ParseDescriptions(std::string_view text, const std::string& file, Outline* outline = nullptr);

/// The folder of the descriptions that were installed with the library. If share/plddb next to the folder of the running
/// program contains an *.xml file, it is that folder, so an installation may be moved as a whole; otherwise it is the folder
/// set when the library was built. It need not exist.
std::string DataFolder();

/// Describes `device` as WriteDescriptions does, as an element without places.
Outline Describe(DeviceInfo& device);

/// Describes `family` as WriteDescriptions does, but without its devices.
Outline Describe(FamilyList& family);

/// Lends the attribute `name` of `element`; null if it is left out.
const Attribute* FindAttribute(const Element& element, std::string_view name);

/// Adds to `described`, an element from Describe, the places of its values in a file: `outline` is the element of that file
/// that created the record. Records of lists have all their fields, including those with default values. A value that is not
/// written in the file has line 0. The texts are those of `described`.
///
/// A list may be given as texts in attributes of the enclosing element, one for each column, and as elements. The records of
/// the elements come last; a record created by a text has the place of that text.
Element Located(const Element& described, const Element& outline);

/// Writes a description file of `database`: families and devices in order, attributes in a fixed order, without defaults and
/// values that are derived on loading. Loading the file gives an equal database, and writing that gives the same text.
/// docs/descriptions.md lists the states that cannot be expressed in a file.
std::string WriteDescriptions(const DeviceList& database);

/// A database to write, and the outline of the file it was loaded from, or null. Neither has changed since. Both are borrowed.
struct Source {
  const DeviceList* database = nullptr;
  const Outline* outline = nullptr;
};

/// Writes one description file of all `sources`, whose databases are not null: the families of each in turn, Version and
/// Comment of the first. Comments of their outlines stay with their elements, and the schema named by the first root is kept.
/// Nothing is merged or left out. A text that exceeds the limits of a file is written anyway, and will not load.
std::string WriteDescriptions(const std::vector<Source>& sources);

}  // namespace plddb
