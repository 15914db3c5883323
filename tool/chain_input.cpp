#include "chain_input.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "command.h"
#include "device_text.h"
#include "ir_lengths.h"
#include "standard_streams.h"

namespace tool {
namespace {

using plddb::chain::Scan;

std::string More(std::size_t count) { return count == 0 ? "" : "\nand " + std::to_string(count) + " more"; }

std::string ReadFile(const std::string& path) { return ReadAll(OpenFile(path).get(), CannotRead(path)); }

/// Throws Failure with all faults of what was read from `name`.
Scan TakeScan(plddb::chain::ScanResult result, const std::string& name) {
  if (result.scan) return std::move(*result.scan);
  std::string lines;
  for (const plddb::chain::Fault& fault : result.faults) {
    lines += (lines.empty() ? "" : "\n") + Printable(name) + ":" + std::to_string(fault.line) + ":" +
             std::to_string(fault.column) + ": error: " + fault.text;
  }
  throw Failure(lines + More(result.moreFaults));
}

Scan ScanOfArguments(const std::vector<std::string>& arguments) {
  constexpr std::size_t most = 100;
  Scan scan;
  std::size_t wrong = 0;
  std::string lines;
  for (const std::string& argument : arguments) {
    scan.taps.push_back({"", plddb::chain::ParseId(argument)});
    if (scan.taps.back().id || wrong++ >= most) continue;
    lines += (lines.empty() ? "" : "\n") + ("plddb: error: " + plddb::chain::NotAnId(argument));
  }
  if (wrong != 0) throw Failure(lines + More(wrong > most ? wrong - most : 0));
  return scan;
}

}  // namespace

std::string CannotRead(const std::string& path) { return Printable(path) + ":1:1: error: cannot read the file"; }

OpenedFile OpenFile(const std::string& path) {
  OpenedFile file = plddb::OpenFile(path);
  if (file == nullptr) throw Failure(CannotRead(path) + ": " + std::strerror(errno));
  return file;  // a folder is opened, but cannot be read
}

namespace {

Scan ReadAnyChain(const std::vector<std::string>& ids, const std::string& scan) {
  if (scan == "-") return TakeScan(plddb::chain::ReadScan(ReadInput()), "stdin");
  if (!scan.empty()) return TakeScan(plddb::chain::ReadScan(ReadFile(scan)), scan);
  if (ids.empty()) throw WrongUsage("ID or --scan is required");
  if (ids == std::vector<std::string>{"-"}) return TakeScan(plddb::chain::ReadIds(ReadInput()), "stdin");
  return ScanOfArguments(ids);
}

}  // namespace

Scan ReadChain(const std::vector<std::string>& ids, const std::string& scan, const std::string& order) {
  Scan chain = ReadAnyChain(ids, scan);
  if (!order.empty()) chain.nearest = order == "tdo" ? plddb::chain::End::kTdo : plddb::chain::End::kTdi;
  return chain;
}

void GiveIrLengths(plddb::chain::Chain& chain, const std::vector<std::string>& texts) {
  const std::string complaint = TakeIrLengths(chain, texts);
  if (!complaint.empty()) throw WrongUsage(complaint);
}

Option AddScanOption(Subcommand subcommand, std::string& scan) {
  return subcommand.Add("--scan", scan, "The text of a scanning tool; - reads it from standard input")
      .Type("FILE|-")
      .NotEmpty();
}

void AddOrderOption(Subcommand subcommand, std::string& order) {
  subcommand.Add("--order", order, "Which end of the chain comes first, whatever the tool's order is")
      .Type("tdo|tdi")
      .OneOf({"tdo", "tdi"});
}

void AddIrLengthOption(Subcommand subcommand, std::vector<std::string>& lengths) {
  subcommand.Add("--ir", lengths, "The IR length at a position, for example of an unknown TAP; may be given several times")
      .Type("POSITION=LENGTH")
      .OneValueEach();
}

}  // namespace tool
