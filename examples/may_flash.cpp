// may_flash DESCRIPTIONS FILE ID...: exit code 0 when a programming file fits one position of a chain.

#include <ProgrammingFile.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "Descriptions.h"

bool MayFlash(const DeviceList& devices, std::string_view bytes, const plddb::chain::Scan& scan) {
  namespace pf = plddb::programming_files;
  const pf::Reader reader({&devices});
  const plddb::chain::Chain chain = plddb::chain::Identify({&devices}, "JTAG", scan);
  return reader.Judge(reader.Read(bytes), chain, scan.nearest).fit == pf::Fit::kFits;
}

int main(int count, char** arguments) {
  if (count < 4) return 2;
  const plddb::LoadResult loaded = plddb::LoadDescriptions(arguments[1]);
  std::ifstream file(arguments[2], std::ios::binary);
  if (loaded.database == nullptr || !file) return 2;
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  plddb::chain::Scan scan;
  for (int i = 3; i < count; ++i) scan.taps.push_back({"", plddb::chain::ParseId(arguments[i])});
  const bool mayFlash = MayFlash(*loaded.database, bytes, scan);
  std::puts(mayFlash ? "yes" : "no");
  return mayFlash ? 0 : 1;
}
