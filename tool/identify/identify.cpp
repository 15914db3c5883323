#include <algorithm>
#include <iterator>
#include <memory>

#include "chain_input.h"
#include "command.h"
#include "console.h"
#include "device_text.h"
#include "identify/expect.h"
#include "identify/output.h"
#include "progress.h"
#include "shared_options.h"
#include "standard_streams.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    R"(Positions are counted from 0, in the order of the ids; the first is taken for the one nearest TDO. An ID is
8 hex digits, or 0x and 1 to 8 hex digits. With - ids are read from standard input, one per line; # starts
a comment and blank lines are skipped.

--scan reads what a scanning tool printed, in its order: OpenOCD's log or scan_chain table, UrJTAG's detect
(both nearest TDO first), openFPGALoader's --detect, xc3sprog, xsdb's jtag targets (nearest TDI first),
jtagconfig, J-Link Commander, probe-rs, Glasgow's jtag-probe, djtgcfg init, iMPACT's batch log (their order is
not documented: "as printed"), or ids, one per line. Set --order if you know the order. Of
several reports in a text the last is taken, and OpenOCD's log rather than its table.

The answer is the first device that matches, in the order of the databases and of their devices. If more
than one matches, the device is marked with *, and all of them are listed, the most exact first; the
measured IR length often shows which one it is.

For an unknown id, its fields and its maker are shown (banks are counted from 0), and described devices of
the same part or one bit apart. An id that was read one bit late or early, reversed or swapped is
recognised. A chain with an unknown TAP can be used only if its IR length is known: a length that OpenOCD
verified is used; give any other with --ir, or take it from the scan with --trust-ir.

--format openocd writes the chain for OpenOCD's configuration, nearest TDO first; svg draws it. tsv has a header
line and a line for each position. Notes go to standard error with tsv, json and svg.

--expect compares the chain with names, ordering numbers or families, position by position.

Exit code: 0 when every id is identified, 1 when some id is unknown, or when the chain is not the expected
one, 2 for wrong usage or data that cannot be read.)";

constexpr struct {
  const char* name;
  void (*write)(const IdentifiedChain& identified, Output& output);
  bool showsNotes;
} kFormats[] = {
    {"text", TextOutput, true},       {"tsv", TsvOutput, false}, {"json", JsonOutput, false},
    {"openocd", OpenOcdOutput, true}, {"svg", SvgOutput, false},
};

struct Options {
  std::vector<std::string> databases;
  std::string comm = "JTAG";
  std::string format = "text";
  bool json = false;
  std::string scan;
  std::string order;
  std::string expected;
  bool trustsIrLengths = false;
  std::vector<std::string> ids;
  std::vector<std::string> irLengths;
};

void Write(const IdentifiedChain& identified, const std::string& format) {
  const auto hasName = [&](const auto& row) { return row.name == format; };
  const auto* const chosen = std::find_if(std::begin(kFormats), std::end(kFormats), hasName);
  Output output(WriteOutput);
  chosen->write(identified, output);
  output.Flush();
  if (chosen->showsNotes) return;
  for (const std::string& note : Notes(identified)) WriteMessage("plddb: warning: " + note + "\n");
}

/// Identifies all TAPs of the scan; shows how far it is on a terminal.
Chain IdentifyAll(plddb::chain::DeviceFinder& finder, const Scan& scan, bool trustsIrLengths) {
  constexpr std::size_t often = 1 << 14;
  Progress progress(0, IsTerminal(kMessages) ? WriteMessage : nullptr);
  Chain chain;
  chain.reserve(scan.taps.size());
  for (const ScannedTap& tap : scan.taps) {
    chain.push_back(finder.Identify(tap, trustsIrLengths));
    if (chain.size() % often != 0) continue;
    progress.Show("identifying (" + std::to_string(chain.size()) + " of " + std::to_string(scan.taps.size()) + ")...");
  }
  return chain;
}

ExitCode WriteAnswer(const IdentifiedChain& identified, const Options& options) {
  if (!options.expected.empty()) {
    Output output(WriteOutput);
    const bool agrees = CompareWithExpected(identified, ExpectedNames(options.expected), output);
    output.Flush();
    return agrees ? ExitCode::kFound : ExitCode::kNotFound;
  }
  Write(identified, options.json ? "json" : options.format);
  const auto isKnown = [](const ChainPosition& position) { return position.Match() != nullptr; };
  const bool allKnown = std::all_of(identified.chain.begin(), identified.chain.end(), isKnown);
  return allKnown ? ExitCode::kFound : ExitCode::kNotFound;
}

ExitCode RunIdentify(const Options& options) {
  if (options.format == "openocd" && options.comm == "ISP") {
    throw WrongUsage("--format openocd: ISP identifiers are not IDCODEs");
  }
  if (!options.expected.empty()) ExpectedNames(options.expected);  // before anything is read
  Scan scan = ReadChain(options.ids, options.scan, options.order);
  const std::vector<Database>& databases = LoadDatabases(options.databases);
  std::vector<const DeviceList*> lists;
  lists.reserve(databases.size());
  for (const Database& database : databases) lists.push_back(database.devices.get());
  plddb::chain::DeviceFinder finder(lists, options.comm);
  Chain chain = IdentifyAll(finder, scan, options.trustsIrLengths);
  GiveIrLengths(chain, options.irLengths);
  return WriteAnswer({databases, finder, options.comm, std::move(scan), std::move(chain)}, options);
}

void AddInput(Subcommand subcommand, Options& options) {
  const Option ids = subcommand.Add("ID", options.ids, "The ids of the chain, in its order; - reads them from standard input");
  ids.Type("or -");
  AddScanOption(subcommand, options.scan).Excludes(ids);
  AddIrLengthOption(subcommand, options.irLengths);
  subcommand.AddFlag("--trust-ir", options.trustsIrLengths, "Use the IR lengths of the scan even where they may be guesses");
  AddOrderOption(subcommand, options.order);
}

void AddForm(Subcommand subcommand, Options& options) {
  std::vector<std::string> names;
  std::string type;
  for (const auto& format : kFormats) {
    names.emplace_back(format.name);
    type += (type.empty() ? "" : "|") + names.back();
  }
  const Option format = subcommand.Add("--format", options.format, "What to write (default text)");
  format.Type(type).OneOf(names);
  const Option json = subcommand.AddFlag("--json", options.json,
                                         "The same as --format json: an array of {position, id, match, candidates, ...}");
  json.Excludes(format);
  subcommand.Add("--expect", options.expected, "Compare the chain with names, ordering numbers or families, in its order")
      .Type("NAME,NAME,...")
      .NotEmpty()
      .Excludes(format)
      .Excludes(json);
}

}  // namespace

Run AddIdentify(Subcommand subcommand) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(subcommand, options->databases);
  subcommand.Add("--comm", options->comm, "The access mode: which identifier of a device is compared (default JTAG)")
      .Type("JTAG|ISP|DUAL")
      .OneOf({"JTAG", "ISP", "DUAL"});
  AddForm(subcommand, *options);
  AddInput(subcommand, *options);
  subcommand.Footer(kFooter, {"plddb identify 0x59604093 0x4BA00477 0x0362D093",
                              R"(plddb identify --scan log.txt --expect XC9572XL,"Arm debug ports",Artix-7)",
                              "openocd -f board.cfg 2>&1 | plddb identify --scan - --format openocd"});
  return [options] { return RunIdentify(*options); };
}

}  // namespace tool
