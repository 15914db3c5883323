#pragma once

#include <string>
#include <vector>

#include "CControlEBR.h"
#include "plddb_export.h"

/// One named embedded memory block (EBR) with its control bytes. A plain value: copies share nothing.
class PLDDB_EXPORT CControlEBRList {
 public:
  CControlEBRList() = default;
  CControlEBRList(const CControlEBRList&) = default;
  CControlEBRList(CControlEBRList&&) = default;
  CControlEBRList& operator=(const CControlEBRList&) = default;
  CControlEBRList& operator=(CControlEBRList&&) = default;
  virtual ~CControlEBRList() = default;

  std::string Name;                  ///< As loaded; names may repeat.
  std::vector<CControlEBR> Entries;  ///< In order.
};
