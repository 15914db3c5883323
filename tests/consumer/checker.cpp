// Uses plddb-check, prints: 3:73: id-shadowed
#include <Check.h>

#include <cstdio>

int main() {
  const auto findings = plddb::check::CheckTexts(
      {{"text",
        "<DeviceDatabase><Family Name='PLD1200'>\n"
        "  <Device Name='PLD1234A' CodeName='PLD1234A' Comm='JTAG' jtagDeviceID='0x01234057' DeviceIDScanMask='0x0FFFFFFF'/>\n"
        "  <Device Name='PLD1234B' CodeName='PLD1234B' Comm='JTAG' jtagDeviceID='0x01234057' DeviceIDScanMask='0x0FFFFFFF'/>\n"
        "</Family></DeviceDatabase>\n",
        ""}});
  for (const auto& finding : findings) {
    std::printf("%d:%d: %s\n", finding.place.line, finding.place.column, std::string(finding.code).c_str());
  }
}
