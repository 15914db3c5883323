#include <iterator>

#include "device_text.h"
#include "identify/output.h"

namespace tool {
namespace {

/// A position and all that cells are made of.
struct Place {
  const IdentifiedChain& identified;
  std::size_t number;
  const ChainPosition& position;
  const DeviceInfo* device;  // the match, or null
};

std::string TextOrNothing(const char* text) { return text == nullptr ? "" : Printable(text); }
std::string NumberOrNothing(unsigned long number) { return number == 0 ? "" : std::to_string(number); }
std::string KnownOrNothing(const std::string& text) { return text == "-" ? "" : text; }

std::string State(const Place& place) {
  if (place.device != nullptr) return place.position.IsAmbiguous() ? "ambiguous" : "known";
  const IdKind& kind = KindOf(place.identified.comm, place.position.id);
  return kind.isIdcode ? "unknown" : kind.name;
}

std::string Candidates(const Place& place) {
  std::string text;
  for (const Candidate& candidate : MostExactFirst(place.position)) {
    text += (text.empty() ? "" : "; ") + DeviceName(*candidate.device) + ": " + Reason(candidate);
  }
  return text;
}

bool IsUnknownIdcode(const Place& place) {
  return place.device == nullptr && KindOf(place.identified.comm, place.position.id).isIdcode;
}

/// A field of an unknown IDCODE, and nothing for other ids.
std::string Field(const Place& place, unsigned int IdcodeFields::*field, int digits) {
  return IsUnknownIdcode(place) ? Hex(SplitIdcode(*place.position.id).*field, digits) : "";
}

/// The maker of an unknown IDCODE, by its code.
std::string Maker(const Place& place) {
  return IsUnknownIdcode(place) ? MakerText(SplitIdcode(*place.position.id).manufacturer) : "";
}

std::string HowMisread(const Place& place) {
  if (place.device != nullptr || !place.position.id) return "";
  const auto misread = place.identified.finder.MisreadOf(*place.position.id);
  return misread ? IdText(misread->id) + " " + misread->how + ": " + DeviceName(*misread->device) : "";
}

std::string Vendor(const Place& place) {
  if (place.device != nullptr) return TextOrNothing(place.device->GetVendor());
  if (!IsUnknownIdcode(place)) return "";
  return TextOrNothing(place.identified.finder.VendorOf(SplitIdcode(*place.position.id).manufacturer));
}

std::string Nearest(const Place& place) {
  std::string text;
  if (!IsUnknownIdcode(place)) return text;
  for (const NearDevice& near : place.identified.finder.NearestDevices(*place.position.id)) {
    text += (text.empty() ? "" : "; ") + DeviceName(*near.device) + ": " + near.difference;
  }
  return text;
}

std::string OfDevice(const Place& place, std::string (*text)(const DeviceInfo& device)) {
  return place.device == nullptr ? "" : KnownOrNothing(text(*place.device));
}

/// The columns. Scripts count on their names and order: new ones come last.
constexpr struct {
  const char* name;
  std::string (*cell)(const Place& place);
} kColumns[] = {
    {"position", [](const Place& place) { return std::to_string(place.number); }},
    {"id", [](const Place& place) { return place.position.id ? IdText(*place.position.id) : std::string(); }},
    {"state", State},
    {"device", [](const Place& place) { return OfDevice(place, DeviceName); }},
    {"code_name", [](const Place& place) { return place.device ? TextOrNothing(place.device->GetCodeName()) : std::string(); }},
    {"family", [](const Place& place) { return OfDevice(place, FamilyName); }},
    {"ir_length", [](const Place& place) { return NumberOrNothing(place.position.IrLength()); }},
    {"idcode_instruction", [](const Place& place) { return OfDevice(place, IdCodeInstruction); }},
    {"bypass_instruction", [](const Place& place) { return OfDevice(place, BypassInstruction); }},
    {"packages", [](const Place& place) { return OfDevice(place, PackageTypes); }},
    {"candidates", Candidates},
    {"version", [](const Place& place) { return Field(place, &IdcodeFields::version, 1); }},
    {"part", [](const Place& place) { return Field(place, &IdcodeFields::part, 4); }},
    {"manufacturer", [](const Place& place) { return Field(place, &IdcodeFields::manufacturer, 3); }},
    {"vendor", Vendor},
    {"nearest", Nearest},
    {"scan", [](const Place& place) { return place.identified.scan.format; }},
    {"scan_name", [](const Place& place) { return Printable(place.identified.scan.taps[place.number].name); }},
    {"scan_ir_length", [](const Place& place) { return NumberOrNothing(place.identified.scan.taps[place.number].irLength); }},
    {"order", [](const Place& place) { return std::string(OrderText(place.identified.scan.nearest)); }},
    {"tool", [](const Place& place) { return place.identified.scan.tool; }},
    {"kind", [](const Place& place) { return KindText(place.identified, place.position); }},
    {"hint", [](const Place& place) { return place.device == nullptr ? std::string() : HintOn(*place.device); }},
    {"maker", Maker},
    {"misread", HowMisread},
};

/// The cells of all columns but the first, each after a tab.
template <typename Cell>
std::string Cells(Cell cell) {
  std::string cells;
  for (std::size_t i = 1; i < std::size(kColumns); ++i) cells += "\t" + cell(kColumns[i]);
  return cells + "\n";
}

}  // namespace

void TsvOutput(const IdentifiedChain& identified, Output& output) {
  output << kColumns[0].name + Cells([](const auto& column) { return std::string(column.name); });
  AnswerTexts texts;
  for (std::size_t i = 0; i < identified.chain.size(); ++i) {
    const ChainPosition& position = identified.chain[i];
    const Place place = {identified, i, position, position.Match()};
    const auto cells = [&] { return Cells([&](const auto& column) { return column.cell(place); }); };
    output << kColumns[0].cell(place) + texts.Of(position, identified.scan.taps[i], cells);
  }
}

}  // namespace tool
