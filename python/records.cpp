// The records of a database: their fields, and how they are made and deleted.

#include "foundation/printed_forms.h"
#include "module.h"

namespace plddb::python {
namespace {

using descriptions::Field;
using descriptions::FieldsOf;
using descriptions::FieldTable;
using descriptions::Value;

// --- Fields -----------------------------------------------------------------------------------------------------------------

/// The properties of a class of records, and the setters of lists that take a text.
template <class T, class Class>
void AddFields(Class& cls, const FieldTable& fields) {
  for (const Field& row : fields) {
    const Field* const field = &row;
    const std::string name = PythonName(row.name);
    const auto set = [field](const RecordOf<T>& self, const py::object& object) {
      Text storage;
      const Value value = FromPython(*field, object, storage);
      const Writing writing(*self.GetTree());
      field->set(&*self, value);
    };
    if (row.get == nullptr) {
      const std::string method = "set_" + name;
      py::setattr(
          cls, method.c_str(),
          py::cpp_function(set, py::name(method.c_str()), py::is_method(cls), py::arg("text"), DocumentationOf(row).c_str()));
    } else {
      const auto get = [field](const RecordOf<T>& self) { return ToPython(*field, &*self); };
      AddProperty(cls, name, py::cpp_function(get, py::is_method(cls)), py::cpp_function(set, py::is_method(cls)),
                  DocumentationOf(row));
    }
  }
}

// --- Lists ------------------------------------------------------------------------------------------------------------------

/// All that `at(position)` gives, held.
template <class T, class At>
std::vector<Held<T>> HoldAll(Tree& tree, At at) {
  std::vector<Held<T>> all;
  for (int i = 0; T* const record = at(i); ++i) all.push_back(tree.Hold(record));
  return all;
}

// --- Deleting ---------------------------------------------------------------------------------------------------------------

/// Destroys what the library hands over.
template <class Which>
bool DeleteDevice(const Family& self, Which which) {
  const Writing writing(*self.GetTree());
  const std::unique_ptr<DeviceInfo> device(self->DeleteDevice(which));
  if (device == nullptr) return false;
  self.GetTree()->MarkDeleted(*device);
  return true;
}

void DeleteAdapter(const PackageRecord& self, int position) {
  const Writing writing(*self.GetTree());
  if (const Adapter* const adapter = self->GetAdapter(position)) self.GetTree()->MarkDeleted(*adapter);
  self->RemoveAdapter(position);
}

void DeleteAdapters(const PackageRecord& self) {
  const Writing writing(*self.GetTree());
  for (int i = 0; const Adapter* adapter = self->GetAdapter(i); ++i) self.GetTree()->MarkDeleted(*adapter);
  self->ClearAdapterList();
}

// --- Showing ----------------------------------------------------------------------------------------------------------------

py::object Representation(const char* kind, const char* name, const std::string& rest) {
  const std::string what = name == nullptr ? "without name" : name;
  return ToPython("<plddb." + std::string(kind) + " " + what + rest + ">");
}

py::object DeletedRepresentation(const char* kind) { return ToPython("<plddb." + std::string(kind) + " (deleted)>"); }

py::object ShowFamily(const Family& self) {
  if (self.IsDeleted()) return DeletedRepresentation("Family");
  return Representation("Family", self->GetName(), ", " + Counted(self->GetDeviceCount(), "device", "devices"));
}

py::object ShowDevice(const Device& self) {
  if (self.IsDeleted()) return DeletedRepresentation("Device");
  const FamilyList* const family = self->GetFamilyObject();
  std::string rest = family == nullptr || family->GetName() == nullptr ? "" : std::string(" of ") + family->GetName();
  if (self->GetjtagDeviceID() != 0) rest += ", IDCODE " + internal::Hex(self->GetjtagDeviceID(), 8);
  return Representation("Device", self->GetName(), rest);
}

py::object ShowPackage(const PackageRecord& self) {
  if (self.IsDeleted()) return DeletedRepresentation("Package");
  return Representation("Package", self->GetType(), self->GetPON() == nullptr ? "" : std::string(", ") + self->GetPON());
}

py::object ShowAdapter(const AdapterRecord& self) {
  if (self.IsDeleted()) return DeletedRepresentation("Adapter");
  const char* const vendor = self->GetVendorName();
  return Representation("Adapter", self->GetAdapterName(), vendor == nullptr ? "" : std::string(" of ") + vendor);
}

// --- Packages ---------------------------------------------------------------------------------------------------------------

/// The library counts packages in 16 bits, and does not find those after the last one that it can count.
void CheckRoom(const PackageList& packages, int more) {
  constexpr int kMost = 65535;
  if (packages.GetPackageCount() + more <= kMost) return;
  PyErr_SetString(PyExc_OverflowError, "a device has at most 65,535 packages");
  throw py::error_already_set();
}

Held<Package> NewPackage(const Device& self) {
  const Writing writing(*self.GetTree());
  CheckRoom(*self->GetDevicePackage(), 1);
  return self.GetTree()->Hold(self->GetDevicePackage()->NewPackage());
}

void CopyPackages(const Device& self, const Device& other) {
  const Writing writing(*self.GetTree());
  CheckRoom(*self->GetDevicePackage(), other->GetDevicePackage()->GetPackageCount());
  self->GetDevicePackage()->CopyPackageList(other->GetDevicePackage());
}

// --- Classes ----------------------------------------------------------------------------------------------------------------

void AddFamily(FamilyClass& cls) {
  AddFields<FamilyList>(cls, FieldsOf<FamilyList>());
  const auto insert = [](DeviceInfo* (FamilyList::*add)(int)) {
    return [add](const Family& self, int position) {
      const Writing writing(*self.GetTree());
      return self.GetTree()->Hold(((*self).*add)(position));
    };
  };
  cls.def_property_readonly(
         "devices",
         [](const Family& self) {
           return ToList(HoldAll<DeviceInfo>(*self.GetTree(), [&](int i) { return self->GetDevice(i); }));
         },
         "The devices in load order: a new list of them.")
      .def_property_readonly(
          "file", [](const Family& self) { return ToPython(self.GetTree()->FileOf(*self)); },
          "The file that the family was loaded from, or \"\".")
      .def_property_readonly(
          "device_count", [](const Family& self) { return self->GetDeviceCount(); }, "The number of devices, modulo 65,536.")
      .def(
          "new_device",
          [](const Family& self) {
            const Writing writing(*self.GetTree());
            return self.GetTree()->Hold(self->NewDevice());
          },
          "Appends a device of this family and returns it.")
      .def("insert_new_device", insert(&FamilyList::InsertNewDevice), py::arg("position"),
           "Makes a new device the one at this position, counted from 1; None outside the list.")
      .def("add_new_device", insert(&FamilyList::AddNewDevice), py::arg("position"),
           "Puts a new device right after this position, counted from 1, 0 in front of all; None outside the list.")
      .def("delete_device", &DeleteDevice<int>, py::arg("position"),
           "Deletes the device at this position, counted from 1; False outside the list. Using it raises DeletedError.")
      .def(
          "delete_device", [](const Family& self, const Text& codeName) { return DeleteDevice(self, codeName.Get()); },
          py::arg("code_name"), "Deletes the first device of this code name, ignoring case; False when there is none.")
      .def("__repr__", &ShowFamily);
}

void AddDevice(DeviceClass& cls) {
  AddFields<DeviceInfo>(cls, FieldsOf<DeviceInfo>());
  cls.def_property_readonly(
         "family_object", [](const Device& self) { return self.GetTree()->Hold(self->GetFamilyObject()); },
         "The family that holds the device; `family` is a text.")
      .def_property_readonly(
          "file", [](const Device& self) { return ToPython(self.GetTree()->FileOf(*self->GetFamilyObject())); },
          "The file that the device was loaded from, or \"\".")
      .def_property_readonly(
          "packages",
          [](const Device& self) {
            return ToList(HoldAll<Package>(*self.GetTree(), [&](int i) { return self->GetDevicePackage()->GetPackage(i); }));
          },
          "The packages in load order: a new list of them.")
      .def("new_package", &NewPackage, "Appends an empty package and returns it. OverflowError: there are 65,535.")
      .def("copy_package_list", &CopyPackages, py::arg("other"),
           "Appends copies of the packages of another device, or of this one. OverflowError: there would be over 65,535.")
      .def(
          "restore_device_backup_value",
          [](const Device& self) {
            const Writing writing(*self.GetTree());
            self->RestoreDeviceBackupValue();
          },
          "Puts the working values back from their backups, those that were never set included.")
      .def(
          "change_device_cdr_value",
          [](const Device& self, const Text& pon) {
            const Writing writing(*self.GetTree());
            self->ChangeDeviceCDRValue(pon.Get());
          },
          py::arg("pon"),
          "Switches the device to the CDR variant `pon`, when its family is cdr_fixed and `pon` holds \"H-\" or ends in \"H\".")
      .def("__repr__", &ShowDevice);
}

void AddPackage(PackageClass& cls) {
  AddFields<Package>(cls, FieldsOf<Package>());
  cls.def_property_readonly(
         "adapters",
         [](const PackageRecord& self) {
           return ToList(HoldAll<Adapter>(*self.GetTree(), [&](int i) { return self->GetAdapter(i); }));
         },
         "The socket adapters that fit: a new list of them.")
      .def_property_readonly(
          "entity_name", [](const PackageRecord& self) { return ToPython(self->GetEntityName()); },
          "backup_pon with each of - / ( ) written as _; \"\" without one.")
      .def(
          "add_adapter",
          [](const PackageRecord& self, const Text& vendor, const Text& adapter) {
            const Writing writing(*self.GetTree());
            return self.GetTree()->Hold(self->AddAdapter(vendor.Get(), adapter.Get()));
          },
          py::arg("vendor_name"), py::arg("adapter_name"), "Appends an adapter and returns it; None when either text is None.")
      .def(
          "add_adapter",
          [](const PackageRecord& self, const AdapterRecord& adapter) {
            const Writing writing(*self.GetTree());
            return self.GetTree()->Hold(self->AddAdapter(&*adapter));
          },
          py::arg("adapter"), "Appends a copy of an adapter and returns it.")
      .def(
          "set_adapter",
          [](const PackageRecord& self, int position, const Text& vendor, const Text& adapter) {
            const Writing writing(*self.GetTree());
            return self.GetTree()->Hold(self->SetAdapter(position, vendor.Get(), adapter.Get()));
          },
          py::arg("position"), py::arg("vendor_name"), py::arg("adapter_name"),
          "Sets both texts of the adapter at this position, from 0, and returns it; None keeps a text. None outside the list.")
      .def("remove_adapter", &DeleteAdapter, py::arg("position"),
           "Deletes the adapter at this position, from 0; nothing outside the list.")
      .def("clear_adapter_list", &DeleteAdapters, "Deletes all adapters.")
      .def("__repr__", &ShowPackage);
}

void AddAdapter(AdapterClass& cls) {
  const auto property = [&](const char* name, char* (Adapter::*get)() const, void (Adapter::*set)(const char*),
                            const char* documentation) {
    cls.def_property(
        name, [get](const AdapterRecord& self) { return ToPython(((*self).*get)()); },
        [set](const AdapterRecord& self, const Text& text) {
          const Writing writing(*self.GetTree());
          ((*self).*set)(text.Get());
        },
        documentation);
  };
  property("vendor_name", &Adapter::GetVendorName, &Adapter::SetVendorName, "A text; None while unset.");
  property("adapter_name", &Adapter::GetAdapterName, &Adapter::SetAdapterName, "A text; None while unset.");
  cls.def("__repr__", &ShowAdapter);
}

}  // namespace

void AddRecords(Classes& classes) {
  AddFamily(classes.family);
  AddDevice(classes.device);
  AddPackage(classes.package);
  AddAdapter(classes.adapter);
}

}  // namespace plddb::python
