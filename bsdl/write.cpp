// Writes what was imported: as a new file, or into an existing one.

#include <string>
#include <utility>
#include <vector>

#include "TextForms.h"
#include "bsdl/Bsdl.h"
#include "bsdl/characters.h"
#include "bsdl/idcode.h"
#include "bsdl/outline.h"
#include "bsdl/splice.h"

namespace plddb::bsdl {
namespace {

constexpr std::string_view kDevice = "    <Device";

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;  // the writer ends every line
    lines.push_back(text.substr(at, end - at));
    at = end;
  }
  return lines;
}

/// A description file in parts: the text before the first device, each device, and the text after the last.
struct Written {
  std::string before;
  std::vector<std::string> devices;  // with their comments
  std::string after;
};

Written Cut(const DeviceList& database, const std::vector<std::string>& comments) {
  Written written;
  for (const std::string& line : LinesOf(WriteDescriptions(database))) {
    if (internal::StartsWith(line, kDevice)) {
      const std::size_t number = written.devices.size();
      const bool isCommented = number < comments.size() && !comments[number].empty();
      written.devices.push_back(isCommented ? "    <!-- " + comments[number] + " -->\n" + line : line);
    } else if (internal::StartsWith(line, "  </Family") || !written.after.empty() || internal::StartsWith(line, "</")) {
      written.after += line;
    } else {
      (written.devices.empty() ? written.before : written.devices.back()) += line;
    }
  }
  return written;
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += text;
  return all;
}

/// The family's element alone, with its comments.
std::string FamilyElement(const Written& written) {
  const std::size_t start = written.before.find("  <Family");
  const std::size_t end = written.after.rfind("</DeviceDatabase");
  return written.before.substr(start) + Joined(written.devices) + written.after.substr(0, end);
}

/// The elements of those packages of `device` that `known` has not.
std::string NewPackages(const DeviceInfo& device, const DeviceInfo& known) {
  const DeviceListOwner database = MakeDeviceList();
  PackageList& list = *database->NewFamily()->NewDevice()->GetDevicePackage();
  for (int i = 0; Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) {
    const std::string type = TextOf(package->GetType());
    const std::string pon = TextOf(package->GetPON());
    bool isKnown = false;
    for (int k = 0; const Package* const other = known.GetDevicePackage()->GetPackage(k); ++k) {
      isKnown |= TextOf(other->GetType()) == type && TextOf(other->GetPON()) == pon;
    }
    if (isKnown) continue;
    Package* const added = list.NewPackage();
    added->SetType(package->GetType());
    added->SetPON(package->GetPON());
    added->SetBackupPON(package->GetBackupPON());
  }
  if (list.GetPackageCount() == 0) return "";
  std::string element = Cut(*database, {}).devices.front();
  element.erase(0, element.find('\n') + 1);
  return element.erase(element.rfind("    </Device"));
}

// --- Existing descriptions --------------------------------------------------------------------------------------------------

struct Field {
  const char* attribute;
  unsigned int (*get)(const DeviceInfo& device);
  int hexDigits;  // 0: written in decimal
};

constexpr Field kFields[] = {
    {"jtagDeviceID", [](const DeviceInfo& d) { return d.GetjtagDeviceID(); }, 8},
    {"DeviceIDScanMask", [](const DeviceInfo& d) { return d.GetDeviceIDScanMask(); }, 8},
    {"IRLength", [](const DeviceInfo& d) -> unsigned int { return d.GetIRLength(); }, 0},
    {"IDInstruction", [](const DeviceInfo& d) { return d.GetIDInstruction(); }, 2},
    {"USERCODEIntruction", [](const DeviceInfo& d) { return d.GetUSERCODEInstruction(); }, 2},
    {"InstructionBypass", [](const DeviceInfo& d) { return d.GetInstructionBypass(); }, 2},
    {"BSCANLength", [](const DeviceInfo& d) { return d.GetBSCANLength(); }, 0},
};

std::string Shown(const Field& field, unsigned int value) {
  return field.hexDigits == 0 ? std::to_string(value) : Hex(value, field.hexDigits);
}

class Adder {
 public:
  Adder(const std::string& text, const std::string& file, const Import& import)
      : text_(text), file_(file), family_(*import.database->GetFamily(0)), written_(Cut(*import.database, import.comments)) {}

  Addition Add() {
    LoadResult loaded = ParseDescriptions(text_, file_, &outline_);
    if (loaded.database == nullptr) return {"", ToFaults(loaded.faults)};
    Splice splice(text_);
    AddFamily(*loaded.database, splice);
    if (!faults_.empty()) return {"", std::move(faults_)};
    std::string result = splice.Result();
    loaded = ParseDescriptions(result, file_);  // there may be too many devices, or the file may be too large now
    if (loaded.database == nullptr) return {"", ToFaults(loaded.faults)};
    return {std::move(result), {}};
  }

 private:
  static std::vector<Fault> ToFaults(const std::vector<plddb::Fault>& faults) {
    std::vector<Fault> same;
    for (const plddb::Fault& fault : faults) {
      same.push_back({fault.file, {fault.line, fault.column}, Severity::kError, fault.text});
    }
    return same;
  }

  void AddFamily(const DeviceList& database, Splice& splice) {
    for (int i = 0; FamilyList* const family = database.GetFamily(i); ++i) {
      if (TextOf(family->GetName()) == TextOf(family_.GetName()))
        return AddDevices(*family, *ChildrenOf(outline_.root, "Family")[static_cast<std::size_t>(i)], splice);
    }
    splice.PutAtEnd("DeviceDatabase", outline_.root.line, outline_.root.column, "", FamilyElement(written_));
  }

  void AddDevices(FamilyList& family, const Element& element, Splice& splice) {
    std::string added;
    const std::vector<const Element*> devices = ChildrenOf(element, "Device");
    for (int i = 0; const DeviceInfo* const device = family_.GetDevice(i); ++i) {
      const int known = NumberOf(family, *device);
      if (known < 0) {
        added += written_.devices[static_cast<std::size_t>(i)];
      } else {
        AddPackages(*device, *family.GetDevice(known), *devices[static_cast<std::size_t>(known)], splice);
      }
    }
    splice.PutAtEnd("Family", element.line, element.column, "  ", added);
  }

  static int NumberOf(FamilyList& family, const DeviceInfo& device) {
    for (int i = 0; const DeviceInfo* const known = family.GetDevice(i); ++i) {
      if (AreEqualIgnoringCase(TextOf(known->GetName()), TextOf(device.GetName()))) return i;
    }
    return -1;
  }

  /// What both state has to be equal.
  void AddPackages(const DeviceInfo& device, const DeviceInfo& known, const Element& element, Splice& splice) {
    for (const Field& field : kFields) {
      const unsigned int here = field.get(known);
      const unsigned int there = field.get(device);
      if (here == 0 || there == 0 || here == there) continue;
      faults_.push_back({file_, PlaceOf(element, field.attribute), Severity::kError,
                         std::string(field.attribute) + " of " + TextOf(device.GetName()) + " is " + Shown(field, here) +
                             ", but " + Shown(field, there) + " in " + TextOf(device.GetBSDLFile())});
    }
    splice.PutAtEnd("Device", element.line, element.column, "    ", NewPackages(device, known));
  }

  const std::string& text_;
  const std::string& file_;
  FamilyList& family_;
  const Written written_;
  Outline outline_;
  std::vector<Fault> faults_;
};

}  // namespace

Addition AddTo(const std::string& text, const std::string& file, const Import& import) {
  return Adder(text, file, import).Add();
}

Addition AddToFile(const std::string& path, const Import& import) {
  const FileText read = ReadDescriptionFile(path);
  if (read.failure.empty()) return AddTo(read.text, path, import);
  return {"", {{path, {1, 1}, Severity::kError, "cannot read the file: " + read.failure}}};
}

std::string Write(const Import& import) {
  const Written written = Cut(*import.database, import.comments);
  return written.before + Joined(written.devices) + written.after;
}

}  // namespace plddb::bsdl
