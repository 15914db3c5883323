#include "chain.h"

namespace tool {

unsigned int AgreeingBits(const DeviceInfo& device, const std::string& comm, unsigned int id) {
  constexpr unsigned int low_byte = 0xFF;
  const unsigned int mask = device.GetDeviceIDScanMask();
  const unsigned int isp = device.GetispDeviceID();
  const unsigned int jtag = device.GetjtagDeviceID();
  const auto agree = [id](unsigned int own, unsigned int bits) { return ((own ^ id) & bits) == 0 ? bits : 0; };
  if (id == 0 || mask == 0) return 0;
  if (comm == "JTAG") return jtag == 0 ? 0 : agree(jtag, mask);
  if (comm == "ISP") return isp == 0 ? 0 : agree(isp, mask);
  if (comm == "DUAL") return agree(jtag, mask) != 0 ? mask : agree(isp, low_byte);
  return 0;
}

ChainPosition Identify(const std::vector<Database>& databases, const std::string& comm, unsigned int id) {
  ChainPosition position = {id, nullptr, {}};
  for (const Database& database : databases) {
    const DeviceInfo* const first = database.devices->GetDeviceWithCommAndID(comm.c_str(), id);
    if (first == nullptr) continue;
    if (position.match == nullptr) position.match = first;
    ForEachDevice(*database.devices, [&](const DeviceInfo& device) {
      if (AgreeingBits(device, comm, id) != 0) position.candidates.push_back({&device, &database});
    });
  }
  return position;
}

}  // namespace tool
