#pragma once

#include <string>
#include <vector>

/// The rules of the lookups written out literally: with the work buffers that they are stated in, character by character. Slow
/// on purpose, and independent of the library, which has to give the same answers. The benchmarks measure lookups made of them.
namespace reference {

/// Compares carried-over texts: a null text leaves the last one in the work buffer. No text may be longer than the buffers.
class WorkBuffer {
 public:
  explicit WorkBuffer(const char* wanted) : wanted_(wanted) {}

  /// Whether the device with this text, the next one visited, has the wanted one.
  bool Matches(const char* text);

 private:
  const char* wanted_;
  char own_[1024] = "";
  char argument_[1024] = "";
};

/// A device as seen by the lookups that compare a carried-over text, and also a key exactly.
struct CarriedDevice {
  const char* text;
  const char* key;
};

/// The position of the first device under the carried-over text `text` whose key is `key`; -1 when there is none.
int FirstByCarriedText(const std::vector<CarriedDevice>& devices, const char* key, const char* text);

/// Whether an identifier is accepted under a scan mask.
bool AcceptsIdentifier(const char* comm, unsigned int mask, unsigned int isp, unsigned int jtag, unsigned int id);

/// Whether an identifier is accepted without a mask.
bool AcceptsWholeIdentifier(const char* comm, unsigned int isp, unsigned int jtag, unsigned int id);

/// The text that is compared for a full name.
std::string NormalFullName(const std::string& fullName);

/// Whether `entityName` is the entity name of a package with this backup ordering number (null for none).
bool IsEntityName(const char* backupPON, const char* entityName);

}  // namespace reference
