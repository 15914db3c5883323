#include "known_data.h"
#include "samples.h"
#include "tests/support/small_stack.h"

namespace {

using namespace known_data;
using namespace samples;

TEST(Reading, NeedsLittleStack) {
  const Reader& reader = KnownReader();
  for (const std::string& bytes :
       {XilinxJedec("XC9572XL-10-VQ44", "46656"), Bit("7a35tcpg236", WideStream(0x0362D093)), Svf("HDR 1 TDI (0);\n")}) {
    support::RunWithSmallStack([&] {
      const File file = reader.Read(bytes);
      EXPECT_NE(file.format, plddb::programming_files::Format::kUnknown) << bytes.substr(0, 40);
    });
  }
}

}  // namespace
