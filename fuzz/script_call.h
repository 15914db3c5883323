#pragma once

#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/script_world.h"
#include "fuzz/tree_checks.h"

/// \file
/// Calls of members by their address: the arguments come from the script, lent results are read.

namespace fuzz {

// Records for the whole-list setters.
inline void Name(CControlRegZero& record, const std::string& text) { record.Frequency = text; }
inline void Name(CControlRegOne& record, const std::string& text) { record.BitName = text; }
inline void Name(CPersistent_fuse& record, const std::string& text) { record.Address = static_cast<int>(text.size()); }
inline void Name(CControlStatus& record, const std::string& text) { record.Control = text; }
inline void Name(CControlEBRList& record, const std::string& text) { record.Entries.resize((record.Name = text).size()); }
inline void Name(CControlVoltage& record, const std::string& text) { record.VCCJ = text; }
inline void Name(CBScanControl& record, const std::string& text) { record.Controls.push_back(text); }
inline void Name(std::string& record, const std::string& text) { record = text; }
inline void Name(int& record, const std::string& text) { record = static_cast<int>(text.size()); }

template <class Value>
struct Taker {
  static Value Take(Arguments& arguments) { return static_cast<Value>(arguments.Number()); }
};

template <>
struct Taker<const char*> {
  static const char* Take(Arguments& arguments) { return arguments.Text(); }
};

template <class Record>
struct Taker<std::vector<Record>> {
  static std::vector<Record> Take(Arguments& arguments) {
    std::vector<Record> records(arguments.Size() % 20);
    const char* const text = arguments.Text();
    for (Record& record : records) Name(record, text == nullptr ? "" : std::string(text).substr(0, 50));
    return records;
  }
};

inline void Look(const char* text) { Read(text); }
inline void Look(const std::string& text) { Read(text); }
inline void Look(const FamilyList* family) { Read(family == nullptr ? nullptr : family->GetName()); }
inline void Look(const Package* package) { Read(package == nullptr ? nullptr : package->GetType()); }
inline void Look(const Adapter* adapter) { Read(adapter == nullptr ? nullptr : adapter->GetAdapterName()); }
inline void Look(const PackageList* packages) { Check(packages != nullptr, "a device has a package list"); }

/// Devices are only lent out of families.
inline void Look(const DeviceInfo* device) {
  if (device == nullptr) return;
  const FamilyList* const family = device->GetFamilyObject();
  int i = 0;
  while (family->GetDevice(i) != nullptr && family->GetDevice(i) != device) ++i;
  Check(family->GetDevice(i) == device, "a lent device is in its family");
}

/// A list that is lent for changing is changed.
template <class Record>
void Look(std::vector<Record>& list) {
  if (list.size() > 3) {
    list.clear();
  } else {
    list.emplace_back();
  }
}

template <class Record>
void Look(const std::vector<Record>&) {}  // the checks of the whole tree read it

template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
void Look(Number) {}

template <class Object, class Member, class... Parameters>
void CallOn(Object& object, Member member, Arguments& arguments, std::tuple<Parameters...>*) {
  std::tuple<std::decay_t<Parameters>...> values{Taker<std::decay_t<Parameters>>::Take(arguments)...};  // braces: in order
  std::apply(
      [&](auto&... each) {
        if constexpr (std::is_void_v<decltype((object.*member)(each...))>) {
          (object.*member)(each...);
        } else {
          Look((object.*member)(each...));
        }
      },
      values);
}

template <class Object, class Result, class... Parameters>
void CallMember(World& world, Arguments& arguments, Result (Object::*member)(Parameters...)) {
  Object* const object = world.Current<Object>();
  if (object != nullptr) CallOn(*object, member, arguments, static_cast<std::tuple<Parameters...>*>(nullptr));
}

template <class Object, class Result, class... Parameters>
void CallMember(World& world, Arguments& arguments, Result (Object::*member)(Parameters...) const) {
  const Object* const object = world.Current<Object>();
  if (object != nullptr) CallOn(*object, member, arguments, static_cast<std::tuple<Parameters...>*>(nullptr));
}

/// Calls `member` of the current object of its class; nothing when there is none.
template <auto member>
void Call(World& world, Arguments& arguments) {
  CallMember(world, arguments, member);
}

}  // namespace fuzz
