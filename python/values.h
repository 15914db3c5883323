#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "descriptions/fields.h"

/// \file
/// Values on their way between Python and the library.

namespace plddb::python {

namespace py = pybind11;

/// The bytes of a str: UTF-8, with what surrogateescape made of other bytes turned back. Throws for any other object.
std::string ToBytes(py::handle text);

/// The bytes of a text or of data: of a str as above, those of bytes or a bytearray, or what an open file reads.
std::string BytesOf(py::handle data);

/// The str of bytes, those that are no UTF-8 by surrogateescape; None for null.
py::object ToPython(const char* text);
py::object ToPython(const std::string& text);

/// A list of str.
py::list ToPython(const std::vector<std::string>& texts);

/// The texts of an iterable of str. On purpose: a str is refused, as its letters would be taken for the texts.
std::vector<std::string> TextsOf(const py::iterable& texts);

/// The paths of an iterable of str, bytes or os.PathLike; a str is refused, too.
std::vector<std::string> PathsOf(const py::iterable& paths);

/// An argument that the library takes as a text: a str, or None for null.
struct Text {
  std::string bytes = {};
  bool isNull = true;

  const char* Get() const { return isNull ? nullptr : bytes.c_str(); }
};

/// An argument that names a file or folder: a str, bytes or os.PathLike.
struct Path {
  std::string bytes = {};
};

/// An unsigned number of 32 bits. Others are an OverflowError.
struct Unsigned {
  unsigned int value = 0;
};

/// A signed number of 32 bits. Throws OverflowError for others, which calls them `name`, and TypeError.
int IntFrom(py::handle object, const std::string& name);

/// "ir_length" for "IRLength": the name in Python of what the library calls `stem`.
std::string PythonName(std::string_view stem);

/// A value of the kind that a field has, read from Python. Texts are kept in `storage`. Throws OverflowError for numbers that
/// do not fit, ValueError for a text with a null character, TypeError for objects of other types.
descriptions::Value FromPython(const descriptions::Field& field, py::handle object, Text& storage);

/// What a field holds.
py::object ToPython(const descriptions::Field& field, const void* record);

/// What is known about a field: its unit, its range, its meaning.
std::string DocumentationOf(const descriptions::Field& field);

}  // namespace plddb::python

namespace pybind11::detail {

template <>
struct type_caster<plddb::python::Text> {
  PYBIND11_TYPE_CASTER(plddb::python::Text, const_name("Optional[str]"));
  bool load(handle source, bool convert);
};

template <>
struct type_caster<plddb::python::Path> {
  PYBIND11_TYPE_CASTER(plddb::python::Path, const_name("os.PathLike"));
  bool load(handle source, bool convert);
};

template <>
struct type_caster<plddb::python::Unsigned> {
  PYBIND11_TYPE_CASTER(plddb::python::Unsigned, const_name("int"));
  bool load(handle source, bool convert);
};

}  // namespace pybind11::detail
