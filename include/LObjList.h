#pragma once

#include <vector>

#include "LObject.h"
#include "plddb_export.h"

/// An ordered sequence of object pointers with 0-based positions.
///
/// The list borrows its elements. Neither removing an element nor destroying the list destroys an element. Owners empty their
/// list themselves, from the tail. Null pointers are valid elements.
/// Errors: a position outside the list gives null; std::bad_alloc leaves the list as it was.
class PLDDB_EXPORT LObjList {
 public:
  LObjList();  ///< An empty list. The records of a tree create their own; you may create others.
  ~LObjList();
  LObjList(const LObjList&) = delete;
  LObjList& operator=(const LObjList&) = delete;

  void AddTail(LObject* object);  ///< Appends. Borrows `object`, which must live as long as it is in the list.

  /// Inserts `object` at position `index`; the elements from there on move up by one.
  /// `Insert(GetCount(), object)` appends. An index outside 0..GetCount() is ignored.
  void Insert(int index, LObject* object);

  LObject* Delete(int index);       ///< Unlinks the element and hands it over; null outside the list.
  LObject* GetAt(int index) const;  ///< Lends the element; null outside the list.
  int GetCount() const;             ///< The number of elements, including null pointers.
  LObject* GetTail() const;         ///< Lends the last element; null for an empty list.
  bool IsEmpty() const;             ///< Whether the list has no elements.
  LObject* RemoveTail();            ///< Unlinks the last element and hands it over; null for an empty list.

 private:
  bool Holds(int index) const;

  std::vector<LObject*> elements_;
};
