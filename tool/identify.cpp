#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "chain.h"
#include "chain_ids.h"
#include "command.h"
#include "device_text.h"
#include "json_text.h"
#include "shared_options.h"
#include "standard_streams.h"
#include "text_table.h"

namespace tool {
namespace {

constexpr const char* kFooter = R"(Positions are counted from 0, in the order of the ids. An ID is 8 hex digits,
or 0x and 1 to 8 hex digits. With - ids are read from standard input, one per line; # starts a comment
and blank lines are skipped.

The answer is the first device that matches, in the order of the databases and of their devices. Where
more than one matches, the device is marked with * and all of them are listed; their IR lengths often
tell which one it is.

Exit code: 0 when every id is identified, 1 when some id is unknown, 2 for wrong usage or data that
cannot be read.

Example: plddb identify 0x59604093 0x4BA00477 0x0362D093)";

struct Options {
  std::vector<std::string> databases;
  std::string comm = "JTAG";
  bool json = false;
  std::vector<std::string> ids;
};

using Chain = std::vector<ChainPosition>;

bool IsAmbiguous(const ChainPosition& position) { return position.candidates.size() > 1; }

/// "position 2", "positions 0, 2": those of the chain for which `rule` holds; the empty text when there are none.
template <typename Rule>
std::string PositionsWhere(const Chain& chain, Rule rule) {
  std::string list;
  int count = 0;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (rule(chain[i])) list += (count++ == 0 ? "" : ", ") + std::to_string(i);
  }
  return count == 0 ? "" : (count == 1 ? "position " : "positions ") + list;
}

// --- The table --------------------------------------------------------------------------------------------------------------

std::string DeviceTable(const Chain& chain) {
  std::vector<Row> rows = {{"position", "id", "device", "family", "IR length", "IDCODE", "BYPASS", "packages"}};
  for (std::size_t i = 0; i < chain.size(); ++i) {
    Row row = {std::to_string(i), IdText(chain[i].id)};
    if (const DeviceInfo* const device = chain[i].match) {
      row.insert(row.end(),
                 {DeviceName(*device) + (IsAmbiguous(chain[i]) ? " *" : ""), FamilyName(*device), IrLengthText(*device),
                  IdCodeInstruction(*device), BypassInstruction(*device), PackageTypes(*device)});
    } else {
      row.insert(row.end(), {"unknown", "-", "-", "-", "-", "-"});
    }
    rows.push_back(std::move(row));
  }
  return AlignedTable(rows);
}

unsigned long KnownIrLength(const ChainPosition& position) {
  return position.match == nullptr ? 0 : position.match->GetIRLength();
}

bool CandidatesDifferInIrLength(const ChainPosition& position) {
  return std::any_of(position.candidates.begin(), position.candidates.end(), [&](const Candidate& candidate) {
    return candidate.device->GetIRLength() != position.match->GetIRLength();
  });
}

std::string TotalIrLength(const Chain& chain) {
  unsigned long bits = 0;
  for (const ChainPosition& position : chain) bits += KnownIrLength(position);
  const std::string sum = std::to_string(bits) + " bits";
  const std::string open = PositionsWhere(chain, [](const auto& position) { return KnownIrLength(position) == 0; });
  const std::string doubtful = PositionsWhere(chain, CandidatesDifferInIrLength);
  return "\nIR length of the chain: " + (open.empty() ? sum : "not known (" + sum + " without " + open + ")") +
         (doubtful.empty() ? "" : "; another device that matches would change it at " + doubtful) + "\n";
}

std::string UnknownIds(const Chain& chain) {
  std::string text;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (chain[i].match == nullptr) text += "  position " + std::to_string(i) + ": " + IdText(chain[i].id) + "\n";
  }
  return text.empty() ? "" : "\nUnknown ids:\n" + text;
}

std::string CandidateTable(const ChainPosition& position, const Options& options, bool with_file) {
  Row head = {"device", "family", "IR length", "bits that agree"};
  if (with_file) head.push_back("file");
  std::vector<Row> rows = {head};
  for (const auto& [device, database] : position.candidates) {
    rows.push_back({DeviceName(*device), FamilyName(*device), IrLengthText(*device),
                    IdText(AgreeingBits(*device, options.comm, position.id))});
    if (with_file) rows.back().push_back(database->file);
  }
  return AlignedTable(rows, "    ");
}

std::string AmbiguousPositions(const Chain& chain, const Options& options, bool with_file) {
  std::string text;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (!IsAmbiguous(chain[i])) continue;
    text +=
        "  position " + std::to_string(i) + ": " + IdText(chain[i].id) + "\n" + CandidateTable(chain[i], options, with_file);
  }
  return text.empty() ? "" : "\n* More than one device matches, and the first was taken:\n" + text;
}

std::string Report(const Chain& chain, const Options& options, bool with_file) {
  return DeviceTable(chain) + TotalIrLength(chain) + UnknownIds(chain) + AmbiguousPositions(chain, options, with_file);
}

// --- JSON -------------------------------------------------------------------------------------------------------------------

Json Match(const DeviceInfo* device) {
  if (device == nullptr) return nullptr;
  const Json ir_length = device->GetIRLength() == 0 ? Json(nullptr) : Json(device->GetIRLength());
  return {{"family", TextOrNull(FamilyNameOrNull(*device))},
          {"name", TextOrNull(device->GetName())},
          {"codeName", TextOrNull(device->GetCodeName())},
          {"irLength", ir_length}};
}

Json CodeNames(const std::vector<Candidate>& candidates) {
  Json names = Json::array();
  for (const Candidate& candidate : candidates) {
    const char* const name = candidate.device->GetCodeName();
    names.push_back(name == nullptr ? "" : name);  // as the library's own candidate list has it
  }
  return names;
}

std::string JsonReport(const Chain& chain) {
  Json positions = Json::array();
  for (std::size_t i = 0; i < chain.size(); ++i) {
    positions.push_back({{"position", i},
                         {"id", IdText(chain[i].id)},
                         {"match", Match(chain[i].match)},
                         {"candidates", CodeNames(chain[i].candidates)}});
  }
  return ToText(positions);
}

// --- The command ------------------------------------------------------------------------------------------------------------

std::vector<unsigned int> ReadIds(const std::vector<std::string>& ids) {
  if (ids == std::vector<std::string>{"-"}) return IdsFromText(ReadInput(), "stdin");
  return IdsFromArguments(ids);
}

ExitCode RunIdentify(const Options& options) {
  const std::vector<unsigned int> ids = ReadIds(options.ids);
  const std::vector<Database> databases = LoadDatabases(options.databases);
  Chain chain;
  for (const unsigned int id : ids) chain.push_back(Identify(databases, options.comm, id));
  WriteOutput(options.json ? JsonReport(chain) : Report(chain, options, databases.size() > 1));
  const bool all_known = std::all_of(chain.begin(), chain.end(), [](const auto& position) { return position.match; });
  return all_known ? ExitCode::kFound : ExitCode::kNotFound;
}

}  // namespace

Run AddIdentify(CLI::App& app) {
  const auto options = std::make_shared<Options>();
  AddDatabaseOption(app, options->databases);
  app.add_option("--comm", options->comm, "The access mode: which identifier of a device is compared (default JTAG)")
      ->type_name("JTAG|ISP|DUAL")
      ->check(CLI::IsMember({"JTAG", "ISP", "DUAL"}).description(""));
  app.add_flag("--json", options->json, "Write a JSON array of {position, id, match, candidates}");
  app.add_option("ID", options->ids, "The ids of the chain, in its order; - reads them from standard input")
      ->type_name("or -")
      ->required();
  app.footer(kFooter);
  return [options] { return RunIdentify(*options); };
}

}  // namespace tool
