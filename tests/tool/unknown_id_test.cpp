// What plddb identify prints about ids that no device answers to.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "run_tool.h"

namespace {

using Json = nlohmann::json;

const std::string kNeighbours = PLDDB_TEST_DIR "/tool/data/neighbours.xml";

Json Unknown(const std::string& id, const std::vector<std::string>& more = {}) {
  std::vector<std::string> arguments = {"identify", "--json", id};
  arguments.insert(arguments.end(), more.begin(), more.end());
  const Json chain = Json::parse(RunTool(arguments).out, nullptr, false);
  return chain.is_array() ? chain[0]["unknown"] : Json();
}

TEST(UnknownId, IsSplitIntoItsFields) {
  const struct {
    const char* id;
    const char* version;
    const char* part;
    const char* field;
    int bank;
    const char* code;
  } cases[] = {
      {"0x4BAFF477", "0x4", "0xBAFF", "0x23B", 4, "0x3B"},  {"0xF0000001", "0xF", "0x0000", "0x000", 0, "0x00"},
      {"0x0FFFF001", "0x0", "0xFFFF", "0x000", 0, "0x00"},  {"0x00000FFF", "0x0", "0x0000", "0x7FF", 15, "0x7F"},
      {"0x00000F01", "0x0", "0x0000", "0x780", 15, "0x00"}, {"0x000000FF", "0x0", "0x0000", "0x07F", 0, "0x7F"},
      {"0x12345677", "0x1", "0x2345", "0x33B", 6, "0x3B"},
  };
  for (const auto& c : cases) {
    const Json unknown = Unknown(c.id);
    EXPECT_EQ(unknown["kind"], "idcode") << "row: " << c.id;
    EXPECT_EQ(unknown["version"], c.version) << "row: " << c.id;
    EXPECT_EQ(unknown["part"], c.part) << "row: " << c.id;
    EXPECT_EQ(unknown["manufacturer"]["field"], c.field) << "row: " << c.id;
    EXPECT_EQ(unknown["manufacturer"]["bank"], c.bank) << "row: " << c.id;
    EXPECT_EQ(unknown["manufacturer"]["code"], c.code) << "row: " << c.id;
  }
}

TEST(UnknownId, IsOfTheVendorOfADeviceWithTheSameManufacturer) {
  const struct {
    const char* id;
    std::vector<std::string> more;
    Json vendor;
  } cases[] = {
      {"0x0FFFF093", {}, "Xilinx"},
      {"0x0FFFF095", {}, nullptr},
      {"0x0FFFF193", {}, nullptr},                             // the same code in another bank
      {"0x0FFFF157", {"--db", kNeighbours}, "Up & \"Down\""},  // the first that has a vendor
      {"0x0FFFF057", {"--db", kNeighbours}, nullptr},          // an ISP identifier has no manufacturer
  };
  for (const auto& c : cases) EXPECT_EQ(Unknown(c.id, c.more)["manufacturer"]["vendor"], c.vendor) << "row: " << c.id;
}

TEST(UnknownId, IsRecognisedWhenItIsNoIdcode) {
  const struct {
    const char* id;
    const char* comm;
    const char* kind;
    const char* words;
  } cases[] = {
      {"0x00000000", "JTAG", "stuck-at-0", "TDO is stuck at 0"}, {"0xFFFFFFFF", "JTAG", "stuck-at-1", "nothing drives TDO"},
      {"0x59604192", "JTAG", "bypass-bit", "not an IDCODE"},     {"0x80000000", "JTAG", "bypass-bit", "bit 0 is 0"},
      {"0xFFFFFFFE", "JTAG", "bypass-bit", "bit 0 is 0"},        {"0x00000000", "ISP", "stuck-at-0", "TDO is stuck at 0"},
      {"0x00000141", "ISP", "isp-identifier", "no fields"},      {"0xFFFFFFFF", "DUAL", "stuck-at-1", "nothing drives TDO"},
  };
  for (const auto& c : cases) {
    const Json unknown = Unknown(c.id, {"--comm", c.comm});
    EXPECT_EQ(unknown["kind"], c.kind) << "row: " << c.id;
    EXPECT_NE(unknown["meaning"].get<std::string>().find(c.words), std::string::npos) << "row: " << c.id;
    EXPECT_EQ(unknown.size(), 3u) << "row: " << c.id;  // no fields, no stub
    const ToolRun text = RunTool({"identify", "--comm", c.comm, c.id});
    EXPECT_NE(text.out.find(c.words), std::string::npos) << "row: " << c.id;
    EXPECT_EQ(text.exitCode, 1) << "row: " << c.id;
  }
}

TEST(UnknownId, HasUpToFiveNearestDevicesOtherVersionsFirst) {
  const Json nearest = Unknown("0x11234157", {"--db", kNeighbours})["nearest"];
  std::vector<std::string> lines;
  for (const Json& near : nearest)
    lines.push_back(near["name"].get<std::string>() + ": " + near["difference"].get<std::string>());
  const std::vector<std::string> expected = {"VERSION2: other version", "VERSION3: other version",
                                             "BIT14: bit 14 differs: another part of the same maker?", "BIT1: bit 1 differs",
                                             "BIT27: bit 27 differs: another part of the same maker?"};
  EXPECT_EQ(lines, expected);
  EXPECT_EQ(nearest[0]["id"], "0x21234157");
  EXPECT_EQ(nearest[0]["file"], kNeighbours);
}

TEST(UnknownId, IsExplainedInTheText) {
  const ToolRun run = RunTool({"identify", "--db", kNeighbours, "0x41237155", "--ir", "0=6"});
  EXPECT_EQ(run.out,
            "TAP  id          device   family  IR  IDCODE  BYPASS  packages\n"
            "0    0x41237155  unknown  -       6   -       -       -\n"
            "\n"
            "IR length of the chain: 6 bits\n"
            "\n"
            "Unknown ids:\n"
            "  position 0: 0x41237155\n"
            "    version 0x4, part 0x1237, manufacturer 0x0AA (bank 1, code 0x2A): Hagiwara\n"
            "      Solutions Co Ltd (or Liveseek: bank 17 reads as 1)\n"
            "    nearest devices:\n"
            "      TWOBITS  Near  0x01237157  bit 1 differs: a wiring fault?\n"
            "    to describe it, fill in each ? and put this into a Family:\n"
            "    <Device Name=\"?\" CodeName=\"?\" Vendor=\"?\" Comm=\"JTAG\"\n"
            "            jtagDeviceID=\"0x01237155\" DeviceIDScanMask=\"0x0FFFFFFF\"\n"
            "            IDLength=\"32\" IRLength=\"6\" BypassLength=\"1\"/>\n");
  EXPECT_EQ(run.exitCode, 1);
}

/// `stub` with each blank filled in: "7" is right for names and lengths alike.
std::string Filled(std::string stub) {
  for (std::size_t at = 0; (at = stub.find("\"?\"", at)) != stub.npos;) stub.replace(at + 1, 1, "7");
  return stub;
}

TEST(DescriptionStub, LoadsOnceItsBlanksAreFilledAndIsThenFound) {
  const struct {
    std::string id;
    std::vector<std::string> more;
    std::string vendor;
    int irLength;
  } cases[] = {
      {"0x4BAFF477", {}, "ARM", 7},
      {"0x4BAFF477", {"--ir", "0=4"}, "ARM", 4},
      {"0x0FFFF093", {}, "Xilinx", 7},
      {"0xFFFFF157", {"--db", kNeighbours, "--ir", "0=65535"}, "Up & \"Down\"", 65535},
  };
  for (const auto& c : cases) {
    const std::string stub = Unknown(c.id, c.more)["stub"];
    const auto load = [](const std::string& device) {
      return plddb::ParseDescriptions("<DeviceDatabase><Family Name=\"F\">" + device + "</Family></DeviceDatabase>", "stub");
    };
    const plddb::LoadResult loaded = load(Filled(stub));
    ASSERT_TRUE(loaded.database) << "row: " << stub << ToString(loaded.faults[0]);
    const unsigned int id = static_cast<unsigned int>(std::stoul(c.id, nullptr, 16));
    const DeviceInfo* const device = loaded.database->GetDeviceWithCommAndID("JTAG", id);
    ASSERT_NE(device, nullptr) << "row: " << stub;
    EXPECT_STREQ(device->GetVendor(), c.vendor.c_str()) << "row: " << stub;
    EXPECT_EQ(device->GetIRLength(), c.irLength) << "row: " << stub;
    EXPECT_EQ(device->GetjtagDeviceID() & ~device->GetDeviceIDScanMask(), 0u) << "row: " << stub;
    if (c.irLength == 7) {
      EXPECT_FALSE(load(stub).database) << "row: a forgotten IR length " << stub;
    }
  }
}

}  // namespace
