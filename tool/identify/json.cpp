#include "device_text.h"
#include "identify/output.h"
#include "json_text.h"

namespace tool {
namespace {

void WriteDevice(const DeviceInfo& device, JsonWriter& json) {
  json.Name("family").Value(FamilyNameOrNull(device));
  json.Name("name").Value(device.GetName());
  json.Name("codeName").Value(device.GetCodeName());
  json.Name("irLength").ValueOrNull(device.GetIRLength());
}

/// "0x09", or what the family's description has; null where it is not known.
void WriteKnown(const std::string& text, JsonWriter& json) { json.ValueOrNull(text == "-" ? std::string() : text); }

/// The device that was taken, with what is needed to talk to it; null without one.
void WriteMatch(const DeviceInfo* device, JsonWriter& json) {
  if (device == nullptr) return json.Value(nullptr);
  json.Begin('{');
  WriteDevice(*device, json);
  WriteKnown(IdCodeInstruction(*device), json.Name("idcodeInstruction"));
  WriteKnown(BypassInstruction(*device), json.Name("bypassInstruction"));
  json.Name("packages").Value(Json(PackageTypeList(*device)));
  json.Name("vendor").Value(device->GetVendor());
  json.Name("neighbour").Value(IsNeighbour(*device));
  json.Name("hint").ValueOrNull(HintOn(*device));
  json.End('}');
}

void WriteCodeNames(const std::vector<Candidate>& candidates, JsonWriter& json) {
  json.Begin('[');
  for (const Candidate& candidate : candidates) {
    const char* const name = candidate.device->GetCodeName();
    json.Value(name == nullptr ? "" : name);  // as the library's own candidate list has it
  }
  json.End(']');
}

void WriteRanked(const IdentifiedChain& identified, const ChainPosition& position, JsonWriter& json) {
  json.Begin('[');
  for (const Candidate& candidate : MostExactFirst(position)) {
    json.Begin('{');
    WriteDevice(*candidate.device, json);
    json.Name("file").Value(FileOf(identified, candidate.database));
    json.Name("reason").Value(Reason(candidate));
    json.Name("comparedBits").Value(IdText(candidate.bits));
    json.Name("searchOrder").Value(candidate.searchOrder);
    json.End('}');
  }
  json.End(']');
}

void WriteNearest(const IdentifiedChain& identified, unsigned int id, JsonWriter& json) {
  json.Begin('[');
  for (const NearDevice& near : identified.finder.NearestDevices(id)) {
    json.Begin('{');
    WriteDevice(*near.device, json);
    json.Name("id").Value(IdText(near.device->GetjtagDeviceID()));
    json.Name("file").Value(FileOf(identified, near.database));
    json.Name("difference").Value(near.difference);
    json.End('}');
  }
  json.End(']');
}

void WriteMisread(const IdentifiedChain& identified, std::optional<unsigned int> id, JsonWriter& json) {
  const auto misread = id ? identified.finder.MisreadOf(*id) : std::nullopt;
  if (!misread) return json.Value(nullptr);
  json.Begin('{');
  WriteDevice(*misread->device, json);
  json.Name("id").Value(IdText(misread->id));
  json.Name("file").Value(FileOf(identified, misread->database));
  json.Name("how").Value(misread->how);
  json.End('}');
}

void WriteManufacturer(const IdcodeFields& fields, const char* vendor, JsonWriter& json) {
  json.Begin('{');
  json.Name("field").Value(Hex(fields.manufacturer, 3));
  json.Name("bank").Value(fields.bank);
  json.Name("code").Value(Hex(fields.code, 2));
  json.Name("maker").Value(MakerText(fields.manufacturer));
  json.Name("vendor").Value(vendor);
  json.End('}');
}

/// The members that only an IDCODE has.
void WriteIdcode(const IdentifiedChain& identified, unsigned int id, unsigned long irLength, JsonWriter& json) {
  const IdcodeFields fields = SplitIdcode(id);
  const char* const vendor = identified.finder.VendorOf(fields.manufacturer);
  json.Name("version").Value(Hex(fields.version, 1));
  json.Name("part").Value(Hex(fields.part, 4));
  WriteManufacturer(fields, vendor, json.Name("manufacturer"));
  WriteNearest(identified, id, json.Name("nearest"));
  json.Name("stub").Value(DescriptionStub(id, vendor, irLength, ""));
}

/// An explanation of an id that no device answers to; null for a known id.
void WriteUnknown(const IdentifiedChain& identified, const ChainPosition& position, JsonWriter& json) {
  if (position.Match() != nullptr) return json.Value(nullptr);
  const IdKind& kind = KindOf(identified.comm, position.id);
  json.Begin('{');
  json.Name("kind").Value(kind.name);
  json.Name("meaning").Value(kind.meaning);
  WriteMisread(identified, position.id, json.Name("misread"));
  if (kind.isIdcode) WriteIdcode(identified, *position.id, position.IrLength(), json);
  json.End('}');
}

const char* NearestEnd(End nearest) {
  if (nearest == End::kAsPrinted) return nullptr;
  return nearest == End::kTdo ? "TDO" : "TDI";
}

void WriteScanned(const Scan& scan, const ScannedTap& tap, JsonWriter& json) {
  if (scan.format.empty()) return json.Value(nullptr);
  json.Begin('{');
  json.Name("format").Value(scan.format);
  json.Name("nearest").Value(NearestEnd(scan.nearest));
  json.Name("name").ValueOrNull(tap.name);
  json.Name("irLength").ValueOrNull(tap.irLength);
  json.Name("irLengthIsGuess").Value(tap.irLength != 0 && tap.irLengthIsGuess);
  json.End('}');
}

/// All members of an element but its position, which is the first one.
std::string MembersText(const IdentifiedChain& identified, std::size_t i) {
  const ChainPosition& position = identified.chain[i];
  const Scan& scan = identified.scan;
  std::string text;
  text.reserve(1024);
  JsonWriter json(text, 2);
  json.Name("id").ValueOrNull(position.id ? IdText(*position.id) : std::string());
  json.Name("kind").Value(KindText(identified, position));
  WriteMatch(position.Match(), json.Name("match"));
  WriteCodeNames(position.Candidates(), json.Name("candidates"));
  json.Name("ambiguous").Value(position.IsAmbiguous());
  WriteRanked(identified, position, json.Name("ranked"));
  json.Name("irLength").ValueOrNull(position.IrLength());
  WriteUnknown(identified, position, json.Name("unknown"));
  json.Name("order").Value(OrderText(scan.nearest));
  json.Name("tool").ValueOrNull(scan.tool);
  WriteScanned(scan, scan.taps[i], json.Name("scan"));
  return text;
}

}  // namespace

void JsonOutput(const IdentifiedChain& identified, Output& output) {
  AnswerTexts texts;
  for (std::size_t i = 0; i < identified.chain.size(); ++i) {
    output << (i == 0 ? "[\n  {\n    \"position\": " : ",\n  {\n    \"position\": ");
    output << std::to_string(i);
    output << texts.Of(identified.chain[i], identified.scan.taps[i], [&] { return MembersText(identified, i); });
    output << "\n  }";
  }
  output << (identified.chain.empty() ? "[]\n" : "\n]\n");
}

}  // namespace tool
