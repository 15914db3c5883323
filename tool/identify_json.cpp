#include "device_text.h"
#include "identify_output.h"
#include "json_text.h"
#include "unknown_id.h"

namespace tool {
namespace {

Json DeviceAsJson(const DeviceInfo& device) {
  return {{"family", TextOrNull(FamilyNameOrNull(device))},
          {"name", TextOrNull(device.GetName())},
          {"codeName", TextOrNull(device.GetCodeName())},
          {"irLength", NumberOrNull(device.GetIRLength())}};
}

Json CodeNames(const std::vector<Candidate>& candidates) {
  Json names = Json::array();
  for (const Candidate& candidate : candidates) {
    const char* const name = candidate.device->GetCodeName();
    names.push_back(name == nullptr ? "" : name);  // as the library's own candidate list has it
  }
  return names;
}

Json RankedCandidates(const ChainPosition& position) {
  Json ranked = Json::array();
  for (const Candidate& candidate : MostExactFirst(position)) {
    Json one = DeviceAsJson(*candidate.device);
    one["file"] = candidate.database->file;
    one["reason"] = Reason(candidate);
    one["comparedBits"] = IdText(candidate.bits);
    one["searchOrder"] = candidate.search_order;
    ranked.push_back(std::move(one));
  }
  return ranked;
}

Json Nearest(const std::vector<NearDevice>& devices) {
  Json nearest = Json::array();
  for (const NearDevice& near : devices) {
    Json one = DeviceAsJson(*near.device);
    one["id"] = IdText(near.device->GetjtagDeviceID());
    one["file"] = near.database->file;
    one["difference"] = near.difference;
    nearest.push_back(std::move(one));
  }
  return nearest;
}

/// What can be said of an id that nobody answers to; null for a known one.
Json Unknown(const IdentifiedChain& identified, const ChainPosition& position) {
  if (position.match != nullptr) return nullptr;
  const IdKind& kind = KindOf(identified.comm, position.id);
  Json unknown = {{"kind", kind.name}, {"meaning", kind.meaning}};
  if (!kind.is_idcode) return unknown;
  const IdcodeFields fields = SplitIdcode(*position.id);
  const char* const vendor = VendorOf(identified.databases, fields.manufacturer);
  unknown["version"] = Hex(fields.version, 1);
  unknown["part"] = Hex(fields.part, 4);
  unknown["manufacturer"] = {{"field", Hex(fields.manufacturer, 3)},
                             {"bank", fields.bank},
                             {"code", Hex(fields.code, 2)},
                             {"vendor", TextOrNull(vendor)}};
  unknown["nearest"] = Nearest(NearestDevices(identified.databases, *position.id));
  unknown["stub"] = DescriptionStub(*position.id, vendor, position.IrLength(), "");
  return unknown;
}

Json Scanned(const Scan& scan, const ScannedTap& tap) {
  if (scan.format.empty()) return nullptr;
  return {{"format", scan.format},
          {"nearest", scan.nearest == End::kTdo ? "TDO" : "TDI"},
          {"name", tap.name.empty() ? Json(nullptr) : Json(tap.name)},
          {"irLength", NumberOrNull(tap.ir_length)}};
}

Json PositionAsJson(const IdentifiedChain& identified, std::size_t i) {
  const ChainPosition& position = identified.chain[i];
  return {{"position", i},
          {"id", position.id ? Json(IdText(*position.id)) : Json(nullptr)},
          {"match", position.match == nullptr ? Json(nullptr) : DeviceAsJson(*position.match)},
          {"candidates", CodeNames(position.candidates)},
          {"ambiguous", position.IsAmbiguous()},
          {"ranked", RankedCandidates(position)},
          {"irLength", NumberOrNull(position.IrLength())},
          {"unknown", Unknown(identified, position)},
          {"scan", Scanned(identified.scan, identified.scan.taps[i])}};
}

}  // namespace

std::string JsonOutput(const IdentifiedChain& identified) {
  Json positions = Json::array();
  for (std::size_t i = 0; i < identified.chain.size(); ++i) positions.push_back(PositionAsJson(identified, i));
  return ToText(positions);
}

}  // namespace tool
