#include "part.h"

#include <algorithm>
#include <charconv>

#include "bsdl/characters.h"
#include "bsdl/fault_list.h"

namespace plddb::bsdl {
namespace {

constexpr std::uint32_t kCodeBits = 32;  // of a code in a description

/// Whether X taken as 1 the code is all ones.
bool IsAllOnes(const Text& code) { return code.text.find('0') == code.text.npos; }

bool HasNoX(const Text& code) { return code.text.find('X') == code.text.npos; }

/// The entity "XC9572XL_VQ64" with the pin map "VQ64" is of the device XC9572XL.
std::string DeviceName(const Facts& facts) {
  const std::string& entity = facts.entity.text;
  std::string map = facts.defaultPinMap.text;
  if (map.empty() && facts.pinMaps.size() == 1) map = facts.pinMaps.front().text;
  return !map.empty() && entity.size() > map.size() + 1 && internal::EndsWith(entity, '_' + map)
             ? entity.substr(0, entity.size() - map.size() - 1)
             : entity;
}

/// An ordering number whose entity name is `entity`: lookups write '_' for '-'.
std::string OrderingName(std::string entity) {
  std::replace(entity.begin(), entity.end(), '_', '-');
  return entity;
}

std::vector<PartPackage> PackagesOf(const Facts& facts, const std::string& type) {
  const std::string pon = OrderingName(facts.entity.text);
  if (!type.empty()) return {{type, pon}};
  std::vector<PartPackage> packages;
  for (const Text& map : facts.pinMaps) {
    const PartPackage package = {map.text, pon};
    if (std::find(packages.begin(), packages.end(), package) == packages.end()) packages.push_back(package);
  }
  if (packages.empty()) packages.push_back({facts.defaultPinMap.text, pon});
  return packages;
}

class PartMaker {
 public:
  PartMaker(const File& file, const ImportOptions& options, std::vector<Fault>& faults)
      : file_(file), facts_(file.facts), options_(options), faults_(faults) {}

  std::optional<Part> Make() {
    if (HasErrors(file_.faults)) return RefuseOpenIdcode();
    Part part;
    part.file = &file_;
    part.name = options_.name.empty() ? DeviceName(facts_) : options_.name;
    part.packages = PackagesOf(facts_, options_.package);
    TakeIdcode(part);
    TakeCodes(part);
    if (facts_.instructionLength.place.line == 0) Refuse(facts_.entity.place, "there is no INSTRUCTION_LENGTH");
    if (facts_.instructionLength.value > kCodeBits) {
      Warn(facts_.instructionLength.place,
           "the instruction register has more than 32 bits: codes are left out, but for BYPASS in InstructionBypassPattern");
    }
    if (isRefused_) return std::nullopt;
    return part;
  }

 private:
  /// In a file with errors, a value may be missing because of them; an IDCODE that was read is right.
  std::nullopt_t RefuseOpenIdcode() {
    if (facts_.idcodes.empty() || facts_.idcodes.front().text.size() != 32) return std::nullopt;
    const std::string why = WhyTooOpen(facts_.idcodes.front().text);
    if (!why.empty()) Refuse(facts_.idcodes.front().place, why);
    return std::nullopt;
  }

  void Refuse(Place place, std::string text) {
    faults_.push_back({file_.name, place, Severity::kError, std::move(text)});
    isRefused_ = true;
  }

  void Warn(Place place, std::string text) { faults_.push_back({file_.name, place, Severity::kWarning, std::move(text)}); }

  void TakeIdcode(Part& part) {
    if (facts_.idcodes.empty()) return Refuse(facts_.entity.place, "there is no IDCODE_REGISTER");
    const Text& pattern = facts_.idcodes.front();
    const std::string why = WhyTooOpen(pattern.text);
    if (!why.empty()) return Refuse(pattern.place, why);
    part.idcode = ToIdcode(pattern.text);
    part.idcodePlace = pattern.place;
    if ((part.idcode.fixed & kVersionBits) != 0) {
      Warn(pattern.place, "the IDCODE fixes the version, bits 31 to 28: DeviceIDScanMask leaves it out");
    }
    if ((part.idcode.value & 1) == 0) Warn(pattern.place, "bit 0 of the IDCODE is not 1: expected 1, as in any IDCODE");
  }

  void TakeCodes(Part& part) {
    for (const Instruction& instruction : facts_.instructions) WarnOfSeveralCodes(instruction);
    const Instruction* const bypass = FindInstruction(facts_, "BYPASS");
    if (bypass == nullptr) {
      const Place place = facts_.opcodes.line == 0 ? facts_.entity.place : facts_.opcodes;
      return Refuse(place, "there is no BYPASS in INSTRUCTION_OPCODE");
    }
    part.bypass = CodeOf(*bypass);
    if (part.bypass.bits.find('0') != std::string::npos) {
      Warn(bypass->name.place, "no code of BYPASS is all ones: " + part.bypass.bits + " is taken");
    }
    if (const Instruction* const idcode = FindInstruction(facts_, "IDCODE")) {
      part.idcodeInstruction = CodeOf(*idcode);
    } else {
      Warn(facts_.opcodes, "there is an IDCODE_REGISTER, but no IDCODE in INSTRUCTION_OPCODE");
    }
    if (const Instruction* const usercode = FindInstruction(facts_, "USERCODE")) part.usercode = CodeOf(*usercode);
  }

  void WarnOfSeveralCodes(const Instruction& instruction) {
    if (instruction.codes.size() < 2 || instruction.isPrivate) return;
    const std::string& name = instruction.name.text;
    const bool isTaken = name == "BYPASS" || name == "IDCODE" || name == "USERCODE";
    Warn(instruction.name.place, name + " has " + std::to_string(instruction.codes.size()) + " codes" +
                                     (isTaken ? ": " + CodeOf(instruction).bits + " is taken" : ""));
  }

  const File& file_;
  const Facts& facts_;
  const ImportOptions& options_;
  std::vector<Fault>& faults_;
  bool isRefused_ = false;
};

}  // namespace

Code CodeOf(const Instruction& instruction) {
  const std::vector<Text>& codes = instruction.codes;
  const bool isBypass = instruction.name.text == "BYPASS";
  auto found = std::find_if(codes.begin(), codes.end(), isBypass ? IsAllOnes : HasNoX);
  if (found == codes.end()) found = codes.begin();
  Code code = {found->text, found->place};
  if (isBypass && IsAllOnes(*found)) code.bits.assign(code.bits.size(), '1');
  return code;
}

std::uint16_t PinsOf(const std::string& packageType) {
  const auto first = std::find_if(packageType.begin(), packageType.end(), IsDigit);
  const auto last = std::find_if(packageType.rbegin(), packageType.rend(), IsDigit).base();
  if (first == packageType.end()) return 0;
  const bool endsInNumber = last == packageType.end();
  const auto start = std::find_if_not(std::make_reverse_iterator(last), packageType.rend(), IsDigit).base();
  if (!endsInNumber && start != first) return 0;
  std::uint16_t pins = 0;
  const char* const text = packageType.data();
  const auto read = std::from_chars(text + (start - packageType.begin()), text + (last - packageType.begin()), pins);
  return read.ec == std::errc() ? pins : std::uint16_t{0};
}

std::optional<Part> ToPart(const File& file, const ImportOptions& options, std::vector<Fault>& faults) {
  return PartMaker(file, options, faults).Make();
}

}  // namespace plddb::bsdl
