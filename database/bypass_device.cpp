// The rules for bypass devices, which only pass data through, by mode of chain processing.

#include "DeviceList.h"
#include "foundation/text_match.h"

using namespace plddb::internal;

namespace {

enum class Field { kFamily, kCodeName, kName };

struct BypassRule {
  int mode;
  Field field;
  const char* text;
};

// On purpose irregular, row by row: "JTAG-ISC" is compared as a code name in modes 2, 4 and 6 but as a name in 3 and 5;
// "JTAG-STAPL" as a name in 2 to 5 but as a code name in 6; "FPGA Loader" as a family in 4 and 6 but as a code name in 5; mode
// 2 lacks "IEEE 1532". Mode 0 has no row.
constexpr BypassRule kBypassRules[] = {
    {1, Field::kFamily, "IEEE 1532"},

    {2, Field::kCodeName, "JTAG-ISC"},    {2, Field::kFamily, "Custom"},      {2, Field::kFamily, "JTAG Custom"},
    {2, Field::kName, "JTAG-STAPL"},

    {3, Field::kCodeName, "JTAG-NOP"},    {3, Field::kName, "JTAG-ISC"},      {3, Field::kName, "JTAG-STAPL"},
    {3, Field::kFamily, "IEEE 1532"},     {3, Field::kFamily, "Custom"},      {3, Field::kFamily, "JTAG Custom"},

    {4, Field::kCodeName, "JTAG-ISC"},    {4, Field::kName, "JTAG-STAPL"},    {4, Field::kFamily, "Custom"},
    {4, Field::kFamily, "JTAG Custom"},   {4, Field::kFamily, "IEEE 1532"},   {4, Field::kFamily, "FPGA Loader"},

    {5, Field::kCodeName, "JTAG-SVF"},    {5, Field::kFamily, "IEEE 1532"},   {5, Field::kFamily, "Custom"},
    {5, Field::kFamily, "JTAG Custom"},   {5, Field::kName, "JTAG-ISC"},      {5, Field::kName, "JTAG-STAPL"},
    {5, Field::kCodeName, "FPGA Loader"},

    {6, Field::kCodeName, "JTAG-NOP"},    {6, Field::kCodeName, "JTAG-SVF"},  {6, Field::kCodeName, "JTAG-ISC"},
    {6, Field::kCodeName, "JTAG-STAPL"},  {6, Field::kFamily, "Custom"},      {6, Field::kFamily, "JTAG Custom"},
    {6, Field::kFamily, "IEEE 1532"},     {6, Field::kFamily, "FPGA Loader"},
};

const char* TextOf(const DeviceInfo& device, Field field) {
  switch (field) {
    case Field::kFamily:
      return device.GetFamily();
    case Field::kCodeName:
      return device.GetCodeName();
    case Field::kName:
      return device.GetName();
  }
  return nullptr;
}

}  // namespace

bool IsBypassDevice(const DeviceInfo* device, int mode) {
  if (device == nullptr) return false;
  for (const BypassRule& rule : kBypassRules) {
    if (rule.mode == mode && EqualExactly(TextOf(*device, rule.field), rule.text)) return true;
  }
  return false;
}
