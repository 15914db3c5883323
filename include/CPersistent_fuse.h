#pragma once

#include "plddb_export.h"

/// A persistent fuse. A plain value: copies share nothing.
class PLDDB_EXPORT CPersistent_fuse {
 public:
  CPersistent_fuse() = default;
  CPersistent_fuse(const CPersistent_fuse&) = default;
  CPersistent_fuse(CPersistent_fuse&&) = default;
  CPersistent_fuse& operator=(const CPersistent_fuse&) = default;
  CPersistent_fuse& operator=(CPersistent_fuse&&) = default;
  virtual ~CPersistent_fuse() = default;

  int Value = 0;    ///< No text setter; only SetlistPersistent_fuse.
  int Address = 0;  ///< SetListPersistent_fuseAddress creates the record.
  int Column = 0;   ///< SetListPersistent_fuseColumn.
};
