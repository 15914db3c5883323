#include "targets.h"

#include <algorithm>
#include <iterator>

#include "text.h"

namespace plddb::programming_files {
namespace {

/// The families whose parts answer with these words; they do not show the number of macrocells.
constexpr struct {
  std::string_view words;
  std::string_view family;
} kSignatures[] = {{"8232 2AA2 4A82 0C2C", "MAX II"}, {"8232 2AA2 4A82 8C0C", "MAX V"}};

Devices Common(const Devices& a, const Devices& b) {
  Devices common;
  std::copy_if(a.begin(), a.end(), std::back_inserter(common), [&](const DeviceInfo* device) { return Contains(b, device); });
  return common;
}

/// Whether a file for one of the devices is one for all of them: they answer to the same id, or have one fuse map.
bool AreInterchangeable(const Devices& devices) {
  return std::all_of(devices.begin(), devices.end(), [&](const DeviceInfo* device) {
    const DeviceInfo& first = *devices.front();
    const bool hasSameId = ((device->GetjtagDeviceID() ^ first.GetjtagDeviceID()) & device->GetDeviceIDScanMask() &
                            first.GetDeviceIDScanMask()) == 0;
    return hasSameId || (device->GetFuseNumber() != 0 && device->GetFuseNumber() == first.GetFuseNumber());
  });
}

/// Finds what a target is, from the strongest statement to the weakest.
class Finder {
 public:
  Finder(const File& file, Target& target) : file_(file), target_(target) {}

  void Find() {
    TakeIds();
    TakeNames();
    TakeComments();
    TakeFuseCount();
    CheckSignature();
  }

 private:
  void TakeIds() {
    for (const Statement* const id : target_.ids) {
      if (isDecided_) Narrow(id->devices, "ids of different devices");
      if (!isDecided_) target_.devices = id->devices;
      isDecided_ = true;
    }
    target_.isAmbiguous = !AreInterchangeable(target_.devices);
  }

  void Narrow(const Devices& devices, const std::string& conflict) {
    Devices common = Common(target_.devices, devices);
    if (common.empty()) {
      target_.conflict = conflict;
    } else {
      target_.devices = std::move(common);
    }
  }

  void TakeNames() {
    for (const Kind kind : {Kind::kName, Kind::kEntity}) {
      for (const Statement* const name : OfKind(file_, kind)) {
        if (!isDecided_ || target_.devices.empty()) {
          target_.devices = name->devices;  // an undescribed id may be that of another die
        } else if (!name->devices.empty()) {
          Narrow(name->devices, "the IDCODE and the name are those of different devices");
        }
        isDecided_ = true;
      }
    }
    if (target_.ids.empty()) target_.isAmbiguous = false;  // a name without its variant is one for all variants
  }

  /// A comment decides if nothing else does; otherwise it only moves the likely one of several devices to the front.
  void TakeComments() {
    for (const Statement* const comment : target_.comments) {
      const auto isNamed = [&](const DeviceInfo* device) { return Contains(comment->devices, device); };
      if (isDecided_) std::stable_partition(target_.devices.begin(), target_.devices.end(), isNamed);
      if (isDecided_ || comment->devices.empty()) continue;
      target_.devices = comment->devices;
      isDecided_ = true;
    }
  }

  void TakeFuseCount() {
    for (const Statement* const count : OfKind(file_, Kind::kFuseCount)) {
      if (!isDecided_) {
        target_.devices = count->devices;
        target_.isAmbiguous = target_.devices.size() > 1;
        isDecided_ = true;
        continue;
      }
      Devices possible = count->devices;
      for (const DeviceInfo* const device : target_.devices) {
        if (device->GetFuseNumber() == 0) possible.push_back(device);
      }
      if (!target_.devices.empty()) Narrow(possible, "the name and the number of fuses are those of different devices");
    }
  }

  void CheckSignature() {
    for (const Statement* const signature : OfKind(file_, Kind::kSignature)) {
      const std::string_view family = FamilyOf(*signature);
      const auto isOfFamily = [&](const DeviceInfo* device) {
        const char* const name = device->GetFamily();
        return name != nullptr && name == family;
      };
      const bool isOf = std::any_of(target_.devices.begin(), target_.devices.end(), isOfFamily);
      if (!family.empty() && !target_.devices.empty() && !isOf)
        target_.conflict = "the name is not of the family whose words are compared";
    }
  }

  const File& file_;
  Target& target_;
  bool isDecided_ = false;
};

std::vector<Padding> PaddingsOf(const Statement& id) {
  return id.padding ? std::vector<Padding>{*id.padding} : std::vector<Padding>();
}

/// One target for each padding that ids are compared with.
std::vector<Target> TargetsOfIds(const File& file, const Statements& comments) {
  std::vector<Target> targets;
  for (const Statement* const id : OfKind(file, Kind::kId)) {
    const std::vector<Padding> paddings = PaddingsOf(*id);
    auto target = std::find_if(targets.begin(), targets.end(), [&](const Target& t) { return t.paddings == paddings; });
    if (target == targets.end()) target = targets.insert(targets.end(), Target{{}, comments, paddings});
    target->ids.push_back(id);
  }
  return targets;
}

/// One target for each device that comments name: files for a chain name several.
std::vector<Target> TargetsOfComments(const File& file, const Statements& comments) {
  std::vector<Target> targets;
  for (const Statement* const comment : comments) {
    const auto isNamed = [&](const Target& target) { return target.comments[0]->devices == comment->devices; };
    if (comment->devices.empty() || std::any_of(targets.begin(), targets.end(), isNamed)) continue;
    targets.push_back({{}, {comment}, file.paddings});
  }
  return targets;
}

}  // namespace

std::vector<Target> TargetsOf(const File& file) {
  const Statements comments = OfKind(file, Kind::kCommentName);
  std::vector<Target> targets = TargetsOfIds(file, comments);
  const bool hasName = !OfKind(file, Kind::kName).empty() || !OfKind(file, Kind::kEntity).empty();
  if (targets.empty() && !hasName) targets = TargetsOfComments(file, comments);
  if (targets.empty()) targets.push_back({{}, comments, file.paddings});
  for (Target& target : targets) Finder(file, target).Find();
  return targets;
}

Statements OfKind(const File& file, Kind kind) {
  Statements statements;
  for (const Statement& statement : file.statements) {
    if (statement.kind == kind) statements.push_back(&statement);
  }
  return statements;
}

std::string_view FamilyOf(const Statement& signature) {
  for (const auto& row : kSignatures) {
    if (StartsWith(signature.text, row.words)) return row.family;
  }
  return {};
}

bool Contains(const Devices& devices, const DeviceInfo* device) {
  return std::find(devices.begin(), devices.end(), device) != devices.end();
}

std::string Names(const Devices& devices) {
  constexpr std::size_t most = 12;
  std::string names;
  for (std::size_t i = 0; i < devices.size() && i < most; ++i) {
    const char* const name = devices[i]->GetName();
    names += (i == 0 ? "" : ", ") + std::string(name == nullptr ? "?" : name);
  }
  return devices.size() > most ? names + " and " + std::to_string(devices.size() - most) + " more" : names;
}

}  // namespace plddb::programming_files
