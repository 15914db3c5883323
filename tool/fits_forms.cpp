#include "fits_forms.h"

#include <cstddef>
#include <vector>

#include "device_text.h"

namespace tool {

namespace pf = plddb::programming_files;

namespace {

// --- The answer as text -----------------------------------------------------------------------------------------------------

std::string Numbers(const std::vector<std::size_t>& numbers) {
  std::string text;
  for (const std::size_t number : numbers) text += (text.empty() ? "" : ", ") + std::to_string(number);
  return text;
}

std::string FitText(const pf::Verdict& verdict) {
  switch (verdict.fit) {
    case pf::Fit::kFits:
      return "fits position " + Numbers(verdict.positions);
    case pf::Fit::kFitsSeveral:
      return "fits several positions: " + Numbers(verdict.positions);
    case pf::Fit::kFitsNone:
      return "fits no position";
    case pf::Fit::kUnknown:
      break;
  }
  return "cannot be decided";
}

std::string DevicesText(const pf::Verdict& verdict) {
  if (verdict.devices.empty()) return "device: not known";
  constexpr std::size_t most = 12;
  std::string names;
  for (std::size_t i = 0; i < verdict.devices.size() && i < most; ++i)
    names += (i == 0 ? "" : ", ") + DeviceName(*verdict.devices[i]);
  if (verdict.devices.size() > most) names += " and " + std::to_string(verdict.devices.size() - most) + " more";
  return "device: " + names + " (plddb show " + DeviceName(*verdict.devices.front()) + ")";
}

}  // namespace

std::string AsText(const Judged& judged, bool hasChain) {
  std::string text =
      Printable(judged.path) + ": " + Description(judged.file.format) + (judged.file.isCompressed ? ", compressed" : "") + "\n";
  text += "  " + DevicesText(judged.verdict) + "\n";
  if (hasChain) text += "  " + FitText(judged.verdict) + "\n";
  for (const std::string& reason : judged.verdict.reasons) text += "    " + Printable(reason) + "\n";
  return text;
}

// --- The answer as JSON -----------------------------------------------------------------------------------------------------

namespace {

Json ValueOf(const pf::Statement& statement) {
  if (statement.kind == pf::Kind::kId) return IdText(statement.value);
  return statement.kind == pf::Kind::kFuseCount ? Json(statement.value) : Json(nullptr);
}

Json AsJson(const pf::Statement& statement) {
  const bool isId = statement.kind == pf::Kind::kId;
  Json json = {{"kind", ToText(statement.kind)},
               {"text", statement.text},
               {"value", ValueOf(statement)},
               {"mask", isId ? Json(IdText(statement.mask)) : Json(nullptr)}};
  if (statement.place.line != 0) {
    json["line"] = statement.place.line;
  } else {
    json["offset"] = statement.place.offset;
  }
  return json;
}

}  // namespace

Json AsJson(const Judged& judged) {
  Json statements = Json::array();
  for (const pf::Statement& statement : judged.file.statements) statements.push_back(AsJson(statement));
  Json devices = Json::array();
  for (const DeviceInfo* const device : judged.verdict.devices) devices.push_back(device->GetName());
  Json reasons = judged.verdict.reasons;
  for (const pf::Fault& fault : judged.file.faults) reasons.push_back("damaged (" + ToText(fault.place) + "): " + fault.text);
  return {{"file", judged.path},
          {"format", ToText(judged.file.format)},
          {"statements", std::move(statements)},
          {"fuseCount", judged.file.fuseCount ? Json(*judged.file.fuseCount) : Json(nullptr)},
          {"devices", std::move(devices)},
          {"verdict", ToText(judged.verdict.fit)},
          {"positions", judged.verdict.positions},
          {"reasons", std::move(reasons)}};
}

}  // namespace tool
