// Whether a file fits a chain.

#include <algorithm>

#include "FamilyList.h"
#include "foundation/printed_forms.h"
#include "impl.h"
#include "targets.h"

namespace plddb::programming_files {
namespace {

enum class Answer { kFits, kCheckRefuses, kPaddingRefuses, kWrong, kUnknown };

/// A chain as `Judge` got it.
struct JudgedChain {
  const chain::Chain& positions;
  chain::End nearest;

  /// How many positions are nearer TDO.
  std::size_t NearerTdo(std::size_t i) const { return nearest == chain::End::kTdi ? positions.size() - 1 - i : i; }
};

/// The instruction bits of the positions nearer TDO (or TDI); nullopt where one is not known.
std::optional<unsigned long> InstructionBits(const JudgedChain& chain, std::size_t i, bool isNearerTdo) {
  unsigned long bits = 0;
  for (std::size_t other = 0; other < chain.positions.size(); ++other) {
    if (other == i || (chain.NearerTdo(other) < chain.NearerTdo(i)) != isNearerTdo) continue;
    if (chain.positions[other].IrLength() == 0) return std::nullopt;
    bits += chain.positions[other].IrLength();
  }
  return bits;
}

bool PaddingFitsFrom(const Padding& padding, const JudgedChain& chain, std::size_t i) {
  const std::size_t nearer = chain.NearerTdo(i);
  if (padding.hdr != nearer || padding.tdr != chain.positions.size() - 1 - nearer) return false;
  if (!padding.hasIr) return true;
  const auto nearTdo = InstructionBits(chain, i, true);
  const auto nearTdi = InstructionBits(chain, i, false);
  return (!nearTdo || *nearTdo == padding.hir) && (!nearTdi || *nearTdi == padding.tir);
}

bool PaddingFits(const Padding& padding, const JudgedChain& chain, std::size_t i) {
  if (chain.nearest != chain::End::kAsPrinted) return PaddingFitsFrom(padding, chain, i);
  return PaddingFitsFrom(padding, {chain.positions, chain::End::kTdo}, i) ||
         PaddingFitsFrom(padding, {chain.positions, chain::End::kTdi}, i);
}

unsigned int GivenIrLength(const chain::ChainPosition& position) {
  return static_cast<unsigned int>(std::min(position.givenIrLength, 0xFFFFUL));
}

class Judgement {
 public:
  Judgement(const KnownDevices& known, const File& file, const JudgedChain& chain)
      : known_(known), file_(file), chain_(chain) {}

  Answer AnswerAt(const Target& target, std::size_t i) const {
    const chain::ChainPosition& position = chain_.positions[i];
    if (!position.id) return Answer::kUnknown;
    const bool isRight = IsRight(target, position);
    const bool passes = Passes(target, *position.id);
    if (!target.ids.empty() && !passes) return isRight ? Answer::kCheckRefuses : Answer::kWrong;
    if (target.ids.empty() && !HasIds(target.devices)) return Answer::kUnknown;
    if (!isRight && (target.ids.empty() || HasDescribedId(target))) {
      return IsUnknownChip(position) && !target.ids.empty() ? Answer::kUnknown : Answer::kWrong;
    }
    if (target.isAmbiguous || !target.conflict.empty()) return Answer::kUnknown;
    const auto fits = [&](const Padding& padding) { return PaddingFits(padding, chain_, i); };
    const bool isPadded = target.paddings.empty() || std::any_of(target.paddings.begin(), target.paddings.end(), fits);
    return isPadded ? Answer::kFits : Answer::kPaddingRefuses;
  }

 private:
  static bool HasIds(const Devices& devices) {
    return std::any_of(devices.begin(), devices.end(), [](const DeviceInfo* device) { return device->GetjtagDeviceID() != 0; });
  }

  static bool HasDescribedId(const Target& target) {
    return std::any_of(target.ids.begin(), target.ids.end(), [](const Statement* id) { return !id->devices.empty(); });
  }

  bool IsUnknownChip(const chain::ChainPosition& position) const { return known_.WithId(*position.id, 0xFFFFFFFF).empty(); }

  /// Whether the chip is one of the target's devices. A name may come with the id that its device has in one package.
  bool IsRight(const Target& target, const chain::ChainPosition& position) const {
    for (const Statement* const name : OfKind(file_, Kind::kName)) {
      if (name->mask != 0) return ((name->value ^ *position.id) & name->mask) == 0;
    }
    return std::any_of(target.devices.begin(), target.devices.end(), [&](const DeviceInfo* device) {
      return known_.Answers(*device, *position.id, GivenIrLength(position));
    });
  }

  /// Whether all comparisons of the file pass. An id that only the device compares is compared under the device's own mask.
  static bool Passes(const Target& target, std::uint32_t chip) {
    return std::all_of(target.ids.begin(), target.ids.end(), [&](const Statement* id) {
      std::uint32_t mask = id->mask;
      if (id->proof != Proof::kPlayer && !id->devices.empty()) mask &= id->devices.front()->GetDeviceIDScanMask();
      return ((id->value ^ chip) & mask) == 0;
    });
  }

  const KnownDevices& known_;
  const File& file_;
  const JudgedChain& chain_;
};

// --- Reasons ----------------------------------------------------------------------------------------------------------------

const char* ProofText(Proof proof) {
  switch (proof) {
    case Proof::kDevice:
      return ", which the device itself compares";
    case Proof::kPlayer:
      return ", which the player compares";
    case Proof::kNone:
      break;
  }
  return "";
}

std::string ReasonOf(const Statement& statement) {
  const std::string at = " (" + ToText(statement.place) + ")";
  const std::string devices = statement.devices.empty() ? "no described device" : Names(statement.devices);
  switch (statement.kind) {
    case Kind::kId:
      return statement.text + at + ": " + internal::Hex(statement.value, 8) + ", mask " + internal::Hex(statement.mask, 8) +
             ProofText(statement.proof) + ": " + devices;
    case Kind::kName:
      return "name '" + statement.text + "'" + at + ": " + devices;
    case Kind::kEntity:
      return "entity '" + statement.text + "'" + at + ": " + devices;
    case Kind::kCommentName:
      return "comment '" + statement.text + "'" + at + ", which proves nothing: " + devices;
    case Kind::kFuseCount:
      return std::to_string(statement.value) + " fuses" + at + ": " + devices;
    case Kind::kPackage:
      return "package '" + statement.text + "'" + at;
    case Kind::kSignature:
      break;
  }
  const std::string_view family = FamilyOf(statement);
  return "words '" + statement.text + "'" + at + ": " +
         (family.empty() ? "no IDCODE" : "family " + std::string(family) + ", but not which device of it");
}

std::string PaddingReason(const Target& target, const JudgedChain& chain, std::size_t i) {
  const Padding& padding = target.paddings.front();
  const std::size_t nearer = chain.NearerTdo(i);
  const auto text = [](std::size_t tdo, std::size_t tdi) {
    return std::to_string(tdo) + " devices nearer TDO and " + std::to_string(tdi) + " nearer TDI";
  };
  const std::string is = text(padding.hdr, padding.tdr);
  const std::string wanted = text(nearer, chain.positions.size() - 1 - nearer);
  if (is != wanted) return "the right device, but the file's padding is for " + is + "; here are " + wanted;
  return "the right device, but the file's padding has " + std::to_string(padding.hir) + " and " + std::to_string(padding.tir) +
         " instruction bits for the devices nearer TDO and TDI, which have another number here";
}

std::string UnknownReason(const Target& target, const chain::ChainPosition& position) {
  if (!position.id) return "cannot be decided: no IDCODE was read here";
  if (!target.conflict.empty()) return "cannot be decided: the file contradicts itself (" + target.conflict + ")";
  if (target.isAmbiguous) return "cannot be decided: the file can be for any of " + Names(target.devices);
  return "cannot be decided";
}

class Reasons {
 public:
  Reasons(const KnownDevices& known, const File& file, Verdict& verdict) : known_(known), file_(file), verdict_(verdict) {}

  void AddStatements() {
    if (!file_.remark.empty()) Add(file_.remark);
    for (const Kind kind : {Kind::kId, Kind::kName, Kind::kEntity, Kind::kCommentName, Kind::kFuseCount, Kind::kSignature}) {
      for (const Statement* const statement : OfKind(file_, kind)) Add(ReasonOf(*statement));
    }
    if (verdict_.reasons.empty()) Add("the file states nothing that tells its device");
  }

  void AddAnswer(Answer answer, const Target& target, const JudgedChain& chain, std::size_t i) {
    const chain::ChainPosition& position = chain.positions[i];
    const Devices chips = position.id ? known_.WithId(*position.id, 0xFFFFFFFF, GivenIrLength(position)) : Devices();
    const std::string chip =
        position.id ? internal::Hex(*position.id, 8) + (chips.empty() ? "" : ", " + Names(chips)) : "no id";
    Add("position " + std::to_string(i) + " (" + chip + "): " + AnswerText(answer, target, chain, i));
  }

  void AddLimits() {
    if (verdict_.devices.empty()) return;
    std::string packages;
    for (const Statement* const package : OfKind(file_, Kind::kPackage))
      packages += (packages.empty() ? "" : ", ") + package->text;
    Add("package and speed grade cannot be read through JTAG" + (packages.empty() ? "" : "; the file is for " + packages));
    const DeviceInfo& likely = *verdict_.devices.front();
    const Devices same = known_.WithId(likely.GetjtagDeviceID(), likely.GetDeviceIDScanMask(), likely.GetIRLength());
    if (same.size() > 1) Add(Names(same) + " share an IDCODE: a chain cannot tell them apart");
    const Devices fuses = file_.fuseCount ? known_.WithFuseCount(*file_.fuseCount) : Devices();
    if (fuses.size() > 1) Add(Names(fuses) + " share this number of fuses");
  }

 private:
  void Add(std::string text) { verdict_.reasons.push_back(std::move(text)); }

  std::string AnswerText(Answer answer, const Target& target, const JudgedChain& chain, std::size_t i) const {
    switch (answer) {
      case Answer::kFits:
        return "fits";
      case Answer::kCheckRefuses:
        return "the right device, but the file's own check refuses this IDCODE";
      case Answer::kPaddingRefuses:
        return PaddingReason(target, chain, i);
      case Answer::kWrong:
        return "the wrong device";
      case Answer::kUnknown:
        break;
    }
    return UnknownReason(target, chain.positions[i]);
  }

  const KnownDevices& known_;
  const File& file_;
  Verdict& verdict_;
};

void AddDevices(const std::vector<Target>& targets, Verdict& verdict) {
  verdict.isKnown = true;
  for (const Target& target : targets) {
    for (const DeviceInfo* const device : target.devices) {
      if (!Contains(verdict.devices, device)) verdict.devices.push_back(device);
    }
    verdict.isKnown = verdict.isKnown && !target.devices.empty() && !target.isAmbiguous && target.conflict.empty();
  }
}

/// Of the targets, the one that decides: if one is unknown, so is the answer for the file, and what does not fit
/// neither.
Fit Worse(Fit a, Fit b) {
  if (a == Fit::kFitsNone || b == Fit::kFitsNone) return Fit::kFitsNone;
  return a == Fit::kUnknown || b == Fit::kUnknown ? Fit::kUnknown : Fit::kFits;
}

}  // namespace

const char* ToText(Fit fit) {
  switch (fit) {
    case Fit::kFits:
      return "fits";
    case Fit::kFitsSeveral:
      return "fits-several";
    case Fit::kFitsNone:
      return "fits-none";
    case Fit::kUnknown:
      break;
  }
  return "unknown";
}

Verdict Reader::Judge(const File& file) const {
  Verdict verdict;
  AddDevices(TargetsOf(file), verdict);
  Reasons reasons(impl_->known, file, verdict);
  reasons.AddStatements();
  reasons.AddLimits();
  return verdict;
}

Verdict Reader::Judge(const File& file, const chain::Chain& positions, chain::End nearest) const {
  Verdict verdict;
  const std::vector<Target> targets = TargetsOf(file);
  const JudgedChain chain{positions, nearest};
  const Judgement judgement(impl_->known, file, chain);
  AddDevices(targets, verdict);
  Reasons reasons(impl_->known, file, verdict);
  reasons.AddStatements();
  verdict.fit = Fit::kFits;
  for (const Target& target : targets) {
    Fit fit = Fit::kFitsNone;
    for (std::size_t i = 0; i < positions.size(); ++i) {
      const Answer answer = judgement.AnswerAt(target, i);
      reasons.AddAnswer(answer, target, chain, i);
      if (answer == Answer::kFits) verdict.positions.push_back(i);
      if (answer == Answer::kFits || (answer == Answer::kUnknown && fit != Fit::kFits))
        fit = answer == Answer::kFits ? Fit::kFits : Fit::kUnknown;
    }
    verdict.fit = Worse(verdict.fit, fit);
  }
  std::sort(verdict.positions.begin(), verdict.positions.end());
  verdict.positions.erase(std::unique(verdict.positions.begin(), verdict.positions.end()), verdict.positions.end());
  if (verdict.fit != Fit::kFits) verdict.positions.clear();
  if (verdict.positions.size() > 1) verdict.fit = Fit::kFitsSeveral;
  reasons.AddLimits();
  return verdict;
}

}  // namespace plddb::programming_files
