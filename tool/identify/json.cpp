#include "device_text.h"
#include "identify/output.h"
#include "json_text.h"

namespace tool {
namespace {

Json DeviceAsJson(const DeviceInfo& device) {
  return {{"family", TextOrNull(FamilyNameOrNull(device))},
          {"name", TextOrNull(device.GetName())},
          {"codeName", TextOrNull(device.GetCodeName())},
          {"irLength", NumberOrNull(device.GetIRLength())}};
}

/// "0x09", or what the family's description has; null where it is not known.
Json KnownOrNull(const std::string& text) { return text == "-" ? Json(nullptr) : Json(text); }

/// The device that was taken, with what is needed to talk to it.
Json MatchAsJson(const DeviceInfo& device) {
  Json match = DeviceAsJson(device);
  match["idcodeInstruction"] = KnownOrNull(IdCodeInstruction(device));
  match["bypassInstruction"] = KnownOrNull(BypassInstruction(device));
  match["packages"] = PackageTypeList(device);
  match["vendor"] = TextOrNull(device.GetVendor());
  match["neighbour"] = IsNeighbour(device);
  match["hint"] = HintOn(device).empty() ? Json(nullptr) : Json(HintOn(device));
  return match;
}

Json CodeNames(const std::vector<Candidate>& candidates) {
  Json names = Json::array();
  for (const Candidate& candidate : candidates) {
    const char* const name = candidate.device->GetCodeName();
    names.push_back(name == nullptr ? "" : name);  // as the library's own candidate list has it
  }
  return names;
}

Json RankedCandidates(const IdentifiedChain& identified, const ChainPosition& position) {
  Json ranked = Json::array();
  for (const Candidate& candidate : MostExactFirst(position)) {
    Json one = DeviceAsJson(*candidate.device);
    one["file"] = FileOf(identified, candidate.database);
    one["reason"] = Reason(candidate);
    one["comparedBits"] = IdText(candidate.bits);
    one["searchOrder"] = candidate.searchOrder;
    ranked.push_back(std::move(one));
  }
  return ranked;
}

Json Nearest(const IdentifiedChain& identified, unsigned int id) {
  Json nearest = Json::array();
  for (const NearDevice& near : identified.finder.NearestDevices(id)) {
    Json one = DeviceAsJson(*near.device);
    one["id"] = IdText(near.device->GetjtagDeviceID());
    one["file"] = FileOf(identified, near.database);
    one["difference"] = near.difference;
    nearest.push_back(std::move(one));
  }
  return nearest;
}

Json MisreadAsJson(const IdentifiedChain& identified, std::optional<unsigned int> id) {
  const auto misread = id ? identified.finder.MisreadOf(*id) : std::nullopt;
  if (!misread) return nullptr;
  Json one = DeviceAsJson(*misread->device);
  one["id"] = IdText(misread->id);
  one["file"] = FileOf(identified, misread->database);
  one["how"] = misread->how;
  return one;
}

Json Manufacturer(const IdcodeFields& fields, const char* vendor) {
  return {{"field", Hex(fields.manufacturer, 3)},
          {"bank", fields.bank},
          {"code", Hex(fields.code, 2)},
          {"maker", MakerText(fields.manufacturer)},
          {"vendor", TextOrNull(vendor)}};
}

/// An explanation of an id that no device answers to; null for a known id.
Json Unknown(const IdentifiedChain& identified, const ChainPosition& position) {
  if (position.Match() != nullptr) return nullptr;
  const IdKind& kind = KindOf(identified.comm, position.id);
  Json unknown = {{"kind", kind.name}, {"meaning", kind.meaning}, {"misread", MisreadAsJson(identified, position.id)}};
  if (!kind.isIdcode) return unknown;
  const IdcodeFields fields = SplitIdcode(*position.id);
  const char* const vendor = identified.finder.VendorOf(fields.manufacturer);
  unknown["version"] = Hex(fields.version, 1);
  unknown["part"] = Hex(fields.part, 4);
  unknown["manufacturer"] = Manufacturer(fields, vendor);
  unknown["nearest"] = Nearest(identified, *position.id);
  unknown["stub"] = DescriptionStub(*position.id, vendor, position.IrLength(), "");
  return unknown;
}

Json Nearest(End nearest) {
  if (nearest == End::kAsPrinted) return nullptr;
  return nearest == End::kTdo ? "TDO" : "TDI";
}

Json Scanned(const Scan& scan, const ScannedTap& tap) {
  if (scan.format.empty()) return nullptr;
  return {{"format", scan.format},
          {"nearest", Nearest(scan.nearest)},
          {"name", tap.name.empty() ? Json(nullptr) : Json(tap.name)},
          {"irLength", NumberOrNull(tap.irLength)},
          {"irLengthIsGuess", tap.irLength != 0 && tap.irLengthIsGuess}};
}

/// All of an element but its position, which is the first of its members.
Json PositionAsJson(const IdentifiedChain& identified, std::size_t i) {
  const ChainPosition& position = identified.chain[i];
  const Scan& scan = identified.scan;
  return {{"id", position.id ? Json(IdText(*position.id)) : Json(nullptr)},
          {"kind", KindText(identified, position)},
          {"match", position.Match() == nullptr ? Json(nullptr) : MatchAsJson(*position.Match())},
          {"candidates", CodeNames(position.Candidates())},
          {"ambiguous", position.IsAmbiguous()},
          {"ranked", RankedCandidates(identified, position)},
          {"irLength", NumberOrNull(position.IrLength())},
          {"unknown", Unknown(identified, position)},
          {"order", OrderText(scan.nearest)},
          {"tool", scan.tool.empty() ? Json(nullptr) : Json(scan.tool)},
          {"scan", Scanned(scan, scan.taps[i])}};
}

/// The members of an element as ToText would write them in an array, up to its closing brace.
std::string MembersText(const Json& element) {
  std::string text = ToText(element);
  text.pop_back();  // its line end
  for (std::size_t at = 0; (at = text.find('\n', at)) != text.npos; at += 3) text.insert(at + 1, "  ");
  return text.substr(2);  // without the opening brace and the line end
}

}  // namespace

void JsonOutput(const IdentifiedChain& identified, Output& output) {
  AnswerTexts texts;
  for (std::size_t i = 0; i < identified.chain.size(); ++i) {
    const auto members = [&] { return MembersText(PositionAsJson(identified, i)); };
    output << (i == 0 ? "[\n  {\n    \"position\": " : ",\n  {\n    \"position\": ");
    output << std::to_string(i) + ",\n";
    output << texts.Of(identified.chain[i], identified.scan.taps[i], members);
  }
  output << (identified.chain.empty() ? "[]\n" : "\n]\n");
}

}  // namespace tool
