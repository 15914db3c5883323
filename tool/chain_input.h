#pragma once

#include <string>
#include <vector>

#include "Chain.h"
#include "Files.h"
#include "command_line.h"

/// \file
/// The chain that a user gives: ids, or what a scanning tool printed.

namespace tool {

using plddb::OpenedFile;

/// Opens a file to be read. Throws Failure.
OpenedFile OpenFile(const std::string& path);

/// "PATH:1:1: error: cannot read the file".
std::string CannotRead(const std::string& path);

/// Reads the chain: `scan` is a file or "-" for standard input, or else `ids` are arguments or a single "-". An `order` ("tdo",
/// "tdi") counts more than what the tool's is. Throws Failure.
plddb::chain::Scan ReadChain(const std::vector<std::string>& ids, const std::string& scan, const std::string& order);

/// Takes each text "POSITION=LENGTH" over into the chain. Throws WrongUsage.
void GiveIrLengths(plddb::chain::Chain& chain, const std::vector<std::string>& texts);

/// \name Their options
///@{
Option AddScanOption(Subcommand subcommand, std::string& scan);
void AddOrderOption(Subcommand subcommand, std::string& order);
void AddIrLengthOption(Subcommand subcommand, std::vector<std::string>& lengths);
///@}

}  // namespace tool
