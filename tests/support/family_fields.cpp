#include "tests/support/family_fields.h"

#include <string>

#include "DeviceListOwner.h"
#include "tests/support/device_fields.h"
#include "tests/support/tree_equality.h"

namespace support {
namespace {

using F = FamilyList;

std::string Text(const char* stem, int sample) { return stem + std::to_string(sample); }

void AddDevice(FamilyList& family, int sample) { SetPlainSamples(*family.NewDevice(), sample); }

std::string ShowDevices(FamilyList& family) {
  std::vector<std::string> shown;
  for (int i = 0; DeviceInfo* const device = family.GetDevice(i); ++i) shown.push_back(Describe(*device));
  return Show(shown);
}

void AddOperation(FamilyList& family, int sample) { family.AddOperationList(Text("operation", sample).c_str()); }

std::string ShowOperations(FamilyList& family) {
  std::vector<std::string> shown;
  for (int i = 0; const char* const operation = family.GetOperation(i); ++i) shown.emplace_back(operation);
  return Show(shown);
}

void SetModes(FamilyList& family, int sample) {
  family.SetListProgrammingModeControl({Text("mode", sample), "", Text("mode", sample + 1)});
}

std::string ShowModes(FamilyList& family) { return Show(family.GetListProgrammingModeControl()); }

void SetBScan(FamilyList& family, int sample) {
  CBScanControl first;
  first.DefaultValue = -sample;
  first.Controls = {Text("in", sample), Text("out", sample)};
  CBScanControl second;
  second.DefaultValue = sample;
  family.SetListBScanControl({first, second});
}

std::string ShowBScan(FamilyList& family) { return Show(family.GetListBScanControl()); }

// The two texts that differ from the rule.
constexpr TextField<F> kICFFile{&F::SetICFFile, &F::GetICFFile, "", "", false};
constexpr TextField<F> kTemplate{&F::SetBitstreamModelTemplate, &F::GetBitstreamModelTemplate, nullptr, nullptr, false};

}  // namespace

const std::vector<FamilyField>& FamilyFields() {
  // clang-format off
  static const std::vector<FamilyField> fields = {
      Row( 1, "Name",                       &F::SetName,              &F::GetName),
      Row( 2, "AliasName",                  &F::SetAliasName,         &F::GetAliasName),
      Row( 3, "BypassInst",                 &F::SetBypassInst,        &F::GetBypassInst),
      Row( 4, "IDCodeInst",                 &F::SetIDCodeInst,        &F::GetIDCodeInst),
      Row<F>( 5, "Devices",                 AddDevice,                ShowDevices),
      Row<F>( 6, "OperationList",           AddOperation,             ShowOperations),
      Row( 7, "ISCRelease",                 &F::SetISCRelease,        &F::GetISCRelease),
      Row( 8, "Extension",                  &F::SetExtension,         &F::GetExtension),
      Row( 9, "XFPFile",                    &F::SetXFPFile,           &F::GetXFPFile),
      Row(10, "ICFFile",                    kICFFile),
      Row(11, "ReInitialize",               &F::SetReInitialize,      &F::IsReInitialize),
      Row(12, "1532Compliant",              &F::Set1532Compliant,     &F::Is1532Compliant),
      Row(13, "CDRFixed",                   &F::SetCDRFixed,          &F::IsCDRFixed),
      Row(14, "Hidden",                     &F::SetHidden,            &F::IsHidden),
      Row(15, "DebugMode",                  &F::SetDebugMode,         &F::IsDebugMode),
      Row(16, "FPGALoaderSupport",          &F::SetFPGALoaderSupport, &F::IsFPGALoaderSupport),
      Row(17, "STAPLSupport",               &F::SetSTAPLSupport,      &F::IsSTAPLSupport),
      Row(18, "FPGADevice",                 &F::SetFPGADevice,        &F::IsFPGADevice),
      Row<F>(19, "ListProgrammingModeControl", SetModes,              ShowModes),
      Row<F>(20, "ListBScanControl",        SetBScan,                 ShowBScan),
      Row(21, "CFGPinCount",                &F::SetCFGPinCount,       &F::GetCFGPinCount),
      Row(22, "BitstreamModelTemplate",     kTemplate),
  };
  // clang-format on
  return fields;
}

void FamilyDeleter::operator()(FamilyList* family) const noexcept {
  ReleaseDevices(*family);
  delete family;
}

FamilyOwner MakeFamily() { return FamilyOwner(new FamilyList); }

}  // namespace support
