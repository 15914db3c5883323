#pragma once

#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "DeviceListOwner.h"

/// \file
/// One object of every class, filled, as the place where any operation of the interface can be called; and such calls.

namespace support {

/// A text that every text setter takes, and in which each list setter finds items that are too long for a short string.
inline constexpr char kAnyText[] =
    "\"the first quoted item\", \"the second quoted item\"; 11 is the first closed item; 22 is the second closed item;";

/// The same for the one setter that takes no text of 64 characters or more.
inline constexpr char kShortNumbers[] = "11 22 33 44 55 66 77 88 99";

struct WholeTree {
  WholeTree();
  ~WholeTree();
  WholeTree(const WholeTree&) = delete;
  WholeTree& operator=(const WholeTree&) = delete;

  template <class Class>
  Class& Get();  ///< The object of this class that calls go to.

  DeviceListOwner database = MakeDeviceList();  ///< Two families of a device each.
  DeviceListOwner other = MakeDeviceList();     ///< One family of a device.
  FamilyList& family;                           ///< The first of the first database, and so on down.
  DeviceInfo& device;
  PackageList& packages;
  Package& package;
  Adapter& adapter;
  DeviceStrElement element;
  LObjList list;  ///< Holds the element three times.
  LString helper;
  std::vector<std::string> texts;  ///< For the lookups that fill one.
};

// clang-format off
template <> inline DeviceList& WholeTree::Get() { return *database; }
template <> inline FamilyList& WholeTree::Get() { return family; }
template <> inline DeviceInfo& WholeTree::Get() { return device; }
template <> inline PackageList& WholeTree::Get() { return packages; }
template <> inline Package& WholeTree::Get() { return package; }
template <> inline Adapter& WholeTree::Get() { return adapter; }
template <> inline DeviceStrElement& WholeTree::Get() { return element; }
template <> inline LObjList& WholeTree::Get() { return list; }
template <> inline LString& WholeTree::Get() { return helper; }
// clang-format on

/// All that a tree shows, by place: each place has its elements in order, a single one where it is no list.
using TreeState = std::map<std::string, std::vector<std::string>>;

/// The places are the fields of the first database's families and devices, the families of each database as a whole, and the
/// single objects. The scratch list of EBR entries is read by storing it as a block.
TreeState StateOf(WholeTree& tree);

// Calls of members by their address, with arguments that make them do something.

template <class Value>
struct AnyArgument {
  static Value Make(WholeTree&) { return Value(1); }
};

template <>
struct AnyArgument<const char*> {
  static const char* Make(WholeTree&) { return kAnyText; }
};

template <class Record>
struct AnyArgument<std::vector<Record>> {
  static std::vector<Record> Make(WholeTree&) { return std::vector<Record>(2); }
};

template <class Class, class Result, class... Parameters>
Class ClassOf(Result (Class::*)(Parameters...));
template <class Class, class Result, class... Parameters>
Class ClassOf(Result (Class::*)(Parameters...) const);
template <class Class, class Result, class... Parameters>
std::tuple<std::decay_t<Parameters>...> ArgumentsOf(Result (Class::*)(Parameters...));
template <class Class, class Result, class... Parameters>
std::tuple<std::decay_t<Parameters>...> ArgumentsOf(Result (Class::*)(Parameters...) const);

template <class... Values>
std::tuple<Values...> MakeArguments(WholeTree& tree, std::tuple<Values...>*) {
  return std::tuple<Values...>{AnyArgument<Values>::Make(tree)...};
}

/// Calls `member` of the tree's object of its class. `within` gets the bare call, whose arguments are all prepared.
template <auto member, class Within>
void CallMember(WholeTree& tree, Within within) {
  auto& object = tree.Get<decltype(ClassOf(member))>();
  auto arguments = MakeArguments(tree, static_cast<decltype(ArgumentsOf(member))*>(nullptr));
  within([&] { std::apply([&](auto&... each) { static_cast<void>((object.*member)(std::move(each)...)); }, arguments); });
}

}  // namespace support
