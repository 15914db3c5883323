#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "module.h"

/// \file
/// Control records as Python holds them: entries of the parsed lists of devices and families.

namespace plddb::python {

// --- Where the control records of each kind are -----------------------------------------------------------------------------

/// The kinds of lists, by which Record::replacements is counted.
enum ListKind : std::size_t { kRegZero, kRegOne, kPersistentFuse, kStatus, kVoltage, kEbr, kBScan };

/// A control record's place in its list. Blocks of embedded memory are a list of lists.
struct Place {
  std::size_t outer = 0;
  std::size_t inner = 0;
};

template <class T>
struct ListOf;

/// A list of a device that is read and replaced whole.
template <class T, ListKind kKind, const std::vector<T>& (DeviceInfo::*kGet)() const, void (DeviceInfo::*kSet)(std::vector<T>)>
struct DeviceListOf {
  using Owner = DeviceInfo;
  static constexpr ListKind kListKind = kKind;
  static const std::vector<T>& All(const Owner& device, Place) { return (device.*kGet)(); }
  static void Replace(Owner& device, std::vector<T> list) { (device.*kSet)(std::move(list)); }

  static void Put(Owner& device, Place place, const T& value) {
    std::vector<T> list = All(device, place);
    list[place.inner] = value;
    Replace(device, std::move(list));
  }
};

template <>
struct ListOf<CControlRegZero>
    : DeviceListOf<CControlRegZero, kRegZero, &DeviceInfo::GetlistControlRegZero, &DeviceInfo::SetlistControlRegZero> {};
template <>
struct ListOf<CControlRegOne>
    : DeviceListOf<CControlRegOne, kRegOne, &DeviceInfo::GetlistControlRegOne, &DeviceInfo::SetlistControlRegOne> {};
template <>
struct ListOf<CPersistent_fuse> : DeviceListOf<CPersistent_fuse, kPersistentFuse, &DeviceInfo::GetlistPersistent_fuse,
                                               &DeviceInfo::SetlistPersistent_fuse> {};
template <>
struct ListOf<CControlStatus>
    : DeviceListOf<CControlStatus, kStatus, &DeviceInfo::GetlistControlStatus, &DeviceInfo::SetlistControlStatus> {};
template <>
struct ListOf<CControlVoltage>
    : DeviceListOf<CControlVoltage, kVoltage, &DeviceInfo::GetControlVoltage, &DeviceInfo::SetControlVoltage> {};
template <>
struct ListOf<CControlEBRList>
    : DeviceListOf<CControlEBRList, kEbr, &DeviceInfo::GetlistControlEBR, &DeviceInfo::SetlistControlEBR> {};

/// The entries of a block.
template <>
struct ListOf<CControlEBR> {
  using Owner = DeviceInfo;
  static constexpr ListKind kListKind = kEbr;

  static const std::vector<CControlEBR>& All(const Owner& device, Place place) {
    static const std::vector<CControlEBR> none;
    const std::vector<CControlEBRList>& blocks = device.GetlistControlEBR();
    return place.outer < blocks.size() ? blocks[place.outer].Entries : none;
  }

  static void Put(Owner& device, Place place, const CControlEBR& value) {
    std::vector<CControlEBRList> blocks = device.GetlistControlEBR();
    blocks[place.outer].Entries[place.inner] = value;
    device.SetlistControlEBR(std::move(blocks));
  }
};

template <>
struct ListOf<CBScanControl> {
  using Owner = FamilyList;
  static constexpr ListKind kListKind = kBScan;
  static const std::vector<CBScanControl>& All(Owner& family, Place) { return family.GetListBScanControl(); }
  static void Put(Owner& family, Place place, const CBScanControl& value) { family.GetListBScanControl()[place.inner] = value; }
  static void Replace(Owner& family, std::vector<CBScanControl> list) { family.SetListBScanControl(std::move(list)); }
};

// --- Entries ----------------------------------------------------------------------------------------------------------------

/// A control record: an entry of a list, which is read and written in place, or a value that belongs to no list.
template <class T>
class Entry {
 public:
  using List = ListOf<T>;
  using Owner = Held<typename List::Owner>;

  static void* operator new(std::size_t) { RaiseNotInitialised("record"); }
  static void operator delete(void*) {}  // never called

  explicit Entry(T value = T()) : value_(std::move(value)) {}
  Entry(Owner owner, Place place)
      : owner_(std::move(owner)), replacements_(owner_->replacements[List::kListKind]), place_(place) {}

  const Owner& OwnerRecord() const { return owner_; }
  Place GetPlace() const { return place_; }

  /// Whether its owner was deleted, or its list replaced.
  bool IsDeleted() const {
    if (owner_ == nullptr) return false;
    if (owner_->IsDeleted() || replacements_ != owner_->replacements[List::kListKind]) return true;
    return place_.inner >= List::All(**owner_, place_).size();
  }

  const T& Get() const {
    if (owner_ == nullptr) return value_;
    if (IsDeleted()) throw Deleted("this entry was deleted, or the list that it was in replaced");
    return List::All(**owner_, place_)[place_.inner];
  }

  /// Calls `change(value)`, and keeps the changed value.
  template <class Change>
  void Set(Change change) {
    if (owner_ == nullptr) return change(value_);
    const Writing writing(*owner_->GetTree());
    T value = Get();
    change(value);
    List::Put(**owner_, place_, value);
  }

 private:
  Owner owner_;  // null: none
  unsigned int replacements_ = 0;
  Place place_;
  T value_;
};

template <class T>
py::list EntriesOf(const Held<typename ListOf<T>::Owner>& owner, std::size_t outer = 0) {
  const std::size_t count = ListOf<T>::All(**owner, {outer, 0}).size();
  py::list list(count);
  for (std::size_t i = 0; i < count; ++i) list[i] = py::cast(std::make_shared<Entry<T>>(owner, Place{outer, i}));
  return list;
}

template <class T>
std::vector<T> ValuesOf(const py::iterable& entries) {
  std::vector<T> values;
  for (const py::handle entry : entries) {
    if (!py::isinstance<Entry<T>>(entry)) throw py::type_error("the list is one of other records");
    values.push_back(entry.cast<const Entry<T>&>().Get());
  }
  return values;
}

/// On purpose: the library keeps the old list when the new one is empty.
template <class T>
void ReplaceList(const Held<typename ListOf<T>::Owner>& owner, const py::iterable& entries) {
  std::vector<T> values = ValuesOf<T>(entries);
  const Writing writing(*owner->GetTree());
  auto& record = **owner;
  if (!values.empty()) ++owner->replacements[ListOf<T>::kListKind];
  ListOf<T>::Replace(record, std::move(values));
}

}  // namespace plddb::python
