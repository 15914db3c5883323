#include "chain/refusals.h"

#include <algorithm>
#include <optional>

#include "chain/ids.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

constexpr const char* kExpected =
    "no chain in this text; expected what OpenOCD (its log or scan_chain), UrJTAG (detect), openFPGALoader (--detect), "
    "xc3sprog, "
    "jtagconfig, xsdb (jtag targets), J-Link Commander, probe-rs, Glasgow (jtag-probe), djtgcfg (init) or iMPACT (batch log) "
    "prints, or ids, one per line";

constexpr const char* kOnes = "the tool read ones only: nothing drives TDO, or it is stuck at 1";
constexpr const char* kZeros = "the tool read zeros only: TDO is stuck at 0, or the chain has no power";
constexpr const char* kNothing = "the tool saw no chain: no power, no connection, or a break in it";

/// What tools print when they see no chain, and what that means.
constexpr struct {
  std::string_view marker;
  const char* meaning;
} kDeadChains[] = {
    {"scan chain interrogation failed: all ones", kOnes},
    {"scan chain interrogation failed: all zeroes", kZeros},
    {"TDO seems to be stuck at 1", kOnes},
    {"TDO seems to be stuck at 0", kZeros},
    {"JTAG chain broken", kNothing},
    {"Could not find any device on JTAG chain", kNothing},
    {"No devices found on JTAG chain", kNothing},
    {"JTAG init failed with: No device found", kNothing},
    {"no devices found in scan chain", kNothing},
    {"unable to initialize scan chain", kNothing},
    {"discovered 0 TAPs", kNothing},
};

constexpr const char* kVivadoNames =
    "this text names devices, but shows no ids; print them in Vivado by "
    "foreach device [get_hw_devices] {puts [get_property IDCODE_HEX $device]}, and read them with --order tdi";

constexpr const char* kImpactNames =
    "this text names devices, but shows no ids; let iMPACT print them by ReadIdcode -p POSITION for each position";

/// What only texts with names but without ids contain.
constexpr struct {
  std::string_view marker;
  const char* advice;
} kNames[] = {
    {"xilinx_tcf", kVivadoNames},           {"hw_device", kVivadoNames},     {"hw_target", kVivadoNames},
    {"Manufacturer's ID = ", kImpactNames}, {"Added Device ", kImpactNames},
};

/// "xc7z020_1", "arm_dap_0": a device's name and its number, as Vivado writes it.
bool IsVivadoName(std::string_view word) {
  const std::size_t number = word.rfind('_');
  if (number == word.npos || !WholeNumber(word.substr(number + 1))) return false;
  const bool isKnown = word.substr(0, 2) == "xc" || word.substr(0, 2) == "xa" || word.substr(0, 2) == "xq" ||
                       word.substr(0, 8) == "arm_dap_" || word.substr(0, 13) == "debug_bridge_";
  return isKnown;
}

std::optional<std::size_t> LineOfVivadoNames(std::string_view text) {
  std::optional<std::size_t> found;
  ForEachLine(text, [&](std::string_view line, int) {
    const auto words = Words(line);
    if (found || words.empty() || words.size() > 1000 || !std::all_of(words.begin(), words.end(), IsVivadoName)) return;
    found = static_cast<std::size_t>(words.front().data() - text.data());
  });
  return found;
}

}  // namespace

Refusal WhyNoChain(std::string_view text) {
  for (const auto& [marker, meaning] : kDeadChains) {
    if (const std::size_t at = text.find(marker); at != text.npos) return {at, meaning};
  }
  for (const auto& [marker, advice] : kNames) {
    if (const std::size_t at = text.find(marker); at != text.npos) return {at, advice};
  }
  if (const auto at = LineOfVivadoNames(text)) return {*at, kVivadoNames};
  const std::size_t start = text.find_first_not_of(" \t\n");
  return {start == text.npos ? 0 : start, kExpected};
}

/// A table of the configured chain may follow anyway; and what was read before or after may be good.
std::vector<std::string> FailedScans(std::string_view text) {
  std::vector<std::string> notes;
  for (const auto& [marker, meaning] : kDeadChains) {
    if (text.find(marker) == text.npos) continue;
    const std::string note = std::string("the text also shows a scan that failed: ") + meaning;
    if (std::find(notes.begin(), notes.end(), note) == notes.end()) notes.push_back(note);
  }
  return notes;
}

}  // namespace plddb::chain
