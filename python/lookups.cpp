// The lookups, under the library's own names.

#include "module.h"

namespace plddb::python {
namespace {

// --- Arguments --------------------------------------------------------------------------------------------------------------

/// What an argument of a lookup is in Python, and how the library gets it.
template <class T>
struct Argument {
  using Type = T;
  static T Get(T value) { return value; }
};

template <>
struct Argument<const char*> {
  using Type = Text;
  static const char* Get(const Text& text) { return text.Get(); }
};

template <>
struct Argument<unsigned int> {
  using Type = Unsigned;
  static unsigned int Get(Unsigned number) { return number.value; }
};

template <class T>
using ArgumentType = typename Argument<T>::Type;

// --- Lookups of a database --------------------------------------------------------------------------------------------------

/// A lookup that asks each database in turn, until one has the device.
template <class... Args, class... Names>
void AddLookup(TreeClass& cls, const char* name, DeviceInfo* (DeviceList::*find)(Args...) const, const char* documentation,
               Names... names) {
  cls.def(
      name,
      [find](Tree& self, const ArgumentType<Args>&... arguments) -> Held<DeviceInfo> {
        for (const Part& part : self.Parts()) {
          if (DeviceInfo* const device = ((*part.database).*find)(Argument<Args>::Get(arguments)...)) return self.Hold(device);
        }
        return nullptr;
      },
      py::arg(names)..., documentation);
}

bool HasFamily(const DeviceList& database, const Text& name) {
  for (int i = 0; const FamilyList* family = database.GetFamily(i); ++i) {
    if (!name.isNull && family->GetName() != nullptr && name.bytes == family->GetName()) return true;
  }
  return false;
}

py::object AttributeToPython(const char* text) { return ToPython(text); }
py::object AttributeToPython(bool flag) { return py::bool_(flag); }
py::object AttributeToPython(int number) { return py::int_(number); }

/// An attribute of the first family of a name, in the first database that has such a family.
template <class T>
void AddAttribute(TreeClass& cls, const char* name, T (DeviceList::*get)(const char*) const) {
  cls.def(
      name,
      [get](const Tree& self, const Text& family) {
        for (const Part& part : self.Parts()) {
          if (HasFamily(*part.database, family)) return AttributeToPython(((*part.database).*get)(family.Get()));
        }
        return AttributeToPython(T());
      },
      py::arg("name"), "An attribute of the first family of exactly this name (no alias); None, 0 or False without one.");
}

void AddAttributes(TreeClass& cls) {
  AddAttribute(cls, "get_bypass_instwfamily_name", &DeviceList::GetBypassInstwfamilyName);
  AddAttribute(cls, "get_id_code_instwfamily_name", &DeviceList::GetIDCodeInstwfamilyName);
  AddAttribute(cls, "get_isc_releasewfamily_name", &DeviceList::GetISCReleasewfamilyName);
  AddAttribute(cls, "get_hiddenwfamily_name", &DeviceList::GetHiddenwfamilyName);
  AddAttribute(cls, "get_fpga_loader_supportwfamily_name", &DeviceList::GetFPGALoaderSupportwfamilyName);
  AddAttribute(cls, "get_fpga_devicewfamily_name", &DeviceList::GetFPGADevicewfamilyName);
  AddAttribute(cls, "get_re_initializewfamily_name", &DeviceList::GetReInitializewfamilyName);
  AddAttribute(cls, "get_debug_modewfamily_name", &DeviceList::GetDebugModewfamilyName);
  AddAttribute(cls, "get_extensionwfamily_name", &DeviceList::GetExtensionwfamilyName);
}

void AddTreeLookups(TreeClass& cls) {
  AddLookup(cls, "get_device_with_name", &DeviceList::GetDeviceWithName, "By name, ignoring case.", "name");
  AddLookup(cls, "get_device_with_code_name", &DeviceList::GetDeviceWithCodeName,
            "By code name, ignoring case, and only then by alias name.", "code_name");
  AddLookup(
      cls, "get_device_with_pon", &DeviceList::GetDeviceWithPON,
      "By a package's backup or alias ordering number, ignoring case. `strip_suffix` leaves out what follows the last '-'\n"
      "of the stored number.",
      "pon", "strip_suffix");
  AddLookup(cls, "get_device_with_comm", &DeviceList::GetDeviceWithComm, "By access mode, exactly, and name, ignoring case.",
            "comm", "name");
  AddLookup(cls, "get_device_with_comm_and_code_name", &DeviceList::GetDeviceWithCommAndCodeName,
            "By access mode, exactly, and code name, ignoring case.", "comm", "code_name");
  AddLookup(cls, "get_device_with_package", &DeviceList::GetDeviceWithPackage,
            "By package type, exactly, and name, ignoring case.", "package_type", "name");
  AddLookup(cls, "get_device_with_package_and_code_name", &DeviceList::GetDeviceWithPackageAndCodeName,
            "By package type, exactly, and code name, ignoring case.", "package_type", "code_name");
  AddLookup(cls, "get_device_with_comm_and_id", &DeviceList::GetDeviceWithCommAndID,
            "By identifier under the device's scan mask; `comm` is \"JTAG\", \"ISP\" or \"DUAL\".", "comm", "id");
  AddLookup(cls, "get_device_with_comm_and_id_and_code_name", &DeviceList::GetDeviceWithCommAndIDAndCodeName,
            "The same, and the code name is exactly this.", "comm", "id", "code_name");
  AddLookup(cls, "get_device_with_comm_and_id_no_mask", &DeviceList::GetDeviceWithCommAndIDNoMask,
            "By identifier, all 32 bits.", "comm", "id");
  AddLookup(cls, "get_device_with_jdf_file_name", &DeviceList::GetDeviceWithJDFFileName,
            "By the JEDEC device file of a package: its first six characters and its length count.", "jdf_file");
  AddLookup(cls, "get_device_with_entity_name", &DeviceList::GetDeviceWithEntityName,
            "By the entity name of a package, ignoring case, of devices whose physical_ues_length is not 0.", "entity_name");
  AddLookup(cls, "get_device_with_entity_name_disregard_ues", &DeviceList::GetDeviceWithEntityNameDisregardUES,
            "The same for all devices.", "entity_name");
  AddLookup(cls, "get_device_with_fuse_map_and_full_name", &DeviceList::GetDeviceWithFuseMapAndFullName,
            "By fuse count and full name, of access mode \"DUAL\" or \"JTAG\"; 5892 fuses stand for 5828, too.", "fuse_count",
            "full_name");
  AddLookup(cls, "get_device_with_fuse_map_and_full_name_ex", &DeviceList::GetDeviceWithFuseMapAndFullNameEx,
            "By fuse count and code name, of access mode \"JTAG\", and then get_device_with_fuse_map_and_full_name.",
            "fuse_count", "full_name");
}

// --- Lists of candidates ----------------------------------------------------------------------------------------------------

std::vector<std::string> NamesOfLastSearch(const Tree& self) {
  std::vector<std::string> names;
  for (const Part& part : self.Parts()) {
    const std::vector<std::string>& found = part.database->GetlistDevicenames();
    names.insert(names.end(), found.begin(), found.end());
  }
  return names;
}

/// The library writes its list of names, which others may be reading.
py::list DeviceNamesWithId(Tree& self, const Text& comm, Unsigned id) {
  std::vector<std::string> names;
  {
    const Writing writing = Writing::OfNameList(self);
    for (const Part& part : self.Parts()) part.database->GetDeviceListWithCommAndID(comm.Get(), id.value);
    if (id.value != 0) names = NamesOfLastSearch(self);
  }
  return ToPython(names);
}

/// The candidates of all databases.
py::list Candidates(const Tree& self, unsigned long fuseCount,
                    int (DeviceList::*find)(unsigned long, std::vector<std::string>&) const) {
  std::vector<std::string> all;
  for (const Part& part : self.Parts()) {
    std::vector<std::string> found;
    ((*part.database).*find)(fuseCount, found);
    all.insert(all.end(), found.begin(), found.end());
  }
  return ToPython(all);
}

int IsIspWithFuseMap(const Tree& self, unsigned long fuseCount) {
  for (const Part& part : self.Parts()) {
    if (part.database->GetDeviceCommISPWithFuseMap(fuseCount) != 0) return 1;
  }
  return 0;
}

void AddCandidates(TreeClass& cls) {
  cls.def("get_device_list_with_comm_and_id", &DeviceNamesWithId, py::arg("comm"), py::arg("id"),
          "The code names of all devices that match under the mask, \"\" for a device without one; [] for the id 0.")
      .def_property_readonly(
          "list_devicenames", [](const Tree& self) { return ToPython(NamesOfLastSearch(self)); },
          "What get_device_list_with_comm_and_id found last.")
      .def("get_device_comm_isp_with_fuse_map", &IsIspWithFuseMap, py::arg("fuse_count"),
           "1 when a device of access mode \"ISP\" has exactly this fuse count, else 0.")
      .def(
          "get_device_code_name_with_fuse_map",
          [](const Tree& self, unsigned long fuseCount) {
            return Candidates(self, fuseCount, &DeviceList::GetDeviceCodeNameWithFuseMap);
          },
          py::arg("fuse_count"),
          "The code names of all devices of this fuse count; a \"DUAL\" device gives two, with \"<ISP>\" and \"<JTAG>\".")
      .def(
          "get_device_with_fuse_map",
          [](const Tree& self, unsigned long fuseCount) {
            return Candidates(self, fuseCount, &DeviceList::GetDeviceWithFuseMap);
          },
          py::arg("fuse_count"), "The same with names, of devices whose physical_ues_length is not 0.");
}

// --- Families of a database -------------------------------------------------------------------------------------------------

Held<FamilyList> FamilyNamed(Tree& self, const Text& name) {
  for (const Part& part : self.Parts()) {
    if (FamilyList* const family = part.database->GetFamily(name.Get())) return self.Hold(family);
  }
  return nullptr;
}

Held<FamilyList> FamilyAt(Tree& self, long long position) {
  for (const Part& part : self.Parts()) {
    for (int i = 0; FamilyList* const family = part.database->GetFamily(i); ++i) {
      if (position-- == 0) return self.Hold(family);
    }
  }
  return nullptr;
}

void AddFamilies(TreeClass& cls) {
  cls.def("get_family", &FamilyNamed, py::arg("name"), "The first family whose name, or else alias name, is this; or None.")
      .def("get_family", &FamilyAt, py::arg("position"), "The family at this position, from 0; None outside the list.")
      .def(
          "get_last_family",
          [](Tree& self) -> Held<FamilyList> {
            for (auto part = self.Parts().rbegin(); part != self.Parts().rend(); ++part) {
              if (FamilyList* const family = part->database->GetLastFamily()) return self.Hold(family);
            }
            return nullptr;
          },
          "The last family, or None.")
      .def_property_readonly(
          "family_count",
          [](const Tree& self) {
            std::size_t count = 0;
            for (const Part& part : self.Parts()) count += part.database->GetFamilyCount();
            return count;
          },
          "The number of families.")
      .def_property_readonly(
          "device_count",
          [](const Tree& self) {
            std::size_t count = 0;
            for (const Part& part : self.Parts()) count += part.database->GetDeviceCount();
            return count;
          },
          "The number of devices of all families.");
}

// --- Lookups of a family and of a device ------------------------------------------------------------------------------------

template <class... Args, class... Names>
void AddLookup(FamilyClass& cls, const char* name, DeviceInfo* (FamilyList::*find)(Args...) const, const char* documentation,
               Names... names) {
  cls.def(
      name,
      [find](const Family& self, const ArgumentType<Args>&... arguments) {
        return self.GetTree()->Hold(((*self).*find)(Argument<Args>::Get(arguments)...));
      },
      py::arg(names)..., documentation);
}

template <class... Args>
using FamilyLookup = DeviceInfo* (FamilyList::*)(Args...) const;

void AddFamilyLookups(FamilyClass& cls) {
  using Name = const char*;
  AddLookup(cls, "get_device", static_cast<FamilyLookup<Name>>(&FamilyList::GetDevice), "By name, ignoring case; or None.",
            "name");
  AddLookup(cls, "get_device", static_cast<FamilyLookup<int>>(&FamilyList::GetDevice), "At this position, from 0; or None.",
            "position");
  AddLookup(cls, "get_device", static_cast<FamilyLookup<Name, unsigned int>>(&FamilyList::GetDevice),
            "By identifier, all 32 bits; `comm` is \"JTAG\", \"ISP\" or \"DUAL\".", "comm", "id");
  AddLookup(cls, "get_device", static_cast<FamilyLookup<Name, Name>>(&FamilyList::GetDevice),
            "By package type, exactly, and code name, ignoring case.", "package_type", "code_name");
  AddLookup(cls, "get_device_with_code_name", static_cast<FamilyLookup<Name>>(&FamilyList::GetDeviceWithCodeName),
            "By code name, ignoring case, and only then by alias name.", "code_name");
  AddLookup(cls, "get_device_with_code_name", static_cast<FamilyLookup<Name, Name>>(&FamilyList::GetDeviceWithCodeName),
            "By access mode, exactly, and code name, ignoring case.", "comm", "code_name");
  AddLookup(cls, "get_device_with_code_nameand_vendor", &FamilyList::GetDeviceWithCodeNameandVendor,
            "By code name and vendor, ignoring case.", "code_name", "vendor");
  AddLookup(cls, "get_device_with_comm", &FamilyList::GetDeviceWithComm, "By access mode, exactly, and name, ignoring case.",
            "comm", "name");
  AddLookup(cls, "get_device_with_package", &FamilyList::GetDeviceWithPackage,
            "By package type, exactly, and name, ignoring case.", "package_type", "name");
  AddLookup(cls, "get_last_device", &FamilyList::GetLastDevice, "The last device, or None.");
  cls.def(
      "get_device_pos", [](const Family& self, const Text& name) { return self->GetDevicePos(name.Get()); }, py::arg("name"),
      "The position, from 0, of the first device of this name, ignoring case; -1 when there is none.");
}

void AddPackageText(DeviceClass& cls, const char* name, char* (PackageList::*get)(const char*) const,
                    const char* documentation) {
  cls.def(
      name, [get](const Device& self, const Text& jdf) { return ToPython((self->GetDevicePackage()->*get)(jdf.Get())); },
      py::arg("jdf"), documentation);
}

void AddPackageLookups(DeviceClass& cls) {
  cls.def(
      "get_package",
      [](const Device& self, const Text& type) {
        return self.GetTree()->Hold(self->GetDevicePackage()->GetPackage(type.Get()));
      },
      py::arg("package_type"), "The first package of exactly this type, or None.");
  AddPackageText(cls, "get_package_type_with_jdf_file", &PackageList::GetPackageTypeWithJDFFile,
                 "The type of the first package with this JEDEC device file, or None.");
  AddPackageText(cls, "get_package_pon_with_jdf_file", &PackageList::GetPackagePONWithJDFFile,
                 "The ordering number of the first package with this JEDEC device file, or None.");
  AddPackageText(cls, "get_orvo_setting_with_jdf_file", &PackageList::GetOrvoSettingWithJDFFile,
                 "The Orvo setting of the first package with this JEDEC device file, or None.");
}

}  // namespace

void AddLookups(py::module_& module, Classes& classes) {
  AddTreeLookups(classes.tree);
  AddAttributes(classes.tree);
  AddCandidates(classes.tree);
  AddFamilies(classes.tree);
  AddFamilyLookups(classes.family);
  AddPackageLookups(classes.device);
  module.def(
      "is_bypass_device", [](const Device& device, int mode) { return IsBypassDevice(&*device, mode); }, py::arg("device"),
      py::arg("mode"), "Whether the device is a bypass device in this mode of chain processing, 0 to 6.");
  module.def(
      "is_hiden_family", [](const Family& family) { return IsHidenFamily(&*family); }, py::arg("family"),
      "Whether the family is marked hidden. The spelling is the library's own.");
}

}  // namespace plddb::python
