#include <algorithm>

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

std::string DeviceTable(const Chain& chain) {
  std::vector<Row> rows = {{"position", "id", "device", "family", "IR length", "IDCODE", "BYPASS", "packages"}};
  for (std::size_t i = 0; i < chain.size(); ++i) {
    Row row = {std::to_string(i), IdOrDash(chain[i])};
    if (const DeviceInfo* const device = chain[i].Match()) {
      row.insert(row.end(),
                 {DeviceName(*device) + (chain[i].IsAmbiguous() ? Painted(Paint::kMark, " *") : ""), FamilyName(*device),
                  IrLengthOrDash(chain[i]), IdCodeInstruction(*device), BypassInstruction(*device), PackageTypes(*device)});
    } else {
      row.insert(row.end(), {Painted(Paint::kMark, "unknown"), "-", IrLengthOrDash(chain[i]), "-", "-", "-"});
    }
    rows.push_back(std::move(row));
  }
  return AlignedTable(rows);
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
  std::string options;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (HasNoIrLength(chain[i])) options += (options.empty() ? "--ir " : " --ir ") + std::to_string(i) + "=LENGTH";
  }
  return options;
}

std::string TotalIrLength(const Chain& chain) {
  unsigned long bits = 0;
  for (const ChainPosition& position : chain) bits += position.IrLength();
  const std::string sum = std::to_string(bits) + " bits";
  const std::string open = PositionsWhere(chain, HasNoIrLength);
  const std::string doubtful = PositionsWhere(chain, CandidatesDifferInIrLength);
  return "\nIR length of the chain: " +
         (open.empty() ? sum : "not known (" + sum + " without " + open + "; give " + MissingOptions(chain) + ")") +
         (doubtful.empty() ? "" : "; another device that matches would change it at " + doubtful) + "\n";
}

// --- Unknown ids ------------------------------------------------------------------------------------------------------------

std::string FieldsText(unsigned int id, const char* vendor) {
  const IdcodeFields fields = SplitIdcode(id);
  return "version " + Hex(fields.version, 1) + ", part number " + Hex(fields.part, 4) + ", manufacturer " +
         Hex(fields.manufacturer, 3) + " (bank " + std::to_string(fields.bank) + ", code " + Hex(fields.code, 2) +
         "): " + (vendor == nullptr ? "of no device in the descriptions" : TextOrDash(vendor));
}

std::string NearestText(const std::vector<NearDevice>& nearest) {
  std::vector<Row> rows;
  rows.reserve(nearest.size());
  for (const NearDevice& near : nearest) {
    rows.push_back(
        {DeviceName(*near.device), FamilyName(*near.device), IdText(near.device->GetjtagDeviceID()), near.difference});
  }
  return rows.empty() ? "" : "    nearest devices:\n" + AlignedTable(rows, "      ");
}

std::string UnknownId(const IdentifiedChain& identified, const ChainPosition& position) {
  const IdKind& kind = KindOf(identified.comm, position.id);
  std::string text = kind.isIdcode ? "" : std::string("    ") + kind.meaning + "\n";
  if (!kind.isIdcode) return text;
  const unsigned int id = *position.id;
  const char* const vendor = identified.finder.VendorOf(SplitIdcode(id).manufacturer);
  return "    " + FieldsText(id, vendor) + "\n" + NearestText(identified.finder.NearestDevices(id)) +
         "    to describe it, fill in each ? and put this into a Family:\n    " +
         DescriptionStub(id, vendor, position.IrLength(), "    ") + "\n";
}

std::string UnknownIds(const IdentifiedChain& identified) {
  std::string text;
  for (std::size_t i = 0; i < identified.chain.size(); ++i) {
    const ChainPosition& position = identified.chain[i];
    if (position.Match() != nullptr) continue;
    text += "  position " + std::to_string(i) + ": " + (position.id ? IdText(*position.id) : "no IDCODE") + "\n" +
            UnknownId(identified, position);
  }
  return text.empty() ? "" : "\nUnknown ids:\n" + text;
}

// --- More than one device ---------------------------------------------------------------------------------------------------

std::string CandidateTable(const IdentifiedChain& identified, const ChainPosition& position) {
  const bool withFile = identified.databases.size() > 1;
  Row head = {"device", "family", "IR length", "compared", "search order"};
  if (withFile) head.push_back("file");
  std::vector<Row> rows = {head};
  for (const Candidate& candidate : MostExactFirst(position)) {
    rows.push_back({DeviceName(*candidate.device), FamilyName(*candidate.device), IrLengthText(*candidate.device),
                    Reason(candidate), std::to_string(candidate.searchOrder)});
    if (withFile) rows.back().push_back(Printable(FileOf(identified, candidate.database)));
  }
  return AlignedTable(rows, "    ");
}

std::string AmbiguousPositions(const IdentifiedChain& identified) {
  const Chain& chain = identified.chain;
  std::string text;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (!chain[i].IsAmbiguous()) continue;
    text += "  position " + std::to_string(i) + ": " + IdText(*chain[i].id) + ", taken as " + DeviceName(*chain[i].Match()) +
            "\n" + CandidateTable(identified, chain[i]);
  }
  return text.empty() ? ""
                      : "\n* More than one device matches. The first in search order was taken; most exact first:\n" + text;
}

std::string NotesText(const IdentifiedChain& identified) {
  std::string text;
  for (const std::string& note : Notes(identified)) text += "  " + note + "\n";
  return text.empty() ? "" : "\nNotes:\n" + text;
}

}  // namespace

std::string TextOutput(const IdentifiedChain& identified) {
  const std::string scan = identified.scan.format.empty() ? "" : "Scan: " + ScanText(identified.scan) + "\n";
  return scan + DeviceTable(identified.chain) + TotalIrLength(identified.chain) + UnknownIds(identified) +
         AmbiguousPositions(identified) + NotesText(identified);
}

}  // namespace tool
