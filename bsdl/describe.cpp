// Makes description records of what files state.

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Chain.h"
#include "TextForms.h"
#include "bsdl/Bsdl.h"
#include "bsdl/characters.h"
#include "bsdl/comment.h"
#include "bsdl/fault_list.h"
#include "bsdl/part.h"

namespace plddb::bsdl {
namespace {

/// Files of one device.
struct Group {
  std::vector<Part> parts;

  const Part& First() const { return parts.front(); }
};

std::string FileName(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

/// Whether a description file can hold the text as it is.
bool IsPlain(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

std::string At(const Part& part, Place place) {
  return part.file->name + ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
}

// --- Files of one device ----------------------------------------------------------------------------------------------------

/// Tells where files of one name do not state the same.
class Comparison {
 public:
  Comparison(const Part& first, const Part& part, std::vector<Fault>& faults) : first_(first), part_(part), faults_(faults) {}

  void Run() {
    Compare("IDCODE", first_.idcodePlace, IdText(first_), part_.idcodePlace, IdText(part_));
    Compare("INSTRUCTION_LENGTH", first_.file->facts.instructionLength, part_.file->facts.instructionLength);
    Compare("BOUNDARY_LENGTH", first_.file->facts.boundaryLength, part_.file->facts.boundaryLength);
    Compare("the code of BYPASS", first_.bypass, part_.bypass);
    Compare("the code of IDCODE", first_.idcodeInstruction, part_.idcodeInstruction);
    Compare("the code of USERCODE", first_.usercode, part_.usercode);
  }

 private:
  /// Without the version, and X where it is open.
  static std::string IdText(const Part& part) {
    const std::string& pattern = part.file->facts.idcodes.front().text;
    return "XXXX" + pattern.substr(4);
  }

  void Compare(const std::string& what, const Count& first, const Count& second) {
    if (first.place.line == 0 || second.place.line == 0) return;
    Compare(what, first.place, std::to_string(first.value), second.place, std::to_string(second.value));
  }

  void Compare(const std::string& what, const Code& first, const Code& second) {
    if (!first.bits.empty() && !second.bits.empty()) Compare(what, first.place, first.bits, second.place, second.bits);
  }

  void Compare(const std::string& what, Place a, const std::string& first, Place b, const std::string& second) {
    if (first == second) return;
    faults_.push_back({part_.file->name, b, Severity::kError,
                       what + " of " + part_.name + " is " + second + ", but " + first + " in " + At(first_, a)});
  }

  const Part& first_;
  const Part& part_;
  std::vector<Fault>& faults_;
};

std::vector<Group> GroupByName(std::vector<Part> parts, std::vector<Fault>& faults) {
  std::vector<Group> groups;
  std::map<std::string, std::size_t> numbers;
  for (Part& part : parts) {
    const auto [known, isNew] = numbers.emplace(UpperCase(part.name), groups.size());
    if (isNew) {
      groups.emplace_back();
    } else {
      Comparison(groups[known->second].First(), part, faults).Run();
    }
    groups[known->second].parts.push_back(std::move(part));
  }
  return groups;
}

// --- A device ---------------------------------------------------------------------------------------------------------------

/// The first of the parts' codes that is stated, as a number; 0 where there is none, or it is too wide.
std::uint32_t NumberOf(const Group& group, Code Part::*code) {
  if (group.First().file->facts.instructionLength.value > 32) return 0;
  for (const Part& part : group.parts) {
    if (!(part.*code).bits.empty()) return ToNumber((part.*code).bits);
  }
  return 0;
}

/// What all files fix. The version counts only where they agree in it.
std::uint32_t FixedBits(const Group& group) {
  std::uint32_t fixed = 0xFFFFFFFF;
  for (const Part& part : group.parts) {
    fixed &= part.idcode.fixed & ~((part.idcode.value ^ group.First().idcode.value) & kVersionBits);
  }
  return fixed;
}

std::uint32_t BoundaryLength(const Group& group) {
  std::uint32_t length = 0;
  for (const Part& part : group.parts) length = std::max(length, part.file->facts.boundaryLength.value);
  return length;
}

/// That of all packages, or 0 where they differ.
std::uint16_t Pins(const DeviceInfo& device) {
  const PackageList& packages = *device.GetDevicePackage();
  std::uint16_t pins = 0;
  for (int i = 0; const Package* const package = packages.GetPackage(i); ++i) {
    const std::uint16_t here = package->GetType() == nullptr ? std::uint16_t{0} : PinsOf(package->GetType());
    if (i > 0 && here != pins) return 0;
    pins = here;
  }
  return pins;
}

void AddPackages(const Group& group, PackageList& list) {
  std::vector<PartPackage> added;
  for (const Part& part : group.parts) {
    for (const PartPackage& package : part.packages) {
      if (std::find(added.begin(), added.end(), package) != added.end()) continue;
      added.push_back(package);
      Package* const record = list.NewPackage();
      if (!package.type.empty()) record->SetType(package.type.c_str());
      record->SetPON(package.pon.c_str());
      record->SetBackupPON(package.pon.c_str());
    }
  }
}

void SetIdcode(const Group& group, DeviceInfo& device) {
  const std::uint32_t id = group.First().idcode.value & ~kVersionBits;
  device.SetjtagDeviceID(id);
  device.SetjtagDeviceIDBackup(id);
  device.SetDeviceIDMask(FixedBits(group));
  device.SetDeviceIDMaskBackup(FixedBits(group));
  device.SetDeviceIDScanMask(group.First().idcode.fixed & ~kVersionBits);
  device.SetIDLength(32);
}

void SetInstructions(const Group& group, DeviceInfo& device) {
  device.SetIRLength(static_cast<unsigned short>(group.First().file->facts.instructionLength.value));
  device.SetBSCANLength(BoundaryLength(group));
  device.SetIDInstruction(NumberOf(group, &Part::idcodeInstruction));
  device.SetUSERCODEIntruction(NumberOf(group, &Part::usercode));
  device.SetInstructionBypass(NumberOf(group, &Part::bypass));
  device.SetInstructionBypassPattern(group.First().bypass.bits.c_str());
  device.SetBypassLength(1);
}

void SetFile(const File& file, DeviceInfo& device, std::vector<Fault>& faults) {
  const std::string name = FileName(file.name);
  if (!file.time.empty()) device.SetBSDLFileTime(file.time.c_str());
  if (IsPlain(name)) return device.SetBSDLFile(name.c_str());
  faults.push_back({file.name, {1, 1}, Severity::kWarning, "the name of the file is not plain ASCII: BSDLFile is left out"});
}

// --- Times and sizes of IEEE 1532 -------------------------------------------------------------------------------------------

/// The programming facts of the group, where one of its files states them.
const Facts* ProgrammingFacts(const Group& group) {
  for (const Part& part : group.parts) {
    if (part.file->facts.programming.place.line != 0) return &part.file->facts;
  }
  return nullptr;
}

std::uint32_t RegisterLength(const Facts& facts, const char* name) {
  for (const Register& reg : facts.registers) {
    if (reg.name.text == name) return reg.length;
  }
  return 0;
}

/// Sets the times and sizes, with times in `unit` seconds, rounded up.
class ProgrammingSetter {
 public:
  ProgrammingSetter(const std::string& file, Place place, double unit, std::vector<Fault>& faults)
      : file_(file), place_(place), unit_(unit), faults_(faults) {}

  void Set(const Facts& facts, DeviceInfo& device) {
    const Programming& programming = facts.programming;
    device.SetProgramTime(Time<unsigned short>("ProgramTime", programming.programTime));
    device.SetEraseTime(Time<unsigned int>("EraseTime", programming.eraseTime));
    device.SetVerifyTime(Time<unsigned short>("VerifyTime", programming.verifyTime));
    const auto bits = Fitting<unsigned int>("FuseNumber", programming.bits);
    device.SetFuseNumber(bits);
    device.SetBackupFuseNumber(bits);
    const std::uint32_t data = RegisterLength(facts, "ISC_PDATA");
    device.SetDataLength(data);
    device.SetBackupDataLength(data);
    const std::uint32_t address = RegisterLength(facts, "ISC_ADDRESS");
    device.SetAddressLength(address);
    device.SetBackupAddressLength(address);
  }

 private:
  /// 305e-6 s are 305 us, whatever the last bit of the quotient.
  template <typename Field>
  Field Time(const char* field, double seconds) {
    constexpr double kAlmostNothing = 1e-6;
    return Fitting<Field>(field, std::ceil(seconds / unit_ - kAlmostNothing));
  }

  template <typename Field>
  Field Fitting(const char* field, double number) {
    if (number <= static_cast<double>(std::numeric_limits<Field>::max())) return static_cast<Field>(std::max(number, 0.0));
    faults_.push_back(
        {file_, place_, Severity::kWarning,
         std::string(field) + " would be more than " + std::to_string(std::numeric_limits<Field>::max()) + ": it is left out"});
    return 0;
  }

  const std::string& file_;
  const Place place_;
  const double unit_;
  std::vector<Fault>& faults_;
};

void SetProgramming(const Group& group, double unit, DeviceInfo& device, std::vector<Fault>& faults) {
  const Facts* const facts = unit > 0 ? ProgrammingFacts(group) : nullptr;
  if (facts == nullptr) return;
  ProgrammingSetter(group.First().file->name, facts->programming.place, unit, faults).Set(*facts, device);
}

// --- The family -------------------------------------------------------------------------------------------------------------

/// The maker whose code the IDCODE has; empty where nobody has it.
std::string MakerOf(const Idcode& idcode) {
  const chain::IdcodeFields fields = chain::SplitIdcode(idcode.value);
  return std::string(chain::MakerName(fields.bank, fields.code));
}

void AddDevice(const Group& group, const ImportOptions& options, FamilyList& family, std::vector<Fault>& faults) {
  const Part& first = group.First();
  DeviceInfo& device = *family.NewDevice();
  device.SetName(first.name.c_str());
  device.SetCodeName(first.name.c_str());
  device.SetFamily(options.family.c_str());
  const std::string vendor = options.vendor.empty() ? MakerOf(first.idcode) : options.vendor;
  if (!vendor.empty()) device.SetVendor(vendor.c_str());
  device.SetComm("JTAG");
  SetIdcode(group, device);
  SetInstructions(group, device);
  SetFile(*first.file, device, faults);
  SetProgramming(group, options.unitOfTimes, device, faults);
  AddPackages(group, *device.GetDevicePackage());
  device.SetPin(Pins(device));
}

/// What `bits` are in a family's text: 0 where its devices differ.
std::string FamilyCode(const std::vector<Group>& groups, Code Part::*code) {
  const std::string& bits = (groups.front().First().*code).bits;
  const bool isCommon = std::all_of(groups.begin(), groups.end(), [&](const Group& group) {
    return std::all_of(group.parts.begin(), group.parts.end(), [&](const Part& part) { return (part.*code).bits == bits; });
  });
  if (!isCommon || bits.empty() || bits.size() > 32) return "";
  return Hex(ToNumber(bits), std::max(2, (static_cast<int>(bits.size()) + 3) / 4));
}

void SetFamily(const std::vector<Group>& groups, FamilyList& family) {
  const std::string bypass = FamilyCode(groups, &Part::bypass);
  const std::string idcode = FamilyCode(groups, &Part::idcodeInstruction);
  if (!bypass.empty()) family.SetBypassInst(bypass.c_str());
  if (!idcode.empty()) family.SetIDCodeInst(idcode.c_str());
  family.Set1532Compliant(std::all_of(groups.begin(), groups.end(), [](const Group& group) {
    return std::any_of(group.parts.begin(), group.parts.end(), [](const Part& part) { return part.file->facts.is1532; });
  }));
}

/// "From a.bsd, entity A_1:" and what it states, for each file; files that state the same are named together.
std::string Comment(const Group& group) {
  std::vector<std::pair<std::string, std::string>> parts;  // what is stated, and by whom
  for (const Part& part : group.parts) {
    const std::string text = CommentOn(part.file->facts);
    const std::string who = CommentText(FileName(part.file->name)) + " (" + CommentText(part.file->facts.entity.text) + ")";
    const auto same = std::find_if(parts.begin(), parts.end(), [&](const auto& known) { return known.first == text; });
    if (same == parts.end()) {
      parts.emplace_back(text, who);
    } else {
      same->second += ", " + who;
    }
  }
  std::string comment;
  for (const auto& [text, who] : parts) {
    comment += (comment.empty() ? "From " : "     From ") + who + (text.empty() ? "" : ":\n" + text);
    if (comment.back() != '\n') comment += '\n';
  }
  comment.pop_back();
  return comment;
}

std::vector<Part> ToParts(const std::vector<File>& files, const ImportOptions& options, std::vector<Fault>& faults) {
  std::vector<Part> parts;
  for (const File& file : files) {
    const std::ptrdiff_t first = static_cast<std::ptrdiff_t>(faults.size());
    faults.insert(faults.end(), file.faults.begin(), file.faults.end());
    if (auto part = ToPart(file, options, faults)) parts.push_back(std::move(*part));
    std::stable_sort(faults.begin() + first, faults.end(), IsBefore);
  }
  return parts;
}

}  // namespace

double SecondsOf(std::string_view unit) {
  constexpr struct {
    std::string_view name;
    double seconds;
  } kUnits[] = {{"s", 1}, {"ms", 1e-3}, {"us", 1e-6}, {"ns", 1e-9}};
  for (const auto& one : kUnits) {
    if (one.name == unit) return one.seconds;
  }
  return 0;
}

Import Describe(const std::vector<File>& files, const ImportOptions& options) {
  Import import;
  const std::vector<Group> groups = GroupByName(ToParts(files, options, import.faults), import.faults);
  if (groups.empty() || HasErrors(import.faults)) return import;
  DeviceListOwner database = MakeDeviceList();
  FamilyList& family = *database->NewFamily();
  family.SetName(options.family.c_str());
  for (const Group& group : groups) {
    AddDevice(group, options, family, import.faults);
    import.comments.push_back(Comment(group));
  }
  SetFamily(groups, family);
  import.database = std::move(database);
  return import;
}

}  // namespace plddb::bsdl
