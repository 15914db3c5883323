#pragma once

namespace bench {

/// A question to a database. Each lookup uses the parts that it needs.
struct Question {
  const char* comm;
  unsigned int id;  ///< JTAG identifier.
  unsigned int ispId;
  const char* name;
  const char* codeName;
  const char* vendor;
  const char* packageType;
  const char* jdf;
  const char* pon;
  const char* entityName;
  unsigned int fuseCount;      ///< Of every eighth device, so that names decide.
  unsigned int rareFuseCount;  ///< Of one device in sixteen, in the second half; or of none.
};

}  // namespace bench
