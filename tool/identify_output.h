#pragma once

#include <string>
#include <vector>

#include "chain.h"
#include "scan_text.h"

/// \file
/// What `plddb identify` says: a chain in one of several forms, each in a file of its own.

namespace tool {

/// An identified chain and all that is needed to speak about it.
struct IdentifiedChain {
  const std::vector<Database>& databases;
  std::string comm;
  Scan scan;    ///< What was read.
  Chain chain;  ///< Who answers; one position for each TAP of the scan.
};

/// \name The forms
///@{
std::string TextOutput(const IdentifiedChain& identified);  ///< For people; the notes stand at the end.
std::string TsvOutput(const IdentifiedChain& identified);   ///< A head line, then a line for each position; tabs between cells.
std::string JsonOutput(const IdentifiedChain& identified);  ///< An array with an object for each position.
std::string OpenOcdOutput(const IdentifiedChain& identified);  ///< What OpenOCD's configuration says of the chain.
///@}

/// "OpenOCD log, 3 TAPs, nearest TDO first".
std::string ScanText(const Scan& scan);

/// What a reader of the chain should know: oddities of the scan, IR lengths that do not agree or that are missing. One line
/// each.
std::vector<std::string> Notes(const IdentifiedChain& identified);

}  // namespace tool
