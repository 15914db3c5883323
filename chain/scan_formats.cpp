#include "chain/scan_formats.h"

#include <iterator>
#include <utility>

namespace plddb::chain {
namespace {

constexpr std::size_t kMostTaps = 10000;  // far beyond any chain, so that nonsense ends soon

}  // namespace

void ScanReports::StartReport() {
  if (!Current().taps.empty()) reports_.emplace_back();
}

void ScanReports::Add(ScannedTap tap) {
  if (!tap.name.empty() && names_.count(tap.name) != 0) StartReport();
  if (Current().taps.empty()) names_.clear();
  names_.insert(tap.name);
  Current().taps.push_back(std::move(tap));
}

bool ScanReports::IsFull() const { return reports_.back().taps.size() > kMostTaps; }

std::vector<ScanReport> ScanReports::Take() {
  if (Current().taps.empty()) reports_.pop_back();
  return std::move(reports_);
}

Taken TakeScanLine(std::string_view line, std::vector<ScanReports>& reports) {
  for (std::size_t f = 0; f < std::size(kScanFormats); ++f) {
    for (std::size_t k = 0; k < kScanFormats[f]->kindCount; ++k) {
      const LineKind& kind = kScanFormats[f]->kinds[k];
      const std::size_t at = line.find(kind.marker);
      if (at == line.npos) continue;
      const Taken taken = kind.take({line.substr(0, at), line.substr(at + kind.marker.size())}, reports[f]);
      if (reports[f].IsFull()) return Wrong({}, "more TAPs than a chain can have");
      return taken;
    }
  }
  return kNotMine;
}

}  // namespace plddb::chain
