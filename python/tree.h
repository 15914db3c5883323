#pragma once

#include <pybind11/pybind11.h>

#include <array>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Chain.h"
#include "Descriptions.h"

/// \file
/// How Python holds records: each keeps its database alive, and knows when it is deleted.
///
/// Threads: whoever reads or writes a tree holds Python's lock, and a writer the tree's own lock as well (Writing). Who has let
/// go of Python's lock only reads, and holds the tree's (Reading). Nobody waits for the tree's lock while holding Python's.

namespace plddb::python {

namespace py = pybind11;

class Tree;

/// Pybind11 makes an object of a class by `new` when nobody initialised it: after `Database.__new__(Database)`. The classes
/// with a constructor refuse that; their objects come from std::make_shared. The others cannot be made in Python at all
/// (module.cpp).
[[noreturn]] inline void RaiseNotInitialised(const char* name) {
  throw py::type_error(std::string("this ") + name + " was made without __init__");
}

/// A record was deleted, or an entry's list replaced: the exception plddb.DeletedError.
class Deleted : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A record of a tree, as Python holds it: at most one of these exists for each record.
class Record {
 public:
  Record(std::shared_ptr<Tree> tree, void* record) : tree_(std::move(tree)), record_(record) {}
  ~Record();
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  const std::shared_ptr<Tree>& GetTree() const { return tree_; }
  bool IsDeleted() const { return record_ == nullptr; }
  void MarkDeleted() { record_ = nullptr; }

  /// How often each parsed list was replaced while Python held this record.
  std::array<unsigned int, 8> replacements = {};

 protected:
  void* Get() const;  // throws Deleted

 private:
  std::shared_ptr<Tree> tree_;
  void* record_;
};

template <class T>
class RecordOf : public Record {
 public:
  using Record::Record;
  T& operator*() const { return *static_cast<T*>(Get()); }
  T* operator->() const { return &**this; }
};

using Family = RecordOf<FamilyList>;
using Device = RecordOf<DeviceInfo>;
using PackageRecord = RecordOf<Package>;
using AdapterRecord = RecordOf<Adapter>;

template <class T>
using Held = std::shared_ptr<RecordOf<T>>;

/// A description file's database, or one that was made.
struct Part {
  std::string file;  ///< Empty when it was made.
  DeviceListOwner database;
};

/// A database as Python sees it: the databases of several files, which the lookups search in turn.
class Tree : public std::enable_shared_from_this<Tree> {
 public:
  explicit Tree(std::vector<Part> parts) : parts_(std::move(parts)) {}
  static void* operator new(std::size_t) { RaiseNotInitialised("Database"); }
  static void operator delete(void*) {}  // never called

  const std::vector<Part>& Parts() const { return parts_; }
  std::vector<const DeviceList*> Databases() const;
  const std::string& FileOf(const FamilyList& family) const;  ///< From which the family was loaded; empty without one.
  DeviceList& First();                                        ///< Made when there is none.
  DeviceList& Last();                                         ///< Likewise: where new families go.
  void DeleteFamily(DeviceList& database, int position);
  void TakeOver(Tree& other);  ///< Deletes all families, and takes those of `other`, none of which Python holds.

  /// What Python holds `record` by; null for null.
  template <class T>
  Held<T> Hold(T* record) {
    if (record == nullptr) return nullptr;
    std::weak_ptr<Record>& known = held_[record];
    if (const std::shared_ptr<Record> held = known.lock()) return std::static_pointer_cast<RecordOf<T>>(held);
    auto held = std::make_shared<RecordOf<T>>(shared_from_this(), record);
    known = held;
    return held;
  }
  void Forget(const void* record) { held_.erase(record); }

  /// \name What follows is about to be destroyed, and what it holds with it
  ///@{
  void MarkDeleted(const FamilyList& family);
  void MarkDeleted(const DeviceInfo& device);
  void MarkDeleted(const Package& package);
  void MarkDeleted(const Adapter& adapter) { MarkOne(&adapter); }
  ///@}

  unsigned long Version() const { return version_; }  ///< Changes with every writing.

  /// Calls `use(finder)` for the access mode and `count` ids, one call at a time. Needs Reading.
  template <class Use>
  void WithFinder(const std::string& comm, std::size_t count, Use use) {
    const std::lock_guard<std::mutex> alone(finderMutex_);
    use(FinderFor(comm, count));
  }

  /// The same with Python's lock; false, and no call, while another thread uses the finder.
  template <class Use>
  bool TryWithFinder(const std::string& comm, std::size_t count, Use use) {
    const std::unique_lock<std::mutex> alone(finderMutex_, std::try_to_lock);
    if (alone.owns_lock()) use(FinderFor(comm, count));
    return alone.owns_lock();
  }

 private:
  friend class Reading;
  friend class Writing;

  /// A finder knows the tree as it was, and keeps every answer.
  struct Finder {
    unsigned long version = 0;
    std::size_t ids = 0;  // that it was asked for
    std::unique_ptr<chain::DeviceFinder> finder;
  };

  void MarkOne(const void* record);
  chain::DeviceFinder& FinderFor(const std::string& comm, std::size_t count);

  std::vector<Part> parts_;
  std::unordered_map<const void*, std::weak_ptr<Record>> held_;
  std::shared_mutex mutex_;
  std::mutex finderMutex_;
  unsigned long version_ = 0;  // how often the tree was written to
  std::unordered_map<std::string, Finder> finders_;
};

/// Lets others use Python meanwhile.
class Unlocked {
 public:
  Unlocked() : state_(PyEval_SaveThread()) {}
  ~Unlocked();
  Unlocked(const Unlocked&) = delete;
  Unlocked& operator=(const Unlocked&) = delete;

 private:
  PyThreadState* state_;
};

/// Lets others use Python while the tree is read.
class Reading {
 public:
  explicit Reading(Tree& tree) : lock_(tree.mutex_) {}

 private:
  Unlocked unlocked_;
  std::shared_lock<std::shared_mutex> lock_;
};

/// Writes the tree: waits for all who read it without Python's lock. Records are to be looked at afterwards.
class Writing {
 public:
  explicit Writing(Tree& tree);

  /// No record changes: what was found stays.
  static Writing OfNameList(Tree& tree) { return Writing(tree, 0); }

 private:
  Writing(Tree& tree, unsigned long changes);

  std::unique_lock<std::shared_mutex> lock_;
};

}  // namespace plddb::python
