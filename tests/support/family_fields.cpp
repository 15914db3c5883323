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

// A row's names are those of the field and of its accessors.
#define PAIR(field, setter, getter) Row(#field, #setter, &F::setter, #getter, &F::getter)
#define FIELD(field) PAIR(field, Set##field, Get##field)
#define FLAG(field) PAIR(field, Set##field, Is##field)

const std::vector<FamilyField>& FamilyFields() {
  // clang-format off
  static const std::vector<FamilyField> fields = Numbered<F>({
      FIELD(Name),
      FIELD(AliasName),
      FIELD(BypassInst),
      FIELD(IDCodeInst),
      Row<F>("Devices", AddDevice, ShowDevices).SetBy({"AddNewDevice"}),
      Row<F>("OperationList", AddOperation, ShowOperations).SetBy({"SetOperationList", "AddOperationList"}),
      FIELD(ISCRelease),
      FIELD(Extension),
      FIELD(XFPFile),
      Row("ICFFile", "SetICFFile", "GetICFFile", kICFFile),
      FLAG(ReInitialize),
      FLAG(1532Compliant),
      FLAG(CDRFixed),
      FLAG(Hidden),
      FLAG(DebugMode),
      FLAG(FPGALoaderSupport),
      FLAG(STAPLSupport),
      FLAG(FPGADevice),
      Row<F>("ListProgrammingModeControl", SetModes, ShowModes).SetBy({"SetListProgrammingModeControl"}),
      Row<F>("ListBScanControl", SetBScan, ShowBScan).SetBy({"SetListBScanControl", "SetBScanDefaultValue"}),
      FIELD(CFGPinCount),
      Row("BitstreamModelTemplate", "SetBitstreamModelTemplate", "GetBitstreamModelTemplate", kTemplate),
  });
  // clang-format on
  return fields;
}

#undef PAIR
#undef FIELD
#undef FLAG

void FamilyDeleter::operator()(FamilyList* family) const noexcept {
  ReleaseDevices(*family);
  delete family;
}

FamilyOwner MakeFamily() { return FamilyOwner(new FamilyList); }

}  // namespace support
