#pragma once

#include <vector>

#include "plddb_export.h"

/// The multiboot fuses of a device. A plain value: copies share nothing.
struct PLDDB_EXPORT CMultiboot_fuses {
  std::vector<int> CfgAddr;  ///< Multiboot configuration addresses, in order.
  int ChipSelColumn = 0;     ///< Column of the chip-select fuse.
  int SourceSelColumn = 0;   ///< Column of the source-select fuse.
  std::vector<int> AutoAdd;  ///< Automatically added addresses, in order.
};
