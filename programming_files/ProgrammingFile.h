#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Chain.h"
#include "DeviceInfo.h"
#include "DeviceList.h"

/// Programming files: what a file states about its device, and whether it fits a chain. No file is executed or written.
///
/// Bytes go in, values come out: nothing here prints, touches files, changes a database or throws anything but std::bad_alloc
/// (and what a Source throws). Any bytes are read in linear time and bounded memory.
namespace plddb::programming_files {

/// \name What a file states
///@{

/// The kind of a file.
enum class Format {
  kUnknown,  ///< No programming file that is known here; File::remark tells what it is instead, where that is seen.
  kJedec,
  kXilinxBit,  ///< With the header of a .bit file.
  kXilinxBin,  ///< A configuration stream without that header, in any bit order.
  kIntelHex,   ///< .mcs
  kSvf,
  kXsvf,
  kStapl,
  kGowin,  ///< .fs
  kPof,
  kSof,
  kRbf,
  kEfinix,  ///< .hex or .bit
  kIsc,     ///< IEEE 1532
  kSignalTap,
  kStep,     ///< A three-dimensional model.
  kSymlink,  ///< The text of a symbolic link instead of the file.
};

/// For scripts: "jedec", "xilinx-bit".
const char* ToText(Format format);

/// For people: "JEDEC fuse map".
const char* Description(Format format);

/// The subject of a statement, the most trustworthy first.
enum class Kind {
  kId,           ///< An IDCODE, with the bits that count.
  kName,         ///< A device name in a field for it.
  kEntity,       ///< An entity name.
  kCommentName,  ///< A device name in a comment.
  kFuseCount,
  kPackage,
  kSignature,  ///< Words that tell a family but no device.
};

/// For scripts: "id", "comment-name".
const char* ToText(Kind kind);

/// Who compares an id.
enum class Proof {
  kNone,    ///< Nobody.
  kDevice,  ///< The device, which refuses the data of another one.
  kPlayer,  ///< The program that plays the file.
};

/// Where in the file: a line and a column of a text, both counted from 1; a byte, counted from 0, of anything else. In a
/// compressed file they are places in the unpacked data, in an Intel HEX file places in the image.
struct Place {
  std::uint64_t offset = 0;
  std::uint64_t line = 0;  ///< 0: not a text.
  std::uint64_t column = 0;
};

/// The bits of other devices that a file shifts around those of its own device, with each instruction and each datum.
struct Padding {
  std::uint32_t hir = 0;  ///< Instruction bits of the devices nearer TDO.
  std::uint32_t tir = 0;  ///< Instruction bits of the devices nearer TDI.
  std::uint32_t hdr = 0;  ///< Data bits of the devices nearer TDO: one each.
  std::uint32_t tdr = 0;  ///< Data bits of the devices nearer TDI.
  bool hasIr = true;      ///< False: the file loads no instructions, so that `hir` and `tir` are not known.

  bool operator==(const Padding& other) const;
};

/// A fact that a file states about its device.
struct Statement {
  Kind kind = Kind::kId;
  std::string text = {};    ///< As the file has it; of an id what it is, such as "IDCODE write".
  std::uint32_t value = 0;  ///< Of an id and a fuse count.
  std::uint32_t mask = 0;   ///< Of an id: a bit of 1 counts.
  Place place = {};
  Proof proof = Proof::kNone;
  unsigned int irLength = 0;            ///< Of an id: the length of its device's instruction register; 0 when it is not known.
  std::optional<Padding> padding = {};  ///< Of an id in a file that has paddings.
  std::vector<const DeviceInfo*> devices =
      {};  ///< Those that the statement alone fits, most likely first. Lent by the databases.
};

/// A mistake in a file, and its place.
struct Fault {
  Place place;
  std::string text;  ///< What is wrong, and what was expected; one line.
};

/// "byte 12", "line 3".
std::string ToText(const Place& place);

/// What was read from a file.
struct File {
  Format format = Format::kUnknown;
  bool isCompressed = false;               ///< It was unpacked first.
  std::string remark = {};                 ///< What else the file is: "an empty session: nothing is programmed"; may be empty.
  std::vector<Statement> statements = {};  ///< In file order.
  std::optional<std::uint32_t> fuseCount = {};
  std::vector<Padding> paddings = {};  ///< All that the file uses, in file order; empty for formats that have none.
  std::vector<Fault> faults = {};      ///< The first 100, in file order. A file with faults still has statements.
};

/// Gives up to `size` of the next bytes; 0 at the end.
using Source = std::function<std::size_t(char* buffer, std::size_t size)>;
///@}

/// \name Whether it fits
///@{

/// Whether a file fits a position of a chain.
enum class Fit { kFits, kFitsSeveral, kFitsNone, kUnknown };

/// For scripts: "fits", "fits-several", "fits-none", "unknown".
const char* ToText(Fit fit);

/// Which devices a file can be for, and where it fits.
struct Verdict {
  std::vector<const DeviceInfo*> devices = {};  ///< Those that the file can be for, most likely first. Lent by the databases.
  bool isKnown = false;                         ///< The devices are one device, or differ in nothing that matters.
  Fit fit = Fit::kUnknown;                      ///< kUnknown where no chain was given.
  std::vector<std::size_t> positions = {};      ///< Of the chain that it fits; empty unless `fit` is one of the first two.
  std::vector<std::string> reasons = {};        ///< In words, the strongest first.
};
///@}

/// Reads programming files. Borrows the databases, which must not change while it lives.
class Reader {
 public:
  /// Borrows the databases, which must not change while it lives.
  explicit Reader(const std::vector<const DeviceList*>& databases);
  ~Reader();
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  /// Reads a file. Its format is recognised by its content alone; gzip is unpacked.
  File Read(std::string_view bytes) const;
  File Read(const Source& source) const;  ///< The same, for what `source` gives.

  /// What `file` is for.
  Verdict Judge(const File& file) const;

  /// Whether `file` fits the chain, whose first position is nearest to `nearest`.
  Verdict Judge(const File& file, const chain::Chain& positions, chain::End nearest = chain::End::kTdo) const;

 private:
  struct Impl;
  std::unique_ptr<const Impl> impl_;
};

}  // namespace plddb::programming_files
