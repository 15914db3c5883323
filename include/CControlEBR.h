#pragma once

#include <string>

#include "plddb_export.h"

/// One control byte of an embedded memory block (EBR): the place of its eight bits in the configuration fuse map. A plain
/// value: copies share nothing.
class PLDDB_EXPORT CControlEBR {
 public:
  CControlEBR() = default;
  CControlEBR(const CControlEBR&) = default;
  CControlEBR(CControlEBR&&) = default;
  CControlEBR& operator=(const CControlEBR&) = default;
  CControlEBR& operator=(CControlEBR&&) = default;
  virtual ~CControlEBR() = default;

  std::string BitName;  ///< 1-based position in the block, as decimal text.
  bool Value = false;   ///< No text setter; only SetlistControlEBR.
  int Address = 0;      ///< Row address in the fuse map.
  int Column = 0;       ///< First of the entry's 8 columns.
};
