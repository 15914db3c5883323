#pragma once

#include <cstdint>
#include <optional>

#include "input.h"

namespace plddb::programming_files {

/// The result of FindIdWrite.
struct StreamId {
  std::optional<std::uint32_t> id = {};
  std::uint64_t offset = 0;  ///< Of the packet that writes it.
  bool hasSync = false;      ///< The stream starts near the start of the file, whether or not an id follows.
};

/// Searches the first `limit` bytes of `input` for a configuration stream, in any bit and byte order, and in that for the first
/// write of the IDCODE register.
StreamId FindIdWrite(Input& input, std::uint64_t limit);

}  // namespace plddb::programming_files
