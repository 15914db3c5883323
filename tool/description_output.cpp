#include "description_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "Descriptions.h"
#include "command.h"
#include "databases.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

/// A new file beside `path` that is removed again unless it takes the place of `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path) : path_(path), name_(path + ".new-" + std::to_string(getpid())) {
    struct stat old = {};
    const bool replaces = stat(path.c_str(), &old) == 0;
    descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? old.st_mode & 0777 : 0666);
    if (descriptor_ < 0) Fail(name_);
    if (replaces) static_cast<void>(fchmod(descriptor_, old.st_mode & 07777));  // where the file system has such modes
  }

  ~FileBeside() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!name_.empty()) unlink(name_.c_str());
  }

  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void Write(const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
      const ssize_t count = write(descriptor_, text.data() + done, text.size() - done);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) Fail(name_);
      done += static_cast<std::size_t>(count);
    }
  }

  void TakePlace() {
    if (fsync(descriptor_) != 0 || close(std::exchange(descriptor_, -1)) != 0) Fail(name_);
    if (rename(name_.c_str(), path_.c_str()) != 0) Fail(path_);
    name_.clear();
  }

 private:
  [[noreturn]] static void Fail(const std::string& file) {
    throw Failure("plddb: error: cannot write " + file + ": " + std::strerror(errno));
  }

  const std::string path_;
  std::string name_;
  int descriptor_ = -1;
};

/// Where a device stands, so that two of one name can be told apart: "XC9572XL (XC9500XL, device 2 of family 24)".
std::string Called(const DeviceList& database, const DeviceInfo& device) {
  const FamilyList& family = *device.GetFamilyObject();
  int number = 0;
  while (database.GetFamily(number) != &family) ++number;
  int position = 0;
  while (family.GetDevice(position) != &device) ++position;
  return DeviceName(device) + " (" + FamilyName(device) + ", device " + std::to_string(position + 1) + " of family " +
         std::to_string(number + 1) + ")";
}

/// A warning when `found`, what a lookup answers for something that `device` has, is another device.
std::string Hidden(const DeviceList& database, const DeviceInfo& device, const std::string& what, const DeviceInfo* found) {
  if (found == &device || found == nullptr) return "";
  return "plddb: warning: " + Called(database, device) + " is not found by its " + what + ": " + Called(database, *found) +
         " answers\n";
}

std::string HiddenDevice(const DeviceList& database, const DeviceInfo& device) {
  const unsigned int id = device.GetjtagDeviceID();
  const char* const codeName = device.GetCodeName();
  return Hidden(database, device, "IDCODE " + IdText(id), database.GetDeviceWithCommAndID("JTAG", id)) +
         Hidden(database, device, "name", database.GetDeviceWithName(device.GetName())) +
         Hidden(database, device, "code name " + TextOrDash(codeName), database.GetDeviceWithCodeName(codeName));
}

/// A warning when a family is not the one that answers by its name.
std::string HiddenFamily(const DeviceList& database, const FamilyList& family) {
  const char* const name = family.GetName();
  const FamilyList* const found = database.GetFamily(name);
  if (name == nullptr || found == &family) return "";
  const bool isRepeated = found->GetName() != nullptr && std::strcmp(found->GetName(), name) == 0;
  return "plddb: warning: family " + Printable(name) +
         (isRepeated ? " is there more than once; only the first answers by its name\n"
                     : " is not found by its name: family " + TextOrDash(found->GetName()) + " has it as its alias name\n");
}

/// Where to write for `path`: a link is followed, so that it stays one.
std::string Target(const std::string& path) {
  std::error_code unknown;
  const fs::path target = fs::canonical(path, unknown);
  return unknown ? path : target.string();
}

}  // namespace

void WriteDatabase(const DeviceList& database, const std::string& path) {
  WriteDescriptionText(plddb::WriteDescriptions(database), path);
}

void WriteDescriptionText(const std::string& text, const std::string& path) {
  if (path.empty()) return WriteOutput(text);
  const std::string target = Target(path);
  std::error_code unknown;
  const fs::file_type kind = fs::status(target, unknown).type();
  if (kind != fs::file_type::regular && kind != fs::file_type::not_found) {
    throw Failure("plddb: error: cannot write " + path + ": it is not a regular file");
  }
  FileBeside file(target);
  file.Write(text);
  file.TakePlace();
}

void ReportHidden(const DeviceList& database) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) WriteMessage(HiddenFamily(database, *family));
  ForEachDevice(database, [&](const DeviceInfo& device) { WriteMessage(HiddenDevice(database, device)); });
}

}  // namespace tool
