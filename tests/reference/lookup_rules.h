#pragma once

#include <string>
#include <vector>

/// The rules of the lookups written out literally: with the work buffers that they are stated in, bit by bit, character by
/// character. Slow on purpose, and independent of the library, which has to give the same answers.
namespace reference {

/// A device as seen by the lookups that compare a carried-over text, and also a key exactly.
struct CarriedDevice {
  const char* text;
  const char* key;
};

/// The position of the first device under the carried-over text `text` whose key is `key`; -1 when there is none.
int FirstByCarriedText(const std::vector<CarriedDevice>& devices, const char* key, const char* text);

/// Whether an identifier is accepted under a scan mask.
bool AcceptsIdentifier(const std::string& comm, unsigned int mask, unsigned int isp, unsigned int jtag, unsigned int id);

/// Whether an identifier is accepted without a mask.
bool AcceptsWholeIdentifier(const std::string& comm, unsigned int isp, unsigned int jtag, unsigned int id);

/// The text that is compared for a full name.
std::string NormalFullName(const std::string& fullName);

/// Whether `entityName` is the entity name of a package with this backup ordering number (null for none).
bool IsEntityName(const char* backupPON, const char* entityName);

}  // namespace reference
