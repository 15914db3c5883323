#pragma once

#include <vector>

#include "LObject.h"
#include "plddb_export.h"

/// An ordered sequence of object pointers with 0-based positions.
///
/// The list borrows its elements and never destroys one: neither removing an element nor destroying the list does. Owners
/// empty their list themselves, from the tail. Null pointers are legal elements.
/// Errors: a position outside the list gives null; std::bad_alloc leaves the list as it was.
class PLDDB_EXPORT LObjList {
 public:
  LObjList();  ///< An empty list. Made by the records of a tree; free for other uses.
  ~LObjList();
  LObjList(const LObjList&) = delete;
  LObjList& operator=(const LObjList&) = delete;

  void AddTail(LObject* object);  ///< Appends. Borrows `object`, which must outlive its stay in the list.

  /// Places `object` so that it has position `index` afterwards; the elements from there on move up by one.
  /// `Insert(GetCount(), object)` appends. An index outside 0..GetCount() is ignored.
  void Insert(int index, LObject* object);

  LObject* Delete(int index);       ///< Unlinks the element and hands it over; null outside the list.
  LObject* GetAt(int index) const;  ///< Lends the element; null outside the list.
  int GetCount() const;             ///< The number of elements, null pointers among them.
  LObject* GetTail() const;         ///< Lends the last element; null for an empty list.
  bool IsEmpty() const;             ///< Whether there are no elements.
  LObject* RemoveTail();            ///< Unlinks the last element and hands it over; null for an empty list.

 private:
  bool Holds(int index) const;

  std::vector<LObject*> elements_;
};
