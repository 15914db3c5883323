#pragma once

#include "plddb_export.h"

/// The base class of everything that an LObjList can hold. It has no data. Its only virtual operation is the destructor, so
/// deleting an element through an LObject pointer runs the most derived destructor.
///
/// Objects of the tree are never copied or moved implicitly: their address is their identity. Only the constructors that take a
/// pointer to the source, and assigning databases, make copies.
class PLDDB_EXPORT LObject {
 public:
  LObject() = default;
  virtual ~LObject();
  LObject(const LObject&) = delete;
  LObject& operator=(const LObject&) = delete;
};
