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

/// What can be said of an id that nobody answers to; null for a known one.
Json Unknown(const IdentifiedChain& identified, const ChainPosition& position) {
  if (position.Match() != nullptr) return nullptr;
  const IdKind& kind = KindOf(identified.comm, position.id);
  Json unknown = {{"kind", kind.name}, {"meaning", kind.meaning}};
  if (!kind.isIdcode) return unknown;
  const IdcodeFields fields = SplitIdcode(*position.id);
  const char* const vendor = identified.finder.VendorOf(fields.manufacturer);
  unknown["version"] = Hex(fields.version, 1);
  unknown["part"] = Hex(fields.part, 4);
  unknown["manufacturer"] = {{"field", Hex(fields.manufacturer, 3)},
                             {"bank", fields.bank},
                             {"code", Hex(fields.code, 2)},
                             {"vendor", TextOrNull(vendor)}};
  unknown["nearest"] = Nearest(identified, *position.id);
  unknown["stub"] = DescriptionStub(*position.id, vendor, position.IrLength(), "");
  return unknown;
}

Json Scanned(const Scan& scan, const ScannedTap& tap) {
  if (scan.format.empty()) return nullptr;
  return {{"format", scan.format},
          {"nearest", scan.nearest == End::kTdo ? "TDO" : "TDI"},
          {"name", tap.name.empty() ? Json(nullptr) : Json(tap.name)},
          {"irLength", NumberOrNull(tap.irLength)}};
}

Json PositionAsJson(const IdentifiedChain& identified, std::size_t i) {
  const ChainPosition& position = identified.chain[i];
  return {{"position", i},
          {"id", position.id ? Json(IdText(*position.id)) : Json(nullptr)},
          {"match", position.Match() == nullptr ? Json(nullptr) : DeviceAsJson(*position.Match())},
          {"candidates", CodeNames(position.Candidates())},
          {"ambiguous", position.IsAmbiguous()},
          {"ranked", RankedCandidates(identified, position)},
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
