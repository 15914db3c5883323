#pragma once

#include "plddb_export.h"

/// The base of everything that an LObjList can hold. It has no data; its one virtual operation is the destructor, so that
/// deleting an element through an LObject pointer runs the most derived destructor.
///
/// Objects of the tree are neither copied nor moved implicitly: their address is their identity. Copies are made only by
/// the constructors that take a pointer to the source, and by assigning databases.
class PLDDB_EXPORT LObject {
 public:
  LObject() = default;
  virtual ~LObject();
  LObject(const LObject&) = delete;
  LObject& operator=(const LObject&) = delete;
};
