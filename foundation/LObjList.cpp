#include "LObjList.h"

namespace {

/// The number of elements that fit into the smallest heap block: most lists of a tree are short.
constexpr std::size_t kFirstCapacity = 3;

}  // namespace

LObjList::LObjList() = default;
LObjList::~LObjList() = default;

void LObjList::AddTail(LObject* object) {
  if (elements_.capacity() == 0) elements_.reserve(kFirstCapacity);
  elements_.push_back(object);
}

void LObjList::Insert(int index, LObject* object) {
  if (index < 0 || index > GetCount()) return;
  elements_.insert(elements_.begin() + index, object);
}

LObject* LObjList::Delete(int index) {
  if (!Holds(index)) return nullptr;
  const auto position = elements_.begin() + index;
  LObject* const object = *position;
  elements_.erase(position);
  return object;
}

LObject* LObjList::GetAt(int index) const { return Holds(index) ? elements_[static_cast<std::size_t>(index)] : nullptr; }

int LObjList::GetCount() const { return static_cast<int>(elements_.size()); }

LObject* LObjList::GetTail() const { return elements_.empty() ? nullptr : elements_.back(); }

bool LObjList::IsEmpty() const { return elements_.empty(); }

LObject* LObjList::RemoveTail() { return Delete(GetCount() - 1); }

bool LObjList::Holds(int index) const { return index >= 0 && index < GetCount(); }
