// Compares descriptions with makers' files.

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "TextForms.h"
#include "bsdl/Bsdl.h"
#include "bsdl/characters.h"
#include "bsdl/idcode.h"
#include "bsdl/outline.h"

namespace plddb::bsdl {
namespace {

enum class CodeId { kFile, kId, kMask, kIrLength, kCode, kBoundary, kMissing };

constexpr check::Severity kError = check::Severity::kError;
constexpr check::Severity kWarning = check::Severity::kWarning;

// In the order of CodeId.
constexpr check::Code kCodes[] = {
    {"bsdl-file", kError, "a BSDL file with faults, which is not compared", ""},
    {"bsdl-id", kError, "an IDCODE other than that of the maker's file", ""},
    {"bsdl-mask", kError, "a scan mask that does not fit the maker's IDCODE", ""},
    {"bsdl-ir-length", kError, "an IR length other than the maker's", ""},
    {"bsdl-code", kError, "an instruction code other than the maker's", ""},
    {"bsdl-boundary", kError, "a boundary length other than the maker's", ""},
    {"bsdl-missing", kWarning, "a value that the maker's file has (--missing)", ""},
};

/// An IDCODE of a file.
struct Id {
  Idcode idcode;
  const Text* pattern;
};

/// A file that can be compared.
struct Maker {
  const File* file;
  std::vector<Id> ids;  // those that name a part
};

std::vector<Maker> MakersOf(const std::vector<File>& files) {
  std::vector<Maker> makers;
  for (const File& file : files) {
    if (HasErrors(file.faults)) continue;
    Maker maker = {&file, {}};
    for (const Text& pattern : file.facts.idcodes) {
      if (WhyTooOpen(pattern.text).empty()) maker.ids.push_back({ToIdcode(pattern.text), &pattern});
    }
    makers.push_back(std::move(maker));
  }
  return makers;
}

/// The id under which a scan of the device would find a part of this maker; null when there is none.
const Id* MatchingId(const Maker& maker, const DeviceInfo& device) {
  const std::uint32_t mask = device.GetDeviceIDScanMask();
  const std::uint32_t id = device.GetjtagDeviceID();
  if (mask == 0 || id == 0) return nullptr;
  for (const Id& known : maker.ids) {
    if (((known.idcode.value ^ id) & mask & known.idcode.fixed) == 0) return &known;
  }
  return nullptr;
}

/// The entity names of the device's packages, in upper case.
std::vector<std::string> EntityNames(const DeviceInfo& device) {
  std::vector<std::string> names;
  for (int i = 0; const Package* const package = device.GetDevicePackage()->GetPackage(i); ++i) {
    if (package->GetBackupPON() != nullptr) names.push_back(UpperCase(package->GetEntityName()));
  }
  return names;
}

/// A device, and the makers' files that belong to it.
struct Match {
  const Maker* maker;
  const Id* id;  // the one that matches, or else the first; null when the file has none
};

std::vector<Match> MatchesOf(const DeviceInfo& device, const std::vector<Maker>& makers) {
  std::vector<Match> matches;
  const std::vector<std::string> names = EntityNames(device);
  for (const Maker& maker : makers) {
    const Id* id = MatchingId(maker, device);
    const bool isNamed = std::find(names.begin(), names.end(), maker.file->facts.entity.text) != names.end();
    if (id == nullptr && !isNamed) continue;
    if (id == nullptr && !maker.ids.empty()) id = &maker.ids.front();
    matches.push_back({&maker, id});
  }
  return matches;
}

struct CodeField {
  const char* attribute;
  const char* instruction;
  unsigned int (DeviceInfo::*get)() const;
};

constexpr CodeField kCodeFields[] = {
    {"IDInstruction", "IDCODE", &DeviceInfo::GetIDInstruction},
    {"USERCODEIntruction", "USERCODE", &DeviceInfo::GetUSERCODEInstruction},
    {"InstructionBypass", "BYPASS", &DeviceInfo::GetInstructionBypass},
};

/// Whether the code, of at most 32 bits, is `number`; X is both.
bool IsCode(const Text& code, std::uint32_t number) {
  const Idcode bits = ToIdcode(code.text);
  const std::uint32_t width = code.text.size() >= 32 ? 0xFFFFFFFF : (1U << code.text.size()) - 1;
  return ((bits.value ^ number) & (bits.fixed | ~width)) == 0;
}

/// Whether a pattern of 0 and 1 is the code; X is both.
bool IsCode(const Text& code, std::string_view pattern) {
  return std::equal(code.text.begin(), code.text.end(), pattern.begin(), pattern.end(),
                    [](char bit, char written) { return bit == 'X' || bit == internal::ToUpper(written); });
}

/// Compares one device with the files that belong to it.
class DeviceCheck {
 public:
  DeviceCheck(const DeviceInfo& device, const Element& element, const std::string& file, Missing missing,
              std::vector<check::Finding>& findings)
      : device_(device), element_(element), file_(file), missing_(missing), findings_(findings) {}

  void Run(const std::vector<Match>& matches) {
    for (const Match& match : matches) {
      const File& maker = *match.maker->file;
      const Facts& facts = maker.facts;
      if (match.id != nullptr) {
        CheckId(maker, *match.id);
        CheckMask(maker, *match.id, matches);
      }
      CheckCount(maker, "IRLength", device_.GetIRLength(), facts.instructionLength, CodeId::kIrLength);
      CheckCount(maker, "BSCANLength", device_.GetBSCANLength(), facts.boundaryLength, CodeId::kBoundary);
      CheckCodes(maker);
      CheckPattern(maker);
    }
  }

 private:
  static std::string At(const File& maker, Place place) {
    return maker.name + ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
  }

  /// What several files state alike is one finding.
  void Add(CodeId id, const char* attribute, const std::string& text, const File& maker, Place place) {
    if (!told_.emplace(id, attribute, text).second) return;
    const check::Code& code = kCodes[static_cast<std::size_t>(id)];
    const Place here = PlaceOf(element_, attribute);
    findings_.push_back({{file_, here.line, here.column},
                         code.name,
                         code.severity,
                         text + " in " + At(maker, place),
                         {{maker.name, place.line, place.column}}});
  }

  void AddMissing(const char* attribute, const std::string& value, const File& maker, Place place) {
    if (missing_ == Missing::kListed) {
      Add(CodeId::kMissing, attribute, std::string(attribute) + " is missing: " + value, maker, place);
    }
  }

  bool IsWritten(const char* attribute) const { return FindAttribute(element_, attribute) != nullptr; }

  void CheckId(const File& maker, const Id& id) {
    const std::uint32_t mask = device_.GetDeviceIDScanMask() == 0 ? ~kVersionBits : device_.GetDeviceIDScanMask();
    const std::uint32_t here = device_.GetjtagDeviceID();
    const std::string there = id.pattern->text;
    if (here == 0) return AddMissing("jtagDeviceID", there, maker, id.pattern->place);
    if (((here ^ id.idcode.value) & mask & id.idcode.fixed) == 0) return;
    Add(CodeId::kId, "jtagDeviceID", "jtagDeviceID is " + Hex(here, 8) + ", but " + there, maker, id.pattern->place);
  }

  /// A mask compares what the maker fixes, but for the version, where it may, and for bits that differ among its packages.
  void CheckMask(const File& maker, const Id& id, const std::vector<Match>& matches) {
    const std::uint32_t mask = device_.GetDeviceIDScanMask();
    const std::string expected = Hex(id.idcode.fixed & ~kVersionBits, 8);
    if (mask == 0) return AddMissing("DeviceIDScanMask", expected, maker, id.pattern->place);
    const std::uint32_t open = mask & ~id.idcode.fixed;
    const std::uint32_t left = id.idcode.fixed & ~kVersionBits & ~mask & ~DifferingBits(id, matches);
    const std::string written = "DeviceIDScanMask is " + Hex(mask, 8) + ", but " + id.pattern->text;
    if (open != 0)
      Add(CodeId::kMask, "DeviceIDScanMask", written + ", which leaves the bits " + Hex(open, 8) + " open,", maker,
          id.pattern->place);
    if (left != 0)
      Add(CodeId::kMask, "DeviceIDScanMask", written + ", which fixes the bits " + Hex(left, 8) + ", too,", maker,
          id.pattern->place);
  }

  /// Those in which the files of the device differ.
  static std::uint32_t DifferingBits(const Id& id, const std::vector<Match>& matches) {
    std::uint32_t bits = 0;
    for (const Match& match : matches) {
      if (match.id != nullptr) bits |= (match.id->idcode.value ^ id.idcode.value) | ~match.id->idcode.fixed;
    }
    return bits;
  }

  void CheckCount(const File& maker, const char* attribute, std::uint32_t here, const Count& there, CodeId id) {
    if (there.place.line == 0 || here == there.value) return;
    if (here == 0) return AddMissing(attribute, std::to_string(there.value), maker, there.place);
    Add(id, attribute, std::string(attribute) + " is " + std::to_string(here) + ", but " + std::to_string(there.value), maker,
        there.place);
  }

  void CheckCodes(const File& maker) {
    if (maker.facts.instructionLength.value > 32) return;
    for (const CodeField& field : kCodeFields) {
      const Instruction* const instruction = FindInstruction(maker.facts, field.instruction);
      if (instruction == nullptr) continue;
      const std::uint32_t here = (device_.*field.get)();
      const std::vector<Text>& codes = instruction->codes;
      if (std::any_of(codes.begin(), codes.end(), [&](const Text& code) { return IsCode(code, here); })) continue;
      const Text& there = codes.front();
      if (here == 0 && !IsWritten(field.attribute)) {
        AddMissing(field.attribute, there.text, maker, there.place);
      } else {
        Add(CodeId::kCode, field.attribute, std::string(field.attribute) + " is " + Hex(here, 2) + ", but " + there.text, maker,
            there.place);
      }
    }
  }

  void CheckPattern(const File& maker) {
    constexpr const char* kAttribute = "InstructionBypassPattern";
    const Instruction* const bypass = FindInstruction(maker.facts, "BYPASS");
    const std::string here = TextOf(device_.GetInstructionBypassPattern());
    if (bypass == nullptr) return;
    const Text& there = bypass->codes.front();
    if (here.empty()) {
      if (there.text.size() > 32) AddMissing(kAttribute, there.text, maker, there.place);
    } else if (std::none_of(bypass->codes.begin(), bypass->codes.end(), [&](const Text& code) { return IsCode(code, here); })) {
      Add(CodeId::kCode, kAttribute, std::string(kAttribute) + " is " + here + ", but " + there.text, maker, there.place);
    }
  }

  const DeviceInfo& device_;
  const Element& element_;
  const std::string& file_;
  const Missing missing_;
  std::vector<check::Finding>& findings_;
  std::set<std::tuple<CodeId, std::string, std::string>> told_;
};

void AddFaults(const std::vector<File>& files, std::vector<check::Finding>& findings) {
  const check::Code& code = kCodes[static_cast<std::size_t>(CodeId::kFile)];
  for (const File& file : files) {
    for (const Fault& fault : file.faults) {
      if (fault.severity != Severity::kError) continue;
      findings.push_back({{fault.file, fault.place.line, fault.place.column}, code.name, code.severity, fault.text, {}});
    }
  }
}

bool IsBeforeInFile(const check::Finding& a, const check::Finding& b) {
  return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
}

}  // namespace

std::vector<check::Code> CheckCodes() { return {std::begin(kCodes), std::end(kCodes)}; }

std::vector<check::Finding> Check(const std::vector<File>& files, const std::vector<check::Description>& descriptions,
                                  Missing missing) {
  std::vector<check::Finding> findings;
  AddFaults(files, findings);
  const std::vector<Maker> makers = MakersOf(files);
  for (const check::Description& description : descriptions) {
    const auto first = static_cast<std::ptrdiff_t>(findings.size());
    const std::vector<const Element*> families = ChildrenOf(description.outline->root, "Family");
    for (std::size_t f = 0; f < families.size(); ++f) {
      FamilyList& family = *description.database->GetFamily(static_cast<int>(f));
      const std::vector<const Element*> devices = ChildrenOf(*families[f], "Device");
      for (std::size_t d = 0; d < devices.size(); ++d) {
        const DeviceInfo& device = *family.GetDevice(static_cast<int>(d));
        DeviceCheck(device, *devices[d], description.file, missing, findings).Run(MatchesOf(device, makers));
      }
    }
    std::stable_sort(findings.begin() + first, findings.end(), IsBeforeInFile);
  }
  return findings;
}

std::vector<check::Finding> CheckTexts(const std::vector<File>& files, const std::vector<check::Source>& sources,
                                       Missing missing) {
  std::vector<check::Finding> findings;
  std::vector<DeviceListOwner> databases;
  std::vector<Outline> outlines(sources.size());
  std::vector<check::Description> descriptions;
  for (const check::Source& source : sources) {
    Outline& outline = outlines[databases.size()];
    LoadResult loaded = source.failure.empty() ? ParseDescriptions(source.text, source.file, &outline) : LoadResult();
    if (loaded.database == nullptr) {
      for (check::Finding& finding : check::CheckTexts({source})) findings.push_back(std::move(finding));
    } else {
      databases.push_back(std::move(loaded.database));
      descriptions.push_back({source.file, databases.back().get(), &outline});
    }
  }
  for (check::Finding& finding : Check(files, descriptions, missing)) findings.push_back(std::move(finding));
  return findings;
}

}  // namespace plddb::bsdl
