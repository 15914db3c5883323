#pragma once

#include "ProgrammingFile.h"
#include "known_devices.h"

namespace plddb::programming_files {

struct Reader::Impl {
  KnownDevices known;
};

}  // namespace plddb::programming_files
