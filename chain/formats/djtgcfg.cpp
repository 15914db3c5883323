// The output of "djtgcfg init". Its order is not documented, and the names after it may have another order.

#include <iterator>

#include "chain/scan_formats.h"
#include "chain/scan_words.h"

namespace plddb::chain {
namespace {

/// Initializing scan chain...
Taken TakeHead(const ScanLine&, ScanReports& reports) {
  reports.StartReport();
  return kTaken;
}

/// Found Device ID: 4401d093
Taken TakeId(const ScanLine& line, ScanReports& reports) {
  const auto id = LeadingBareId(line.after);
  if (!id) return Wrong(FirstWord(line.after), kExpectedBareId);
  reports.Add({"", id});
  return kTaken;
}

/// Found 2 device(s):
Taken TakeCount(const ScanLine& line, ScanReports& reports) {
  if (line.after.find(" device(s)") == line.after.npos) return kNotMine;
  reports.Current().deviceCount = LeadingNumber(line.after);
  return kTaken;
}

constexpr LineKind kKinds[] = {{"Initializing scan chain", TakeHead}, {"Found Device ID: ", TakeId}, {"Found ", TakeCount}};

}  // namespace

const ScanFormat kDjtgcfg = {"djtgcfg init", "djtgcfg", End::kAsPrinted, true, true, false, true, kKinds, std::size(kKinds)};

}  // namespace plddb::chain
