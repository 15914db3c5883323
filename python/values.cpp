#include "values.h"

#include <limits>

namespace plddb::python {
namespace {

using descriptions::Field;
using descriptions::Kind;
using descriptions::Value;

[[noreturn]] void Raise(PyObject* type, const std::string& message) {
  PyErr_SetString(type, message.c_str());
  throw py::error_already_set();
}

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether a word of `stem` starts at `i`: after a small letter or digit, and before the last capital of several.
bool StartsWord(std::string_view stem, std::size_t i) {
  if (i == 0 || !IsUpper(stem[i])) return false;
  const char before = stem[i - 1];
  const bool endsCapitals = i + 1 < stem.size() && IsLower(stem[i + 1]);
  return IsLower(before) || IsDigit(before) || (IsUpper(before) && endsCapitals);
}

struct Range {
  long long least;
  long long most;
};

Range RangeOf(Kind kind) {
  switch (kind) {
    case Kind::kUnsigned8:
      return {0, std::numeric_limits<unsigned char>::max()};
    case Kind::kCount:
    case Kind::kUnsigned16:
      return {0, std::numeric_limits<unsigned short>::max()};
    case Kind::kUnsigned32:
      return {0, std::numeric_limits<unsigned int>::max()};
    default:
      return {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
  }
}

long long NumberIn(Range range, py::handle object, const std::string& name) {
  const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(object.ptr()));
  if (!index) throw py::error_already_set();
  int overflow = 0;
  const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
  if (overflow != 0 || number < range.least || number > range.most) {
    Raise(PyExc_OverflowError, name + " is a number from " + std::to_string(range.least) + " to " + std::to_string(range.most));
  }
  return number;
}

Text TextFrom(py::handle object) {
  Text text;
  if (object.is_none()) return text;
  text.bytes = ToBytes(object);
  text.isNull = false;
  if (text.bytes.find('\0') != std::string::npos) Raise(PyExc_ValueError, "a text has no null characters");
  return text;
}

void CheckIsList(const py::iterable& texts) {
  if (PyUnicode_Check(texts.ptr())) throw py::type_error("a list of texts is expected, not a str");
}

bool IsText(Kind kind) { return kind == Kind::kText || kind == Kind::kRange; }

}  // namespace

std::string ToBytes(py::handle text) {
  if (!PyUnicode_Check(text.ptr()))
    Raise(PyExc_TypeError, std::string("a str is expected, not ") + Py_TYPE(text.ptr())->tp_name);
  const auto bytes = py::reinterpret_steal<py::bytes>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
  if (!bytes) throw py::error_already_set();
  return bytes;
}

std::string BytesOf(py::handle data) {
  const py::object read = py::getattr(data, "read", py::none());
  const py::object content = read.is_none() ? py::reinterpret_borrow<py::object>(data) : read();
  if (PyBytes_Check(content.ptr())) return content.cast<std::string>();
  if (PyByteArray_Check(content.ptr())) return std::string(content.cast<py::bytearray>());
  return ToBytes(content);
}

py::object ToPython(const std::string& text) {
  PyObject* const object = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
  if (object == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::object>(object);
}

py::object ToPython(const char* text) { return text == nullptr ? py::object(py::none()) : ToPython(std::string(text)); }

py::list ToPython(const std::vector<std::string>& texts) {
  py::list list;
  for (const std::string& text : texts) list.append(ToPython(text));
  return list;
}

std::vector<std::string> TextsOf(const py::iterable& texts) {
  CheckIsList(texts);
  std::vector<std::string> values;
  for (const py::handle text : texts) values.push_back(ToBytes(text));
  return values;
}

std::vector<std::string> PathsOf(const py::iterable& paths) {
  CheckIsList(paths);
  std::vector<std::string> values;
  for (const py::handle path : paths) values.push_back(path.cast<Path>().bytes);
  return values;
}

int IntFrom(py::handle object, const std::string& name) {
  return static_cast<int>(NumberIn(RangeOf(Kind::kSigned32), object, name));
}

std::string PythonName(std::string_view stem) {
  if (stem == "USERCODEIntruction") return "usercode_instruction";  // the setter's spelling; the getter has none of it
  std::string name;
  for (std::size_t i = 0; i < stem.size(); ++i) {
    if (StartsWord(stem, i)) name += '_';
    name += IsUpper(stem[i]) ? static_cast<char>(stem[i] - 'A' + 'a') : stem[i];
  }
  return name;
}

Value FromPython(const Field& field, py::handle object, Text& storage) {
  if (IsText(field.kind)) {
    storage = TextFrom(object);
    return {storage.Get(), 0};
  }
  if (field.kind != Kind::kFlag) return {nullptr, NumberIn(RangeOf(field.kind), object, PythonName(field.name))};
  if (!PyBool_Check(object.ptr())) Raise(PyExc_TypeError, PythonName(field.name) + " is True or False");
  return {nullptr, object.is(py::handle(Py_True)) ? 1 : 0};
}

py::object ToPython(const Field& field, const void* record) {
  const Value value = field.get(record);
  if (IsText(field.kind)) return ToPython(value.text);
  if (field.kind == Kind::kFlag) return py::bool_(value.number != 0);
  return py::int_(value.number);
}

}  // namespace plddb::python

namespace pybind11::detail {

bool type_caster<plddb::python::Text>::load(handle source, bool) {
  if (!source.is_none() && !PyUnicode_Check(source.ptr())) return false;
  value = plddb::python::TextFrom(source);
  return true;
}

bool type_caster<plddb::python::Path>::load(handle source, bool) {
  PyObject* bytes = nullptr;
  if (PyUnicode_FSConverter(source.ptr(), &bytes) == 0) throw error_already_set();
  value.bytes = reinterpret_steal<pybind11::bytes>(bytes);
  return true;
}

bool type_caster<plddb::python::Unsigned>::load(handle source, bool) {
  if (PyIndex_Check(source.ptr()) == 0) return false;
  value.value = static_cast<unsigned int>(
      plddb::python::NumberIn({0, std::numeric_limits<unsigned int>::max()}, source, "an identifier or count"));
  return true;
}

}  // namespace pybind11::detail
