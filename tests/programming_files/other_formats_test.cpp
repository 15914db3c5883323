#include <gtest/gtest.h>
#include <zlib.h>

#include "known_data.h"
#include "samples.h"

namespace {

using namespace known_data;
using namespace samples;

// --- STAPL ------------------------------------------------------------------------------------------------------------------

const std::string kAction = "ACTION PROGRAM = DO_PROGRAM;\nPROCEDURE DO_PROGRAM;\nEXIT 0;\nENDPROC;\n";
const std::string kSum = "CRC 1234;\n";

TEST(Stapl, TellsNotesAndComparisons) {
  const struct {
    const char* what;
    std::string bytes;
    Names names;
    Names ids;
    Names packages;
    Names devices;
  } cases[] = {
      {"notes",
       "NOTE \"STAPL_VERSION\" \"JESD71\";\nNOTE \"DEVICE\" \"MPF300T\";\nNOTE \"PACKAGE\" \"MPF300T-fcg1152\";\nNOTE "
       "\"IDCODE\" \"0F8131CF\";\nNOTE \"IDMASK\" \"0FFFFFFF\";\n" +
           kAction + kSum,
       {"MPF300T"},
       {"0F8131CF/0FFFFFFF"},
       {"T", "MPF300T-fcg1152"},
       {"MPF300"}},
      {"an engineering sample has the same id",
       "NOTE \"DEVICE\" \"MPF300TS_ES\"; NOTE \"IDCODE\" \"0F8131CF\"; NOTE \"IDMASK\" \"0FFFFFFF\";" + kAction + kSum,
       {"MPF300TS_ES"},
       {"0F8131CF/0FFFFFFF"},
       {"TS_ES"},
       {"MPF300"}},
      {"no mask",
       "NOTE \"DEVICE\" \"A3P250\"; NOTE \"IDCODE\" \"02A141CF\";" + kAction + kSum,
       {"A3P250"},
       {"02A141CF/FFFFFFFF"},
       {},
       {"A3P250"}},
      {"the standard's example id", "NOTE \"IDCODE\" \"00000001\";\n" + kAction + kSum, {}, {}, {}, {}},
      {"text before the notes",
       "` a comment with \"quotes\" and ;\n' another one\nNOTE \"DEVICE\" \"EPM7128SLC84\";\n" + kAction + kSum,
       {"EPM7128SLC84"},
       {},
       {"LC84"},
       {"EPM7128S"}},
      {"the program compares",
       "NOTE \"CREATOR\" \"X\";\n" + kAction +
           "IRSCAN 8, $0F;\nDRSCAN 32, $00000000, CAPTURE ID[], COMPARE $0F8131CF, $0FFFFFFF, PASS;\n" + kSum,
       {},
       {"0F8131CF/0FFFFFFF"},
       {},
       {"MPF300"}},
      {"the program compares variables",
       kAction +
           "BOOLEAN WANTED[32] = $0F8131CF;\nBOOLEAN M[32] = $0FFFFFFF;\nIRSCAN 8, $0F;\nDRSCAN 32, $00000000, CAPTURE ID[], "
           "COMPARE WANTED[],M[],PASS;\n" +
           kSum,
       {},
       {"0F8131CF/0FFFFFFF"},
       {},
       {"MPF300"}},
      {"a template", "#IF 1\nNOTE \"DEVICE\" \"M2S010\";\n#ENDIF\n" + kAction + kSum, {}, {}, {}, {}},
      {"an undescribed name", "NOTE \"DEVICE\" \"MPF999T\";" + kAction + kSum, {"MPF999T"}, {}, {}, {}},
      {"CR LF", "NOTE \"DEVICE\" \"M2S060TS\";\r\n" + kAction + kSum, {"M2S060TS"}, {}, {"TS"}, {"M2S060"}},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "stapl") << c.what;
    EXPECT_EQ(Statements(file, Kind::kName), c.names) << c.what;
    EXPECT_EQ(Statements(file, Kind::kId), c.ids) << c.what;
    EXPECT_EQ(Statements(file, Kind::kPackage), c.packages) << c.what;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.what;
    EXPECT_TRUE(file.faults.empty()) << c.what;
  }
}

TEST(Stapl, FaultsLeadToTheirLine) {
  const struct {
    std::string bytes;
    std::uint64_t line;
    const char* text;
  } cases[] = {
      {"NOTE \"A\" \"B\";\n" + kAction, 6, "the file ends without its CRC"},
      {"NOTE \"A\" \"B\";\nACTION P = Q;\nPROCEDURE Q;\nEXIT", 4, "the file ends in this statement, before its ';'"},
      {"NOTE \"DEVICE\" \"MPF300T\";\nNOTE \"A\" \"B\";\n", 0, "notes without an ACTION: no STAPL program, or a cut one"},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    if (file.faults.size() != 1) {
      ADD_FAILURE() << c.bytes << file.faults.size();
      continue;
    }
    EXPECT_EQ(file.faults[0].place.line, c.line) << c.bytes;
    EXPECT_EQ(file.faults[0].text, c.text) << c.bytes;
  }
}

// --- Gowin ------------------------------------------------------------------------------------------------------------------

TEST(Gowin, TellsIdAndHeader) {
  const struct {
    const char* what;
    std::string bytes;
    Names ids;
    Names names;
    Names packages;
    Names devices;
  } cases[] = {
      {"version C",
       Gowin(GowinHeader("GW1NR-9", "C", "GW1NR-LV9QN88PC6/I5"), 0x1100481B),
       {"1100481B/0FFFFFFF"},
       {"GW1NR-9, version C"},
       {"GW1NR-LV9QN88PC6/I5"},
       {"GW1NR-9C"}},
      {"no version",
       Gowin(GowinHeader("GW1NR-9", "", "GW1NR-LV9QN88C6/I5"), 0x1100581B),
       {"1100581B/0FFFFFFF"},
       {"GW1NR-9"},
       {"GW1NR-LV9QN88C6/I5"},
       {"GW1NR-9"}},
      {"no Device line",
       Gowin(GowinHeader("", "", "GW1NZ-LV1QN48C6/I5"), 0x0100681B),
       {"0100681B/0FFFFFFF"},
       {},
       {"GW1NZ-LV1QN48C6/I5"},
       {"GW1NZ-1"}},
      {"no header", Gowin("", 0x0900281B), {"0900281B/0FFFFFFF"}, {}, {}, {"GW1N-1"}},
      {"CR LF", Gowin("", 0x0000081B, "\r\n"), {"0000081B/0FFFFFFF"}, {}, {}, {"GW2A-18"}},
      {"without the sum's check", Gowin("", 0x0000081B, "\n", 0x86), {"0000081B/0FFFFFFF"}, {}, {}, {"GW2A-18"}},
      {"the id decides, not the name",
       Gowin(GowinHeader("GW1N-9", "C", "GW1N-LV9LQ144C6/I5"), 0x1100481B),
       {"1100481B/0FFFFFFF"},
       {"GW1N-9, version C"},
       {"GW1N-LV9LQ144C6/I5"},
       {"GW1NR-9C"}},
      {"device and package in one",
       Gowin("//Device-package: GW1NR-9C-QFN88P\n", 0x1100481B),
       {"1100481B/0FFFFFFF"},
       {},
       {"GW1NR-9C-QFN88P"},
       {"GW1NR-9C"}},
      {"an undescribed id", Gowin("", 0x0999981B), {"0999981B/0FFFFFFF"}, {}, {}, {}},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "gowin-fs") << c.what;
    EXPECT_EQ(Statements(file, Kind::kId), c.ids) << c.what;
    EXPECT_EQ(Statements(file, Kind::kCommentName), c.names) << c.what;
    EXPECT_EQ(Statements(file, Kind::kPackage), c.packages) << c.what;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.what;
    EXPECT_TRUE(file.faults.empty()) << c.what;
  }
}

TEST(Gowin, ACutFileIsNamedByItsCommentAndHasAFault) {
  const std::string header = GowinHeader("GW1NR-9", "C", "GW1NR-LV9QN88PC6/I5");
  EXPECT_EQ(DevicesFor(header), Names{"GW1NR-9C"});
  EXPECT_EQ(Read(header).faults.size(), 1U);
}

// --- Altera -----------------------------------------------------------------------------------------------------------------

TEST(Pof, TellsTheDeviceOfRecordTwo) {
  const struct {
    std::string device;
    Names packages;
    Names devices;
  } cases[] = {
      {"EPM7128SLC84-15", {"LC84-15"}, {"EPM7128S"}},
      {std::string("EPM7128AETC100-10\0\0\0", 20), {"TC100-10"}, {"EPM7128AE"}},
      {"EPM7032AELC44-4", {"LC44-4"}, {"EPM7032AE"}},
      {"EPM3064ATC44-10", {"TC44-10"}, {"EPM3064A"}},
      {"EPM240T100C5", {"T100C5"}, {"EPM240"}},
      {"EPM240GT100C5", {"GT100C5"}, {"EPM240"}},
      {"EPM240ZM68C7N", {"M68C7N"}, {"EPM240Z"}},
      {"EPM2210F256C5", {"F256C5"}, {"EPM2210"}},
      {"5M40ZE64C5", {"E64C5"}, {"5M40Z"}},
      {"5M240ZT100C5", {"T100C5"}, {"5M240Z"}},
      {"5M240ZT144C5", {"T144C5"}, {"5M240Z_2"}},
      {"5M1270ZF324C5", {"F324C5"}, {"5M1270Z_2"}},
      {"5M1270ZT144C5", {"T144C5"}, {"5M1270Z"}},
      {"EP4CE6E22C8", {"E22C8"}, {"EP4CE6"}},
      {"EP4CE10E22C8", {"E22C8"}, {"EP4CE10"}},
      {"EP4CE115F29C7", {"F29C7"}, {"EP4CE115"}},
      {"EP4CE15F17C8", {"F17C8"}, {"EP4CE15"}},
      {"EP4CGX30CF23C8", {"CF23C8"}, {"EP4CGX30_2"}},
      {"EP4CGX30BF14C8", {"BF14C8"}, {"EP4CGX30"}},
      {"EP2C5T144C8", {"T144C8"}, {"EP2C5"}},
      {"EP2C50F484C8", {"F484C8"}, {"EP2C50"}},
      {"EP1C12Q240C8", {"Q240C8"}, {"EP1C12"}},
      {"10M16DCU324A7G", {"CU324A7G"}, {"10M16D"}},
      {"10M08SAE144C8GES", {"AE144C8GES"}, {"10M08S"}},
      {"10CL025YU256C8G", {"YU256C8G"}, {"10CL025"}},
      {"5CEBA4F23C7", {"F23C7"}, {"5CEA4"}},
      {"5CSEBA6U23I7", {"U23I7"}, {"5CSEA6"}},
      {"5CSEMA5F31C6", {"F31C6"}, {"5CSEA5"}},
      {"5CGXFC7C7F23C8", {"C7F23C8"}, {"5CGXC7"}},
      {"5CSXFC6D6F31C6", {"D6F31C6"}, {"5CSXC6"}},
      {"5AGXFB3H4F35C4", {"H4F35C4"}, {"5AGXB3"}},
      {"5SGXEA7K2F40C2", {"K2F40C2"}, {"5SGXA7"}},
      {"5SGSMD5K2F40C2", {"K2F40C2"}, {"5SGSD5"}},
      {"EPF10K30EQC208-1", {"QC208-1"}, {"EPF10K30E"}},
      {"EPF10K30RC240-3", {"RC240-3"}, {"EPF10K30"}},
      {"EPC2LC20", {"LC20"}, {"EPC2"}},
      {"EPCS16", {}, {}},
      {"EPM7128ELC84-7", {}, {}},
      {"EP4CE1F17", {}, {}},
      {"XYZ", {}, {}},
      {"", {}, {}},
  };
  for (const auto& c : cases) {
    for (const std::string& magic : {std::string("POF"), std::string("SOF")}) {
      const std::string bytes = Pof(c.device, magic);
      const File file = Read(bytes);
      EXPECT_EQ(FormatOf(file), magic == "POF" ? "pof" : "sof") << c.device;
      EXPECT_EQ(Statements(file, Kind::kPackage), c.packages) << c.device;
      EXPECT_EQ(DevicesFor(bytes), c.devices) << c.device;
      EXPECT_TRUE(file.faults.empty()) << c.device;
    }
  }
}

TEST(Pof, ALengthBeyondTheFileIsAFault) {
  const std::string start = std::string("POF\0", 4) + LittleEndian(1, 4) + LittleEndian(2, 4);
  const std::string bytes = start + PofRecord(2, "EPM240T100C5") + LittleEndian(17, 2) + LittleEndian(0xFFFFFFFF, 4) + "data";
  const File file = Read(bytes);
  EXPECT_EQ(DevicesFor(bytes), Names{"EPM240"});
  EXPECT_EQ(file.faults.size(), 1U);
  EXPECT_EQ(file.faults.empty() ? 0 : file.faults[0].place.offset, start.size() + 18);
}

TEST(Rbf, IsNeverAYes) {
  const std::string bytes = std::string(32, '\xFF') + "\x6A\xF7\xF7" + std::string(1000, '\x12');
  const File file = Read(bytes);
  EXPECT_EQ(FormatOf(file), "rbf");
  EXPECT_FALSE(IsKnown(bytes));
  EXPECT_EQ(FitOn(bytes, {0x020F10DD}), "unknown");
}

// --- Efinix, IEEE 1532 ------------------------------------------------------------------------------------------------------

TEST(Efinix, TellsTheDeviceOfItsText) {
  const struct {
    const char* device;
    Names devices;
    const char* fit;
    std::uint32_t chip;
  } cases[] = {
      {"T8F81", {"T8"}, "fits 0", 0x00000001},           {"T8F81", {"T8"}, "fits-none", 0x00210A79},
      {"T8Q144", {"T8"}, "fits 0", 0x00210A79},          {"T8Q144", {"T8"}, "fits-none", 0x00000001},
      {"T20Q100F3", {"T20"}, "fits 0", 0x00210A79},      {"T20F324", {"T20"}, "fits 0", 0x00240A79},
      {"T120F324", {"T120"}, "fits 0", 0x00220A79},      {"Ti60F225", {"Ti60"}, "fits 0", 0x00660A79},
      {"Ti180J361", {"Ti180"}, "fits-none", 0x00660A79}, {"Ti90J361", {}, "unknown", 0x00660A79},
  };
  for (const auto& c : cases) {
    const std::string bytes = Efinix(c.device);
    EXPECT_EQ(FormatOf(Read(bytes)), "efinix") << c.device;
    EXPECT_EQ(DevicesFor(bytes), c.devices) << c.device;
    EXPECT_EQ(FitOn(bytes, {c.chip}), c.fit) << c.device;
  }
}

TEST(Efinix, ReadsCrLfAndFaultsWhereTheHeaderIsCut) {
  std::string bytes = Efinix("T8F81");
  for (std::size_t at = 0; (at = bytes.find('\n', at)) != bytes.npos; at += 2) bytes.insert(at, "\r");
  EXPECT_EQ(DevicesFor(bytes), Names{"T8"});
  const File cut = Read(Efinix("T8F81").substr(0, 90));
  EXPECT_EQ(FormatOf(cut), "efinix");
  EXPECT_EQ(cut.faults.size(), 1U);
}

TEST(Isc, TellsTheEntity) {
  const struct {
    const char* bytes;
    Names entities;
    Names packages;
    Names devices;
  } cases[] = {
      {"Header\n  Entity xc2c64a_vq44_1532;\n  Data x;\n", {"xc2c64a_vq44"}, {"vq44"}, {"XC2C64A"}},
      {"ISC data\nENTITY XC9572XL_VQ64_1532\n", {"XC9572XL_VQ64"}, {"VQ64"}, {"XC9572XL"}},
      {"# IEEE 1532\nEntity: \"xc2c64a_vq44_1532\"\n", {"xc2c64a_vq44"}, {"vq44"}, {"XC2C64A"}},
      {"ISC\r\nentity name = xc95144xl_tq100_1532\r\n", {"xc95144xl_tq100"}, {"tq100"}, {"XC95144XL"}},
      {"Entity xyz99_1532\n", {"xyz99"}, {}, {}},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), "isc") << c.bytes;
    EXPECT_EQ(Statements(file, Kind::kEntity), c.entities) << c.bytes;
    EXPECT_EQ(Statements(file, Kind::kPackage), c.packages) << c.bytes;
    EXPECT_EQ(DevicesFor(c.bytes), c.devices) << c.bytes;
  }
}

// --- What is none -----------------------------------------------------------------------------------------------------------

TEST(OtherFiles, AreNamedForWhatTheyAre) {
  const struct {
    const char* what;
    std::string bytes;
    const char* format;
    const char* remark;
  } cases[] = {
      {"SignalTap", "<session jtag_chain=\"USB-Blaster [1-1]\" sof_file=\"top.sof\">\n</session>\n", "signaltap",
       "a session of a logic analyser"},
      {"SignalTap with a declaration", "<?xml version=\"1.0\"?>\n<session sof_file=\"\">\n", "signaltap",
       "a session of a logic analyser"},
      {"STEP", "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('x'),'2;1');\n", "step", "a three-dimensional STEP model"},
      {"symbolic link", "../../Release/bridge.xsvf", "symlink", "the text of a symbolic link to ../../Release/bridge.xsvf"},
      {"symbolic link beside", "bridge.xsvf", "symlink", "the text of a symbolic link to bridge.xsvf"},
      {"empty", "", "unknown", "an empty file"},
      {"Git LFS", "version https://git-lfs.github.com/spec/v1\noid sha256:00\nsize 12\n", "unknown",
       "a pointer of Git LFS: the file itself was not fetched"},
      {"MPLAB", "[Header]\r\nMagicCookie={66E99B07}\r\nVersion=1.0\r\n", "unknown", "a project file in INI form"},
      {"web page", "<!DOCTYPE html>\n<html></html>", "unknown", "an HTML page"},
      {"text", "Hello, this is a text.\n", "unknown", "a text that is no programming file"},
      {"XML", "<?xml version=\"1.0\"?>\n<project/>\n", "unknown", "a text that is no programming file"},
      {"BSDL", "entity XC9572XL_VQ44 is\n  generic (PHYSICAL_PIN_MAP : string := \"VQ44\");\n", "unknown",
       "a text that is no programming file"},
      {"JSON", "{\"session\": 1}", "unknown", "a text that is no programming file"},
      {"noise", std::string("\x9A\x01\xFE\x77\x00\x13", 6), "unknown", "no format that is known here"},
      {"zeros", std::string(1000, '\0'), "unknown", "no format that is known here"},
      {"ones", std::string(1000, '\xFF'), "unknown", "no format that is known here"},
      {"another maker's .bit", std::string("\xFF\x00", 2) + "Part: ABC-123\0Date: now", "unknown",
       "no format that is known here"},
  };
  for (const auto& c : cases) {
    const File file = Read(c.bytes);
    EXPECT_EQ(FormatOf(file), c.format) << c.what;
    EXPECT_EQ(file.remark, c.remark) << c.what;
    EXPECT_TRUE(file.statements.empty()) << c.what;
    EXPECT_FALSE(IsKnown(c.bytes)) << c.what;
    EXPECT_EQ(FitOn(c.bytes, {0x59604093}), "unknown") << c.what;
  }
}

// --- gzip -------------------------------------------------------------------------------------------------------------------

std::string Gzip(const std::string& bytes) {
  z_stream stream = {};
  EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string source = bytes;
  std::string packed(deflateBound(&stream, static_cast<uInt>(bytes.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(source.data());
  stream.avail_in = static_cast<uInt>(source.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

TEST(Gzip, IsUnpackedFirst) {
  const std::string bit = Bit("7a35tcpg236", WideStream(0x0362D093) + std::string(300000, '\x12'));
  const File file = Read(Gzip(bit));
  EXPECT_TRUE(file.isCompressed);
  EXPECT_EQ(FormatOf(file), "xilinx-bit");
  EXPECT_TRUE(file.faults.empty());
  EXPECT_EQ(DevicesFor(Gzip(bit)), Names{"XC7A35T"});
  EXPECT_EQ(DevicesFor(Gzip(bit.substr(0, 100)) + Gzip(bit.substr(100))), Names{"XC7A35T"}) << "joined files";
  EXPECT_EQ(FormatOf(Read(Gzip(std::string(32, '\xFF') + "\x6A" + "data"))), "rbf");
}

TEST(Gzip, ACutOrDamagedFileHasAFault) {
  const std::string packed = Gzip(Bit("7a35tcpg236", WideStream(0x0362D093)));
  for (std::size_t size = 2; size < packed.size(); ++size) {
    EXPECT_FALSE(Read(packed.substr(0, size)).faults.empty()) << size;
  }
  std::string damaged = packed;
  damaged[packed.size() - 6] = static_cast<char>(damaged[packed.size() - 6] ^ 1);
  EXPECT_FALSE(Read(damaged).faults.empty());
}

}  // namespace
