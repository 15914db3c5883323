#include "tree.h"

#include <chrono>
#include <thread>

namespace plddb::python {

Record::~Record() {
  if (record_ != nullptr) tree_->Forget(record_);
}

void* Record::Get() const {
  if (record_ == nullptr) throw Deleted("this record was deleted from its database");
  return record_;
}

std::vector<const DeviceList*> Tree::Databases() const {
  std::vector<const DeviceList*> databases;
  for (const Part& part : parts_) databases.push_back(part.database.get());
  return databases;
}

DeviceList& Tree::First() {
  if (parts_.empty()) parts_.push_back({"", MakeDeviceList()});
  return *parts_.front().database;
}

DeviceList& Tree::Last() {
  First();
  return *parts_.back().database;
}

const std::string& Tree::FileOf(const FamilyList& family) const {
  static const std::string none;
  for (const Part& part : parts_) {
    for (int i = 0; const FamilyList* own = part.database->GetFamily(i); ++i) {
      if (own == &family) return part.file;
    }
  }
  return none;
}

void Tree::DeleteFamily(DeviceList& database, int position) {
  FamilyList& family = *database.GetFamily(position);
  MarkDeleted(family);
  ReleaseDevices(family);
  database.DeleteFamily(position);
}

void Tree::TakeOver(Tree& other) {
  for (const Part& part : parts_) {
    for (int i = 0; const FamilyList* family = part.database->GetFamily(i); ++i) MarkDeleted(*family);
  }
  parts_ = std::move(other.parts_);
}

void Tree::MarkOne(const void* record) {
  const auto held = held_.find(record);
  if (held == held_.end()) return;
  if (const std::shared_ptr<Record> known = held->second.lock()) known->MarkDeleted();
  held_.erase(held);
}

void Tree::MarkDeleted(const FamilyList& family) {
  for (int i = 0; const DeviceInfo* device = family.GetDevice(i); ++i) MarkDeleted(*device);
  MarkOne(&family);
}

void Tree::MarkDeleted(const DeviceInfo& device) {
  for (unsigned short i = 0; const Package* package = device.GetDevicePackage()->GetPackage(i); ++i) MarkDeleted(*package);
  MarkOne(&device);
}

void Tree::MarkDeleted(const Package& package) {
  for (int i = 0; const Adapter* adapter = package.GetAdapter(i); ++i) MarkDeleted(*adapter);
  MarkOne(&package);
}

chain::DeviceFinder& Tree::FinderFor(const std::string& comm, std::size_t count) {
  constexpr std::size_t kMostIds = 100000;
  if (finders_.size() > 3 && finders_.count(comm) == 0) finders_.clear();
  Finder& found = finders_[comm];
  if (found.finder == nullptr || found.version != version_ || found.ids > kMostIds) {
    found = {version_, 0, std::make_unique<chain::DeviceFinder>(Databases(), comm)};
  }
  found.ids += count;
  return *found.finder;
}

/// At the end of the process Python ends a daemon thread that asks for its lock, by an exception that is none of C++. Then the
/// thread rests, as in Python 3.14: destructors must not run without the lock.
Unlocked::~Unlocked() {
  try {
    PyEval_RestoreThread(state_);
  } catch (...) {
    for (;;) std::this_thread::sleep_for(std::chrono::hours(1));
  }
}

Writing::Writing(Tree& tree) : Writing(tree, 1) {}

Writing::Writing(Tree& tree, unsigned long changes) : lock_(tree.mutex_, std::try_to_lock) {
  if (!lock_.owns_lock()) {
    const Unlocked unlocked;
    lock_.lock();
  }
  tree.version_ += changes;
}

}  // namespace plddb::python
