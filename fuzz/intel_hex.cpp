// Intel HEX images: whatever the bytes are, statements and faults are few and lead to places in the file.

#include "fuzz/programming_file.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return fuzz::FuzzReader(plddb::programming_files::ReadIntelHex, data, size);
}
