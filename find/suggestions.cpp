// If a text finds nothing: what was probably meant, and why it finds nothing.

#include <algorithm>

#include "database/lookup_rules.h"
#include "descriptions/NearNames.h"
#include "device/text_rules.h"
#include "find/search.h"
#include "foundation/printed_forms.h"

namespace plddb::find {
namespace {

constexpr std::size_t kMost = 5;

void Append(std::vector<std::string_view>& all, const std::vector<std::string_view>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

bool IsKnown(const std::vector<std::string>& texts, std::string_view text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

bool BeginsWith(std::string_view text, const std::string& beginning) {
  return internal::AfterPrefix(std::string(text).c_str(), beginning.c_str()) != nullptr;
}

/// The case of letters does not count in names: `text` in another case is the same name.
std::vector<std::string> WithoutItself(std::vector<std::string> near, std::string_view text) {
  const auto isItself = [text](const std::string& name) { return internal::AreEqualIgnoringCase(name, text); };
  near.erase(std::remove_if(near.begin(), near.end(), isItself), near.end());
  return near;
}

std::string NameOrCodeName(const DeviceInfo& device) {
  const char* const codeName = internal::OrEmpty(device.GetCodeName());
  return internal::Printable(*codeName == '\0' ? internal::OrEmpty(device.GetName()) : codeName);
}

}  // namespace

std::vector<std::string> Near(std::string_view wanted, const std::vector<std::string_view>& known) {
  std::vector<std::string> near;
  const std::string beginning(wanted);
  for (const std::string_view text : known) {
    if (beginning.empty() || near.size() == kMost) break;
    if (text != wanted && BeginsWith(text, beginning) && !IsKnown(near, text)) near.emplace_back(text);
  }
  if (!near.empty()) return near;
  for (const std::string_view text : plddb::NearNames(wanted, known, kMost + 1)) {
    if (text != wanted && near.size() < kMost) near.emplace_back(text);
  }
  return near;
}

std::vector<std::string_view> TextsOf(const Databases& databases, Key key) {
  std::vector<std::string_view> texts;
  ForEachDevice(databases, "", [&](const FamilyList& family, const DeviceInfo& device, std::size_t) {
    ForEachText(family, device, key, [&](const char* text) { texts.emplace_back(text); });
  });
  return texts;
}

std::vector<std::string> NearNames(const Databases& databases, std::string_view text) {
  std::vector<std::string_view> known;
  for (const Key key : {Key::kName, Key::kCodeName, Key::kAlias, Key::kFamily}) Append(known, TextsOf(databases, key));
  return WithoutItself(Near(text, known), text);
}

std::vector<std::string> NearNames(const Databases& databases, std::string_view text, Key key) {
  return WithoutItself(Near(text, TextsOf(databases, key == Key::kFullName ? Key::kCodeName : key)), text);
}

std::string WhyNoPackage(const Databases& databases, std::string_view type, std::string_view name) {
  const std::string wanted(type);
  std::string near;
  for (const Match& match : FindByKey(databases, Key::kName, name)) {
    internal::AnyPackage(*match.device->GetDevicePackage(), [&](const Package& package) {
      const bool isMeant = internal::EqualIgnoringCase(package.GetType(), wanted.c_str());
      if (isMeant && near.empty()) near = package.GetType();
      return isMeant;
    });
  }
  return near.empty() ? "" : "the case of letters counts in package types: " + internal::Printable(near);
}

std::string WhyNoFullName(const Databases& databases, unsigned long fuses, std::string_view fullName) {
  std::string why;
  const std::string normal = internal::NormalForm(fullName);
  ForEachDevice(databases, "", [&](const FamilyList&, const DeviceInfo& device, std::size_t) {
    if (!why.empty() || !internal::HasFullName(device, normal)) return;
    const std::string name = NameOrCodeName(device);
    if (device.GetFuseNumber() == fuses) {
      why = name + " is a device for " + internal::Printable(internal::OrEmpty(device.GetComm())) +
            "; full names are those of devices for JTAG or DUAL";
    } else if (device.GetFuseNumber() != 0) {
      why = name + " has " + std::to_string(device.GetFuseNumber()) + " fuses";
    }
  });
  return why;
}

}  // namespace plddb::find
