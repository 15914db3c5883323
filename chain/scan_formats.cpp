#include "chain/scan_formats.h"

#include <iterator>
#include <utility>

#include "chain/scan_text.h"

namespace plddb::chain {
namespace {

constexpr std::size_t kMostTaps = 10000;  // far beyond any chain, so that nonsense ends soon

Taken TakeLineOfFormat(std::string_view line, const ScanFormat& format, ScanReports& reports) {
  for (std::size_t k = 0; k < format.kindCount; ++k) {
    const LineKind& kind = format.kinds[k];
    const std::size_t at = line.find(kind.marker);
    if (at == line.npos) continue;
    const Taken taken = kind.take({line.substr(0, at), line.substr(at + kind.marker.size())}, reports);
    if (taken.isInside) return taken;
    const std::size_t second = kind.marker.size() < 8 ? line.npos : line.find(kind.marker, at + kind.marker.size());
    if (taken.isMine && taken.fault == nullptr && second != line.npos) {
      return Wrong(line.substr(second), "a second TAP in one line: expected the text with its line ends");
    }
    if (taken.isMine) return reports.IsFull() ? Wrong({}, "more TAPs than a chain can have") : taken;
  }
  return kNotMine;
}

}  // namespace

void ScanReports::StartReport() {
  if (!Current().taps.empty()) reports_.emplace_back();
  isBlockOver_ = false;
}

void ScanReports::EndBlock() { isBlockOver_ = true; }

void ScanReports::Add(ScannedTap tap) {
  if (isBlockOver_) StartReport();
  Current().taps.push_back(std::move(tap));
}

void ScanReports::AddNumbered(unsigned long number, ScannedTap tap) {
  if (number == 0 || number < Current().taps.size()) StartReport();
  Add(std::move(tap));
  if (Current().taps.size() != number + 1) Current().isCut = true;
}

bool ScanReports::IsFull() const { return reports_.back().taps.size() > kMostTaps; }

std::vector<ScanReport> ScanReports::Take() {
  if (Current().taps.empty()) reports_.pop_back();
  return std::move(reports_);
}

Taken TakeScanLine(std::string_view line, std::vector<ScanReports>& reports, std::size_t& format) {
  Taken result = kNotMine;
  const bool isBlank = WithoutMargin(line).empty();
  for (std::size_t f = 0; f < std::size(kScanFormats); ++f) {
    if (!result.isMine) {
      result = TakeLineOfFormat(line, *kScanFormats[f], reports[f]);
      format = f;
      if (result.isMine || result.isInside) continue;
    }
    if (kScanFormats[f]->isOneBlock && !isBlank) reports[f].EndBlock();
  }
  return result;
}

}  // namespace plddb::chain
