// Files that were cut, damaged, or made to hurt.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "known_data.h"
#include "samples.h"

namespace {

using namespace known_data;
using namespace samples;

std::vector<std::string> Samples() {
  const std::string stapl =
      "NOTE \"DEVICE\" \"MPF300T\";\nNOTE \"IDCODE\" \"0F8131CF\";\nNOTE \"IDMASK\" \"0FFFFFFF\";\nACTION P = Q;\n"
      "BOOLEAN W[32] = $0F8131CF;\nIRSCAN 8, $0F;\nDRSCAN 32, $0, CAPTURE I[], COMPARE W[],W[],P;\nCRC 1234;\n";
  return {
      XilinxJedec("XC9572XL-10-VQ44", "46656"),
      Jedec("JEDEC file for: ATF1502 PLCC44\n*\nQP44*\nQF16808*\n"),
      Bit("7a35tcpg236", WideStream(0x0362D093)),
      Spartan6Stream(0x04001093),
      IntelHex(WideStream(0x0362D093)),
      Svf("HIR 8 TDI (ff);\nHDR 1 TDI (0);\n//Position 1: xc9572xl\n" + SvfCheck("8", "fe", "f9604093", "0fffffff")),
      Xsvf(XsvfIr(8, 0xFE) + XsvfCheck(32, BigEndian(0xF9604093, 4), BigEndian(0x0FFFFFFF, 4))),
      stapl,
      Gowin(GowinHeader("GW1NR-9", "C", "GW1NR-LV9QN88PC6/I5"), 0x1100481B),
      Pof("EPM7128SLC84-15"),
      Efinix("T8F81"),
      "Header\n  Entity xc2c64a_vq44_1532;\n",
  };
}

/// Whether an answer is sound: bounded, and with places in the file.
void ExpectSound(std::string_view bytes) {
  const File file = Read(bytes);
  EXPECT_LE(file.faults.size(), 100U);
  EXPECT_LE(file.statements.size(), 100U);
  for (const auto& fault : file.faults) EXPECT_LE(fault.place.offset, bytes.size()) << fault.text;
  for (const Statement& statement : file.statements) EXPECT_LE(statement.place.offset, bytes.size()) << statement.text;
  EXPECT_FALSE(KnownReader().Judge(file, ChainOf({0x59604093})).reasons.empty());
}

TEST(HostileFiles, CutAtAnyByteGiveAnAnswerOrAFaultAndNeverAnotherDevice) {
  for (const std::string& whole : Samples()) {
    const Names devices = DevicesFor(whole);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const std::string_view cut = std::string_view(whole).substr(0, size);
      ExpectSound(cut);
      const File file = Read(cut);
      EXPECT_FALSE(file.statements.empty() && file.faults.empty() && file.remark.empty()) << size << " of " << whole;
    }
    EXPECT_FALSE(devices.empty()) << whole;
  }
}

TEST(HostileFiles, AFileThatIsCutAfterItsHeadIsDamaged) {
  for (const std::string& whole : Samples()) {
    const std::string format = FormatOf(Read(whole));
    if (format == "isc" || format == "svf" || format == "xilinx-bin") continue;  // these have no end mark
    const File file = Read(std::string_view(whole).substr(0, whole.size() / 2));
    EXPECT_FALSE(file.faults.empty()) << FormatOf(file) << "\n" << whole;
  }
}

TEST(HostileFiles, WithChangedBytesGiveSoundAnswers) {
  std::mt19937 random(1);
  for (const std::string& whole : Samples()) {
    for (int i = 0; i < 300; ++i) {
      std::string changed = whole;
      for (int j = 0; j < 3; ++j) changed[random() % changed.size()] = static_cast<char>(random());
      ExpectSound(changed);
    }
  }
}

TEST(HostileFiles, OfOneByteAllOverGiveSoundAnswers) {
  for (int byte = 0; byte < 256; ++byte) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{16}, std::size_t{70000}}) {
      const std::string bytes(size, static_cast<char>(byte));
      ExpectSound(bytes);
      EXPECT_EQ(DevicesFor(bytes), Names()) << byte;
    }
  }
}

/// A file of `size` bytes that is made while it is read: memory stays as it is. Its start is `head`, the rest repeats `body`.
plddb::programming_files::Source Endless(const std::string& head, const std::string& body, std::uint64_t size) {
  return [=, at = std::uint64_t{0}](char* buffer, std::size_t wanted) mutable {
    std::size_t count = 0;
    for (; count < wanted && at < size; ++count, ++at) {
      buffer[count] = at < head.size() ? head.begin()[at] : body.begin()[(at - head.size()) % body.size()];
    }
    return count;
  };
}

TEST(HostileFiles, OfManyBytesAreReadInPieces) {
  constexpr std::uint64_t size = 1 << 20;
  const struct {
    const char* what;
    std::string head;
    std::string body;
    Names devices;
  } cases[] = {
      {"a field without end", "\x02QF46656*N DEVICE XC9572XL-10-VQ44*L0 ", "01", {"XC9572XL"}},
      {"a note without end", "\x02QF46656*N DEVICE XC9572XL-10-VQ44*N ", "x", {"XC9572XL"}},
      {"digits without end", "SIR 8 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);SDR 9999999 TDI (", "0a", {"XC9572XL"}},
      {"a word without end", "SIR 8 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);", "a", {"XC9572XL"}},
      {"a comment without end", "SIR 8 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);!", "a", {"XC9572XL"}},
      {"words without end", "SIR 8 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);", "a ", {"XC9572XL"}},
      {"scans without end",
       "SIR 8 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);SIR 8 TDI(ed);",
       "SDR 32 TDI(0) TDO(09602093);\n",
       {"XC9572XL"}},
      {"a STAPL statement without end", "ACTION P = Q; NOTE \"DEVICE\" \"MPF300T\"; DATA ", "x", {"MPF300"}},
      {"a STAPL text without end", "ACTION P = Q; NOTE \"DEVICE\" \"MPF300T\"; NOTE \"", "x", {"MPF300"}},
      {"a line without end", GowinHeader("GW1NR-9", "C", ""), "1", {"GW1NR-9C"}},
      {"records without end",
       std::string("POF\0", 4) + std::string(8, '\0') + PofRecord(2, "EPM240T100C5"),
       PofRecord(3, ""),
       {"EPM240"}},
      {"a .bit with more than it says", Bit("7a35tcpg236", WideStream(0x0362D093)), std::string(7, '\0'), {"XC7A35T"}},
      {"comments of names without end", "TRST OFF;\n//Position 1: xc9572xl\n", "//Position 2: x\n", {"XC9572XL"}},
      {"hex records that are none", ":020000040000FA\n", ":10000\n", {}},
      {"zeros", "", std::string(1, '\0'), {}},
  };
  for (const auto& c : cases) {
    const File file = KnownReader().Read(Endless(c.head, c.body, size));
    EXPECT_EQ(NamesOf(KnownReader().Judge(file).devices), c.devices) << c.what;
    EXPECT_LE(file.faults.size(), 100U) << c.what;
    EXPECT_LE(file.statements.size(), 100U) << c.what;
  }
}

TEST(HostileFiles, LengthsBeyondTheFileAskForNoMemory) {
  const std::string huge = BigEndian(0xFFFFFFFF, 4);
  std::string bit = Bit("7a35tcpg236", WideStream(0x0362D093));
  bit.replace(bit.find(WideStream(0x0362D093)) - 4, 4, huge);
  const struct {
    const char* what;
    std::string bytes;
    Names devices;
  } cases[] = {
      {"stream", bit, {"XC7A35T"}},
      {"record",
       std::string("POF\0", 4) + std::string(8, '\0') + LittleEndian(2, 2) + LittleEndian(0xFFFFFFFF, 4) + "EPM240T100C5",
       {"EPM240"}},
      {"register",
       Xsvf(XsvfIr(8, 0xFE) + XsvfCheck(32, BigEndian(0xF9604093, 4), BigEndian(0x0FFFFFFF, 4)) + "\x08" + huge),
       {"XC9572XL"}},
      {"register in reach",
       Xsvf(XsvfIr(8, 0xFE) + XsvfCheck(32, BigEndian(0xF9604093, 4), BigEndian(0x0FFFFFFF, 4)) + "\x08\x0F\xFF\xFF\xFF\x09"),
       {"XC9572XL"}},
      {"scan",
       "SIR 8 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);SDR 4294967295 TDI (00) TDO (00) MASK (00);",
       {"XC9572XL"}},
      {"instruction", "SIR 4294967295 TDI (fe);SDR 33 TDI(0)TDO(f9604093)MASK(0fffffff);", {}},
      {"instruction, single", "SIR 4294967295 TDI (fe);SDR 32 TDI(0)TDO(f9604093)MASK(0fffffff);", {"XC9572XL"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.what;
    ExpectSound(c.bytes);
  }
}

}  // namespace
