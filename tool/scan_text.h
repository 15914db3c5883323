#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// The end of a chain: TDO, where bits come out, or TDI.
enum class End { kTdo, kTdi };

/// What a scanning tool says of one TAP.
struct ScannedTap {
  std::string name = {};                ///< As the tool calls it; empty when it gives no names.
  std::optional<unsigned int> id = {};  ///< None: the tool read no IDCODE there.
  unsigned long ir_length = 0;          ///< 0: the tool does not say; others may be guesses.
};

/// A chain as it was read, and where it comes from.
struct Scan {
  std::string format = {};              ///< Which text was recognised; empty for ids that were given one by one.
  std::vector<ScannedTap> taps = {};    ///< In the order of the text.
  End nearest = End::kTdo;              ///< The end at which `taps` starts.
  bool has_versions = true;             ///< False: the tool may print an id with 0 for its version.
  unsigned long ir_length = 0;          ///< Of the whole chain, where the tool measured it; else 0.
  std::vector<std::string> notes = {};  ///< What is odd in the text; one line each.
};

Scan ScanOfIds(const std::vector<unsigned int>& ids);

/// Reads what a scanning tool printed, see kScanFormats, or else ids as IdsFromText takes them. Of several reports of one
/// format the last is taken; of several formats the first in the table. What precedes or follows a tool's words in a line does
/// not matter, nor do colours, carriage returns and lines of other programs. Throws Failure "NAME:LINE:COLUMN: error: ..." for
/// a text without any chain, and for one whose id cannot be read.
Scan ReadScan(std::string_view text, const std::string& name);

}  // namespace tool
