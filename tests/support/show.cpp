#include "tests/support/show.h"

namespace support {
namespace {

/// {a, b, c}
template <typename... Fields>
std::string Braces(const Fields&... fields) {
  std::string shown;
  ((shown += (shown.empty() ? "{" : ", ") + Show(fields)), ...);
  return shown + "}";
}

/// Text that is shown already: no quotes around it.
struct Raw {
  std::string text;
};

std::string Show(const Raw& raw) { return raw.text; }

std::string Quoted(const std::string& text) {
  std::string shown = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') shown += '\\';
    shown += c;
  }
  return shown + "'";
}

Raw AdaptersOf(const Package& package) {
  std::string shown = "[";
  for (int i = 0; i < package.GetAdapterCount(); ++i) {
    shown += (i > 0 ? ", " : "") + support::Show(*package.GetAdapter(i));
  }
  return {shown + "]"};
}

}  // namespace

std::string Show(const char* text) { return text == nullptr ? "null" : Quoted(text); }
std::string Show(const std::string& text) { return Quoted(text); }
std::string Show(long long number) { return std::to_string(number); }

std::string Show(const CControlRegZero& r) { return Braces(r.Frequency, r.MasterClock, r.ClockDivider); }
std::string Show(const CControlRegOne& r) { return Braces(r.BitName, r.Value, r.Address, r.Column); }
std::string Show(const CPersistent_fuse& r) { return Braces(r.Value, r.Address, r.Column); }
std::string Show(const CControlStatus& r) { return Braces(r.BitName, r.Control, r.Text, r.Index); }
std::string Show(const CControlEBR& r) { return Braces(r.BitName, r.Value, r.Address, r.Column); }
std::string Show(const CControlEBRList& r) { return Braces(r.Name, r.Entries); }
std::string Show(const CControlVoltage& r) { return Braces(r.VCCCore, r.VCCJ, r.PinList); }
std::string Show(const CMultiboot_fuses& r) { return Braces(r.CfgAddr, r.ChipSelColumn, r.SourceSelColumn, r.AutoAdd); }
std::string Show(const CBScanControl& r) { return Braces(r.DefaultValue, r.Controls); }

std::string Show(const Adapter& adapter) {
  const char* const vendor = adapter.GetVendorName();
  const char* const name = adapter.GetAdapterName();
  return Braces(vendor, name);
}

std::string Show(const Package& p) {
  const char* const texts[] = {p.GetType(),        p.GetPON(),       p.GetJDF(),     p.GetINI(),
                               p.GetOrvoSetting(), p.GetBackupPON(), p.GetAliasPON()};
  return Braces(texts[0], texts[1], texts[2], texts[3], texts[4], AdaptersOf(p), texts[5], texts[6]);
}

std::string Show(const PackageList& packages) {
  std::string shown = "[";
  for (int i = 0; Package* const package = packages.GetPackage(i); ++i) shown += (i > 0 ? ", " : "") + Show(*package);
  return shown + "]";
}

}  // namespace support
