#include "ProgrammingFile.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "impl.h"
#include "readers.h"

namespace plddb::programming_files {
namespace {

constexpr struct {
  Format format;
  const char* name;
  const char* description;
  bool (*looksLike)(std::string_view head);
  void (*read)(Input& input, const KnownDevices& known, File& file);
} kFormats[] = {
    // Those that a few first bytes prove come first, those that are a guess last.
    {Format::kXilinxBit, "xilinx-bit", "Xilinx bitstream (.bit)", LooksLikeXilinxBit, ReadXilinxBit},
    {Format::kPof, "pof", "Altera programmer object file (.pof)", LooksLikePof, ReadPof},
    {Format::kSof, "sof", "Altera SRAM object file (.sof)", LooksLikeSof, ReadPof},
    {Format::kIntelHex, "mcs", "Intel HEX image (.mcs)", LooksLikeIntelHex, ReadIntelHex},
    {Format::kEfinix, "efinix", "Efinix bitstream (.hex, .bit)", LooksLikeEfinix, ReadEfinix},
    {Format::kGowin, "gowin-fs", "Gowin bitstream (.fs)", LooksLikeGowin, ReadGowin},
    {Format::kSvf, "svf", "SVF", LooksLikeSvf, ReadSvf},
    {Format::kStapl, "stapl", "STAPL (JAM)", LooksLikeStapl, ReadStapl},
    {Format::kJedec, "jedec", "JEDEC fuse map", LooksLikeJedec, ReadJedec},
    {Format::kIsc, "isc", "IEEE 1532 data file (.isc)", LooksLikeIsc, ReadIsc},
    {Format::kXsvf, "xsvf", "XSVF", LooksLikeXsvf, ReadXsvf},
    {Format::kRbf, "rbf", "Altera raw binary file (.rbf)", LooksLikeRbf, ReadRbf},
    // Recognised otherwise.
    {Format::kXilinxBin, "xilinx-bin", "Xilinx configuration stream (.bin)", nullptr, nullptr},
    {Format::kSignalTap, "signaltap", "SignalTap session", nullptr, nullptr},
    {Format::kStep, "step", "STEP model", nullptr, nullptr},
    {Format::kSymlink, "symlink", "text of a symbolic link", nullptr, nullptr},
    {Format::kUnknown, "unknown", "unknown", nullptr, nullptr},
};

const auto& RowOf(Format format) {
  return *std::find_if(std::begin(kFormats), std::end(kFormats), [&](const auto& row) { return row.format == format; });
}

void ReadUnknown(Input& input, const KnownDevices& known, File& file) {
  RecogniseOther(input.Window(), input.Window().size() < Input::kWindow, file);
  if (file.format != Format::kUnknown) return;
  File binary;
  ReadXilinxBin(input, known, binary);
  if (binary.format != Format::kUnknown) file = binary;
}

void ReadPlain(Input& input, const KnownDevices& known, File& file) {
  if (input.Window(3) == "\xEF\xBB\xBF") input.Skip(3);
  const std::string_view head = input.Window();
  const auto* const row = std::find_if(std::begin(kFormats), std::end(kFormats), [&](const auto& format) {
    return format.looksLike != nullptr && format.looksLike(head);
  });
  if (row == std::end(kFormats)) return ReadUnknown(input, known, file);
  file.format = row->format;
  row->read(input, known, file);
}

}  // namespace

const char* ToText(Format format) { return RowOf(format).name; }
const char* Description(Format format) { return RowOf(format).description; }

const char* ToText(Kind kind) {
  switch (kind) {
    case Kind::kId:
      return "id";
    case Kind::kName:
      return "name";
    case Kind::kEntity:
      return "entity";
    case Kind::kCommentName:
      return "comment-name";
    case Kind::kFuseCount:
      return "fuse-count";
    case Kind::kPackage:
      return "package";
    case Kind::kSignature:
      return "signature";
  }
  return "";
}

std::string ToText(const Place& place) {
  return place.line == 0 ? "byte " + std::to_string(place.offset) : "line " + std::to_string(place.line);
}

bool Padding::operator==(const Padding& other) const {
  return hir == other.hir && tir == other.tir && hdr == other.hdr && tdr == other.tdr && hasIr == other.hasIr;
}

void AddFault(File& file, const Place& place, std::string text) {
  if (file.faults.size() < kMostFaults) file.faults.push_back({place, std::move(text)});
}

void AddStatement(File& file, Statement statement) {
  const auto isSame = [&](const Statement& other) {
    return other.kind == statement.kind && other.text == statement.text && other.value == statement.value &&
           other.mask == statement.mask && other.irLength == statement.irLength && other.padding == statement.padding;
  };
  const bool isNew = std::none_of(file.statements.begin(), file.statements.end(), isSame);
  if (isNew && file.statements.size() < kMostStatements) file.statements.push_back(std::move(statement));
}

void AddNameWithPackage(File& file, const KnownDevices& known, Kind kind, std::string_view text, const Place& place) {
  KnownDevices::Named named = known.WithNameIn(text);
  Statement name{kind, std::string(text.substr(0, kLongestText))};
  name.place = place;
  name.devices = std::move(named.devices);
  const bool isKnown = !name.devices.empty();
  AddStatement(file, std::move(name));
  Statement package{Kind::kPackage, std::string(named.rest.substr(0, kLongestText))};
  package.place = place;
  if (isKnown && !package.text.empty()) AddStatement(file, std::move(package));
}

Reader::Reader(const std::vector<const DeviceList*>& databases) : impl_(new Impl{KnownDevices(databases)}) {}
Reader::~Reader() = default;

File Reader::Read(std::string_view bytes) const {
  return Read([&bytes](char* buffer, std::size_t size) {
    const std::size_t count = bytes.copy(buffer, size);
    bytes.remove_prefix(count);
    return count;
  });
}

File Reader::Read(const Source& source) const {
  File file;
  const auto input = std::make_unique<Input>(source);
  if (input->Window(2) != "\x1F\x8B") {
    ReadPlain(*input, impl_->known, file);
    return file;
  }
  bool isDamaged = false;
  const auto unpacked = std::make_unique<Input>(Unpacked(*input, isDamaged));
  file.isCompressed = true;
  ReadPlain(*unpacked, impl_->known, file);
  if (isDamaged) AddFault(file, input->BytePlace(), "the compressed data are damaged or cut");
  return file;
}

}  // namespace plddb::programming_files
