// The database: its families, copies of it, and the files that it was loaded from.

#include "module.h"

namespace plddb::python {
namespace {

using descriptions::Field;
using descriptions::FieldsOf;
using descriptions::Value;

// --- Fields -----------------------------------------------------------------------------------------------------------------

/// A field of a tree is that of its first database.
void AddTreeFields(TreeClass& cls) {
  for (const Field& row : FieldsOf<DeviceList>()) {
    const Field* const field = &row;
    const std::string name = PythonName(row.name);
    const auto get = [field](Tree& self) {
      return self.Parts().empty() ? py::object(py::none()) : ToPython(*field, &self.First());
    };
    const auto set = [field](Tree& self, const py::object& object) {
      Text storage;
      const Value value = FromPython(*field, object, storage);
      const Writing writing(self);
      field->set(&self.First(), value);
    };
    AddProperty(cls, name, py::cpp_function(get, py::is_method(cls)), py::cpp_function(set, py::is_method(cls)),
                DocumentationOf(row));
  }
}

// --- Families ---------------------------------------------------------------------------------------------------------------

std::vector<Held<FamilyList>> Families(Tree& tree) {
  std::vector<Held<FamilyList>> all;
  for (const Part& part : tree.Parts()) {
    for (int i = 0; FamilyList* const family = part.database->GetFamily(i); ++i) all.push_back(tree.Hold(family));
  }
  return all;
}

/// Deletes the first family for which `rule(family)` holds.
template <class Rule>
bool DeleteFamilyWhere(Tree& tree, Rule rule) {
  const Writing writing(tree);
  for (const Part& part : tree.Parts()) {
    for (int i = 0; const FamilyList* family = part.database->GetFamily(i); ++i) {
      if (!rule(*family)) continue;
      tree.DeleteFamily(*part.database, i);
      return true;
    }
  }
  return false;
}

bool DeleteFamilyNamed(Tree& tree, const Text& name) {
  return DeleteFamilyWhere(tree, [&](const FamilyList& family) {
    return !name.isNull && family.GetName() != nullptr && name.bytes == family.GetName();
  });
}

bool DeleteFamilyAt(Tree& tree, long long position) {
  return DeleteFamilyWhere(tree, [&](const FamilyList&) { return position-- == 0; });
}

py::object ShowTree(const Tree& self) {
  std::size_t families = 0;
  std::size_t devices = 0;
  for (const Part& part : self.Parts()) {
    families += part.database->GetFamilyCount();
    for (int i = 0; const FamilyList* family = part.database->GetFamily(i); ++i) devices += family->GetDeviceCount();
  }
  return ToPython("<plddb.Database of " + Counted(families, "family", "families") + ", " +
                  Counted(devices, "device", "devices") + ">");
}

// --- Copies -----------------------------------------------------------------------------------------------------------------

std::shared_ptr<Tree> Copy(Tree& self) {
  std::vector<Part> parts;
  {
    const Reading reading(self);
    for (const Part& part : self.Parts()) parts.push_back({part.file, CopyDeviceList(*part.database)});
  }
  return std::make_shared<Tree>(std::move(parts));
}

/// The databases of `other` become families of the last one.
void Merge(Tree& self, Tree& other) {
  if (&self == &other) return;
  const std::shared_ptr<Tree> copy = Copy(other);
  const Writing writing(self);
  for (const Part& part : copy->Parts()) self.Last().AddNewDeviceList(part.database.get());
}

/// A null text of the other database keeps the old one, as in the library.
void Assign(Tree& self, Tree& other) {
  if (&self == &other) return;
  const std::shared_ptr<Tree> copy = Copy(other);
  const Writing writing(self);
  DeviceList& taken = copy->First();
  if (taken.GetVersion() == nullptr) taken.SetVersion(self.First().GetVersion());
  if (taken.GetComment() == nullptr) taken.SetComment(self.First().GetComment());
  self.TakeOver(*copy);
}

// --- The class --------------------------------------------------------------------------------------------------------------

void AddClass(TreeClass& cls) {
  AddTreeFields(cls);
  cls.def(py::init([] { return std::make_shared<Tree>(std::vector<Part>()); }), "An empty database.")
      .def_property_readonly(
          "families", [](Tree& self) { return ToList(Families(self)); }, "All families, in search order: a new list of them.")
      .def_property_readonly(
          "files",
          [](const Tree& self) {
            std::vector<std::string> files;
            for (const Part& part : self.Parts()) files.push_back(part.file);
            return ToPython(files);
          },
          "The files that the database was loaded from, in search order.")
      .def(
          "new_family",
          [](Tree& self) {
            const Writing writing(self);
            return self.Hold(self.Last().NewFamily());
          },
          "Appends an empty family and returns it.")
      .def("delete_family", &DeleteFamilyNamed, py::arg("name"),
           "Deletes the first family of exactly this name with its devices; False when there is none. Using what was deleted\n"
           "raises DeletedError.")
      .def("delete_family", &DeleteFamilyAt, py::arg("position"), "The same for the family at this position, from 0.")
      .def("copy", &Copy, "A database that shares nothing with this one.")
      .def("assign_device_list", &Assign, py::arg("other"),
           "Deletes all families and puts copies of those of the other database in their place. Nothing happens with this\n"
           "database itself.")
      .def("add_new_device_list", &Merge, py::arg("other"),
           "Appends copies of all families of the other database; names are not compared. Nothing happens with this database\n"
           "itself.")
      .def("__repr__", &ShowTree);
}

}  // namespace

void AddDatabase(Classes& classes) { AddClass(classes.tree); }

}  // namespace plddb::python
