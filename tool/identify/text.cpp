#include <algorithm>
#include <map>
#include <tuple>

#include "colour.h"
#include "device_text.h"
#include "identify/output.h"
#include "text_table.h"

namespace tool {
namespace {

std::string IdOrDash(const ChainPosition& position) { return position.id ? IdText(*position.id) : "-"; }

std::string IrLengthOrDash(const ChainPosition& position) {
  return position.IrLength() == 0 ? "-" : std::to_string(position.IrLength());
}

/// All cells of a position but the first.
Row CellsOf(const ChainPosition& position) {
  const DeviceInfo* const device = position.Match();
  if (device == nullptr) {
    return {IdOrDash(position), Painted(Paint::kMark, "unknown"), "-", IrLengthOrDash(position), "-", "-", "-"};
  }
  return {IdOrDash(position),         DeviceName(*device) + (position.IsAmbiguous() ? Painted(Paint::kMark, " *") : ""),
          FamilyName(*device),        IrLengthOrDash(position),
          IdCodeInstruction(*device), BypassInstruction(*device),
          PackageTypes(*device)};
}

/// What the rows of positions have in common that differ in number and id alone.
using RowKey = std::tuple<const DeviceInfo*, bool, unsigned long, bool>;

RowKey KeyOfRow(const ChainPosition& position) {
  return {position.Match(), position.IsAmbiguous(), position.IrLength(), position.id.has_value()};
}

/// A row for each position. Rows that differ in number and id alone are made once.
void DeviceTable(const Chain& chain, Output& output) {
  std::vector<Row> rows = {{"id", "device", "family", "IR", "IDCODE", "BYPASS", "packages"}};
  std::map<RowKey, std::size_t> rowOf;
  for (const ChainPosition& position : chain) {
    if (rowOf.try_emplace(KeyOfRow(position), rows.size()).second) rows.push_back(CellsOf(position));
  }
  const std::string head = "TAP";
  const std::size_t width = std::max(head.size(), std::to_string(chain.size() - 1).size()) + 2;
  std::vector<std::string> lines = WrappedRows(rows, std::string(width, ' '));
  const auto write = [&](const std::string& position, const std::string& row) {
    output << position;
    output << std::string_view(row).substr(position.size());
    output << "\n";
  };
  write(head, lines[0]);
  for (std::size_t i = 0; i < chain.size(); ++i) {
    std::string& line = lines[rowOf[KeyOfRow(chain[i])]];
    if (chain[i].id) line.replace(width, 10, IdText(*chain[i].id));
    write(std::to_string(i), line);
  }
}

// --- The length of the chain ------------------------------------------------------------------------------------------------

bool HasNoIrLength(const ChainPosition& position) { return position.IrLength() == 0; }

bool CandidatesDifferInIrLength(const ChainPosition& position) {
  if (position.givenIrLength != 0) return false;
  return std::any_of(position.Candidates().begin(), position.Candidates().end(), [&](const Candidate& candidate) {
    return candidate.device->GetIRLength() != position.Match()->GetIRLength();
  });
}

/// "--ir 0=LENGTH --ir 2=LENGTH".
std::string MissingOptions(const Chain& chain) {
  constexpr std::size_t most = 2000;  // characters; a longer command line is not useful
  std::string options;
  for (std::size_t i = 0; i < chain.size() && options.size() < most; ++i) {
    if (HasNoIrLength(chain[i])) options += (options.empty() ? "--ir " : " --ir ") + std::to_string(i) + "=LENGTH";
  }
  return options;
}

}  // namespace

std::string TotalIrLength(const Chain& chain) {
  unsigned long bits = 0;
  for (const ChainPosition& position : chain) bits += position.IrLength();
  const std::string sum = std::to_string(bits) + " bits";
  const std::string open = PositionsWhere(chain, HasNoIrLength);
  const std::string doubtful = PositionsWhere(chain, CandidatesDifferInIrLength);
  return "\n" +
         WrappedText("IR length of the chain: " + (open.empty() ? sum : "not known (" + sum + " without " + open + ")")) +
         (open.empty() ? "" : WrappedText("give " + MissingOptions(chain), "  ")) +
         (doubtful.empty() ? "" : WrappedText("another device that matches would change it at " + doubtful, "  "));
}

namespace {

// --- Unknown ids ------------------------------------------------------------------------------------------------------------

std::string FieldsText(unsigned int id) {
  const IdcodeFields fields = SplitIdcode(id);
  return "version " + Hex(fields.version, 1) + ", part " + Hex(fields.part, 4) + ", manufacturer " +
         Hex(fields.manufacturer, 3) + " (bank " + std::to_string(fields.bank) + ", code " + Hex(fields.code, 2) +
         "): " + MakerText(fields.manufacturer);
}

std::string MisreadText(const IdentifiedChain& identified, unsigned int id) {
  const auto misread = identified.finder.MisreadOf(id);
  if (!misread) return "";
  return WrappedText("probably misread: it is " + IdText(misread->id) + " (" + DeviceName(*misread->device) + ", " +
                         FamilyName(*misread->device) + ") " + misread->how,
                     "    ");
}

std::string NearestText(const std::vector<NearDevice>& nearest) {
  std::vector<Row> rows;
  rows.reserve(nearest.size());
  for (const NearDevice& near : nearest) {
    rows.push_back(
        {DeviceName(*near.device), FamilyName(*near.device), IdText(near.device->GetjtagDeviceID()), near.difference});
  }
  return rows.empty() ? "" : "    nearest devices:\n" + WrappedTable(rows, "      ");
}

std::string UnknownId(const IdentifiedChain& identified, const ChainPosition& position) {
  const IdKind& kind = KindOf(identified.comm, position.id);
  const std::string misread = position.id ? MisreadText(identified, *position.id) : "";
  if (!kind.isIdcode) return misread + WrappedText(kind.meaning, "    ");
  const unsigned int id = *position.id;
  const char* const vendor = identified.finder.VendorOf(SplitIdcode(id).manufacturer);
  return misread + WrappedText(FieldsText(id), "    ") + NearestText(identified.finder.NearestDevices(id)) +
         "    to describe it, fill in each ? and put this into a Family:\n    " +
         DescriptionStub(id, vendor, position.IrLength(), "    ") + "\n";
}

/// Equal ids are explained once, of very many the first ones.
void UnknownIds(const IdentifiedChain& identified, Output& output) {
  const auto isUnknown = [](const ChainPosition& position) { return position.Match() == nullptr; };
  const auto [groups, more] = EqualPositionsWhere(identified.chain, isUnknown);
  if (!groups.empty()) output << "\nUnknown ids:\n";
  for (const std::vector<std::size_t>& group : groups) {
    const ChainPosition& position = identified.chain[group.front()];
    output << WrappedText(PositionList(group) + ": " + (position.id ? IdText(*position.id) : "no IDCODE"), "  ");
    output << UnknownId(identified, position);
  }
  if (more != 0) output << "  and " + std::to_string(more) + " more; --format tsv explains all\n";
}

// --- More than one device ---------------------------------------------------------------------------------------------------

std::string CandidateTable(const IdentifiedChain& identified, const ChainPosition& position) {
  const auto isElsewhere = [&](const Candidate& other) { return other.database != position.Candidates().front().database; };
  const bool withFile = std::any_of(position.Candidates().begin(), position.Candidates().end(), isElsewhere);
  Row head = {"device", "family", "IR length", "compared", "search order"};
  if (withFile) head.push_back("file");
  std::vector<Row> rows = {head};
  for (const Candidate& candidate : MostExactFirst(position)) {
    rows.push_back({DeviceName(*candidate.device), FamilyName(*candidate.device), IrLengthText(*candidate.device),
                    Reason(candidate), std::to_string(candidate.searchOrder)});
    if (withFile) rows.back().push_back(Printable(FileOf(identified, candidate.database)));
  }
  return WrappedTable(rows, "    ");
}

/// Equal ids are listed once, of very many the first ones.
void AmbiguousPositions(const IdentifiedChain& identified, Output& output) {
  const auto isAmbiguous = [](const ChainPosition& position) { return position.IsAmbiguous(); };
  const auto [groups, more] = EqualPositionsWhere(identified.chain, isAmbiguous);
  if (!groups.empty()) {
    output << "\n* More than one device matches; the first was taken. The most exact first:\n";
  }
  for (const std::vector<std::size_t>& group : groups) {
    const ChainPosition& position = identified.chain[group.front()];
    output << WrappedText(PositionList(group) + ": " + IdText(*position.id) + ", taken as " + DeviceName(*position.Match()),
                          "  ");
    output << CandidateTable(identified, position);
  }
  if (more != 0) output << "  and " + std::to_string(more) + " more; --format tsv lists all\n";
}

void NotesText(const IdentifiedChain& identified, Output& output) {
  const std::vector<std::string> notes = Notes(identified);
  if (!notes.empty()) output << "\nNotes:\n";
  for (const std::string& note : notes) output << WrappedText(note, "  ");
}

}  // namespace

void TextOutput(const IdentifiedChain& identified, Output& output) {
  if (!identified.scan.format.empty()) output << "Scan: " + ScanText(identified.scan) + "\n";
  DeviceTable(identified.chain, output);
  output << TotalIrLength(identified.chain);
  UnknownIds(identified, output);
  AmbiguousPositions(identified, output);
  NotesText(identified, output);
}

}  // namespace tool
