#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "DeviceInfo.h"
#include "DeviceList.h"

/// Reads what a scanning tool printed about a JTAG chain, and finds the devices that its ids may belong to.
///
/// Texts go in, values come out: nothing here prints, touches files, changes a database or throws anything but std::bad_alloc.
/// Any text is read or rejected in time and memory that depend only on its size.
namespace plddb::chain {

/// \name Reading
///@{

/// A mistake in a text, and its place.
struct Fault {
  int line = 1;      ///< 1-based.
  int column = 1;    ///< 1-based, in bytes.
  std::string text;  ///< What is wrong, and what was expected; one line.
};

/// \name IR lengths that a user may give, in bits: by the standard every capture ends in 01, and descriptions hold no longer
/// ones
///@{
inline constexpr unsigned long kShortestIrLength = 2;
inline constexpr unsigned long kLongestIrLength = 0xFFFF;
///@}

/// The end of a chain: TDO, where bits come out, or TDI. kAsPrinted: it is not known which end the tool names first.
enum class End { kTdo, kTdi, kAsPrinted };

/// What a scanning tool prints about one TAP.
struct ScannedTap {
  std::string name = {};                ///< As the tool calls it; empty when it gives no names.
  std::optional<unsigned int> id = {};  ///< None: the tool read no IDCODE there.
  unsigned long irLength = 0;           ///< 0: the tool does not print it.
  bool irLengthIsGuess = false;         ///< The tool guessed the length, or has it from its own table.
};

/// A chain as it was read, and its origin.
struct Scan {
  std::string format = {};              ///< Which text was recognised; empty for ids that were given one by one.
  std::string tool = {};                ///< Whose text it is; empty for ids.
  std::vector<ScannedTap> taps = {};    ///< In the order of the text.
  End nearest = End::kTdo;              ///< The end at which `taps` starts.
  bool hasVersions = true;              ///< False: the tool may print an id with 0 for its version.
  unsigned long irLength = 0;           ///< Of the whole chain, where the tool measured it; else 0.
  std::vector<std::string> notes = {};  ///< What is odd in the text; one line each.
};

/// A scan and no faults, or faults and no scan: nothing is ever half-read.
struct ScanResult {
  std::optional<Scan> scan;
  std::vector<Fault> faults;   ///< The first 100, in the order of the text.
  std::size_t moreFaults = 0;  ///< How many faults follow those.
};

/// Reads an id: 8 hex digits, or 0x and 1 to 8 hex digits, in any letter case.
/// On purpose: fewer than 8 digits need the 0x, so that a decimal number is not taken for an id.
std::optional<unsigned int> ParseId(std::string_view text);

/// "'10101' is not an id: expected ...", safe to print on a terminal; a long `text` is shortened.
std::string NotAnId(std::string_view text);

/// Reads the ids of `text`, one per line. '#' starts a comment; white space around an id and lines without one are skipped. A
/// line that holds anything else is a fault, and so is a text without any id.
ScanResult ReadIds(std::string_view text);

/// Reads what a scanning tool printed, or else ids as ReadIds does, or lists of them. Of several reports in one format the last
/// is taken; of several formats the first that ScanFormats names, and what another one of the same tool adds. What precedes or
/// follows a tool's words in a line does not matter, nor do colours, carriage returns, lines wrapped by a terminal, and lines
/// of other programs. The text is UTF-8 or UTF-16. A text that names devices but no ids is a fault, which suggests what to
/// print instead.
ScanResult ReadScan(std::string_view text);

/// The formats that ReadScan knows, preferred ones first: "OpenOCD log".
std::vector<std::string> ScanFormats();
///@}

/// \name The devices that answer to an id
///@{

/// A device that answers to an id, and how exact the match is.
struct Candidate {
  const DeviceInfo* device;
  std::size_t database;  ///< Its index in the databases that were asked.
  unsigned int bits;     ///< Those that were compared.
  bool onlyLowByte;      ///< Found by the low byte of its ISP identifier, as the access mode DUAL allows.
  int searchOrder;       ///< From 1: the library finds the first.
};

/// One position of a chain: the id that was read there and the devices that answer to it.
class ChainPosition {
 public:
  std::optional<unsigned int> id;     ///< None where a TAP gave its BYPASS bit instead.
  unsigned long givenIrLength = 0;    ///< What the user gives; 0 when nothing.
  unsigned long scannedIrLength = 0;  ///< What the scan gives and is to be used; 0 when nothing.

  const std::vector<Candidate>& Candidates() const;  ///< All that answer, in search order.
  const DeviceInfo* Match() const;                   ///< What the library finds first; null for an unknown id.
  /// Whether another device may be meant as well. One that is less exact than the match and has the same IR length does not
  /// count.
  bool IsAmbiguous() const;
  unsigned long IrLength() const;  ///< What the user gives, or else that of the match, or that of the scan; 0 when not known.

 private:
  friend class DeviceFinder;
  std::shared_ptr<const std::vector<Candidate>> candidates_;  // null: none; shared by equal ids
};

/// The positions of a chain, in the order of the scan.
using Chain = std::vector<ChainPosition>;

/// An unknown id's neighbour in a database.
struct NearDevice {
  const DeviceInfo* device;
  std::size_t database;    ///< Its index in the databases that were asked.
  std::string difference;  ///< "other version", "bit 14 differs: another part of the same maker?"
};

/// A known id that was read wrongly.
struct Misread {
  unsigned int id;           ///< What the device answers.
  const DeviceInfo* device;  ///< The first that answers to it.
  std::size_t database;      ///< Its index in the databases that were asked.
  const char* how;           ///< "bit-reversed"
};

/// Finds the devices that answer to ids. It borrows the databases, which must not change during its life: it keeps their
/// identifiers, and the candidates of known ids.
class DeviceFinder {
 public:
  /// `comm` is the access mode: "JTAG", "ISP" or "DUAL", as in DeviceList::GetDeviceWithCommAndID; no device answers in others.
  DeviceFinder(const std::vector<const DeviceList*>& databases, const std::string& comm);
  ~DeviceFinder();
  DeviceFinder(const DeviceFinder&) = delete;
  DeviceFinder& operator=(const DeviceFinder&) = delete;

  /// All devices that answer to `id`, in the order in which GetDeviceWithCommAndID searches each database in turn.
  ChainPosition Identify(std::optional<unsigned int> id);

  /// The same for a TAP that a tool printed. Its IR length is used, but a guessed one only on demand.
  ChainPosition Identify(const ScannedTap& tap, bool trustsGuessedIrLength = false);

  /// The devices nearest to the IDCODE `id`: those of the same part and another version first, then those that differ in one
  /// compared bit; in search order, at most 5. One bit is called a wiring fault only if nothing else explains it: not in the
  /// part number, by which a maker's parts differ, nor for an id that is misread or another version.
  std::vector<NearDevice> NearestDevices(unsigned int id) const;

  /// The known id that may have been misread as `id`: one bit late or early, with bits reversed or inverted, or with bytes or
  /// halves swapped. None in the access mode ISP.
  std::optional<Misread> MisreadOf(unsigned int id) const;

  /// The Vendor of the first device that has one and whose identifier has this manufacturer field; null without one.
  const char* VendorOf(unsigned int manufacturer) const;

 private:
  struct Table;
  std::shared_ptr<const std::vector<Candidate>> CandidatesFor(unsigned int id) const;

  std::unique_ptr<const Table> table_;
  std::unordered_map<std::uint64_t, std::shared_ptr<const std::vector<Candidate>>> answers_;
};

/// The positions of `scan`, each identified by a DeviceFinder. If the match has no IR length, that of the scan is used; a
/// guessed one only on demand.
Chain Identify(const std::vector<const DeviceList*>& databases, const std::string& comm, const Scan& scan,
               bool trustsGuessedIrLengths = false);

/// The candidates of `position`, those with more compared bits first; equal ones stay in search order.
std::vector<Candidate> MostExactFirst(const ChainPosition& position);

/// Whether `name` is the name, code name, alias, an ordering number or the family of a candidate, ignoring letter case.
bool IsNamed(const ChainPosition& position, const std::string& name);

/// Whether a position of a chain is what was expected there.
struct Expectation {
  bool agrees;
  std::string text;  ///< "XC9572XL, as expected", "expected XC9572XL, found XC7A35T (0x0362D093)"; printable.
};

/// Compares `chain` with `names`, each as IsNamed has it: an entry for each position of the longer one.
std::vector<Expectation> Compare(const Chain& chain, const std::vector<std::string>& names);

/// Why `candidate` answers: "all 32 bits", "masked 0x0FFFFFFF", "low byte only (DUAL)".
std::string Reason(const Candidate& candidate);
///@}

/// \name Ids that no device answers to
///@{

/// The fields of an IDCODE.
struct IdcodeFields {
  unsigned int version;       ///< Bits 31 to 28.
  unsigned int part;          ///< Bits 27 to 12.
  unsigned int manufacturer;  ///< Bits 11 to 1.
  unsigned int bank;          ///< Bits 11 to 8: the bank of the manufacturers' codes, counted from 0.
  unsigned int code;          ///< Bits 7 to 1: the code in its bank, without parity.
};

/// Splits an IDCODE into its fields.
IdcodeFields SplitIdcode(unsigned int id);

/// The maker with `code` (0x01 to 0x7E) in `bank` (from 0), for example "Xilinx"; empty if it is not assigned. As of JEP106BO.
std::string_view MakerName(unsigned int bank, unsigned int code);

/// What an IDCODE's manufacturer field shows of its maker: "Xilinx"; "not assigned"; "reserved: ..." for the codes 0x00 and
/// 0x7F. The field holds 4 bits of the bank: the makers of banks 16 and 17 come with a remark, as they read as banks 0 and 1.
std::string MakerText(unsigned int manufacturer);

/// The kind of an unknown id.
struct IdKind {
  const char* name;     ///< For scripts.
  bool isIdcode;        ///< It has the fields of an IDCODE.
  const char* meaning;  ///< For people; empty when it adds nothing to the fields.
};

/// Classifies what was read in the access mode `comm`; nullopt means no id.
const IdKind& KindOf(const std::string& comm, std::optional<unsigned int> id);

/// A Device element for the IDCODE `id`, with "?" for values to fill in; `vendor` may be null, `irLength` 0. Its second
/// line starts with `indent`.
std::string DescriptionStub(unsigned int id, const char* vendor, unsigned long irLength, const std::string& indent);
///@}

/// \name Showing. Texts are printable; what is not known is "-".
///@{
std::string DeviceName(const DeviceInfo& device);  ///< The name, or else the code name.
std::string FamilyName(const DeviceInfo& device);  ///< Of the family that holds the device.

/// Whether `device` is no programmable logic, but found beside it in chains: it is in a hidden family.
bool IsNeighbour(const DeviceInfo& device);

/// The hint that a neighbour's description has; empty without one.
std::string HintOn(const DeviceInfo& device);

/// What the device is: "logic", or the kind of a neighbour, which is its family's name; for an unknown id the name of its
/// IdKind.
std::string KindText(const std::string& comm, const ChainPosition& position);

/// What a reader of `chain`, which was read as `scan`, should know: oddities of the scan, IR lengths that do not agree or are
/// missing, hints on devices that are no programmable logic. One line each; options are called as those of `plddb identify`.
std::vector<std::string> Notes(const Scan& scan, const Chain& chain);

/// The most TAPs that are drawn: any more are no chain that a person could look at.
inline constexpr std::size_t kMostDrawn = 10000;

/// A drawing of the chain, from TDI to TDO, in rows of `perRow` TAPs (at least 1); empty for an empty chain, and for one of
/// more than kMostDrawn TAPs. `nearest` is the end at which `chain` starts.
std::string Svg(const Chain& chain, const std::string& comm, End nearest, std::size_t perRow = 5);
///@}

}  // namespace plddb::chain
