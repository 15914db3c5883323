#include "description_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "Descriptions.h"
#include "command.h"
#include "databases.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {
namespace {

/// A new file beside `path` that is removed again unless it takes the place of `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path) : path_(path), name_(path + ".new-" + std::to_string(getpid())) {
    descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ < 0) Fail();
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
      if (count < 0) Fail();
      done += static_cast<std::size_t>(count);
    }
  }

  void TakePlace() {
    struct stat old = {};
    if (stat(path_.c_str(), &old) == 0 && fchmod(descriptor_, old.st_mode & 07777) != 0) Fail();
    if (fsync(descriptor_) != 0 || close(std::exchange(descriptor_, -1)) != 0) Fail();
    if (rename(name_.c_str(), path_.c_str()) != 0) Fail();
    name_.clear();
  }

 private:
  [[noreturn]] void Fail() const { throw Failure("plddb: error: cannot write " + path_ + ": " + std::strerror(errno)); }

  const std::string path_;
  std::string name_;
  int descriptor_ = -1;
};

std::string Called(const DeviceInfo& device) { return DeviceName(device) + " (" + FamilyName(device) + ")"; }

/// A warning when `found`, what a lookup answers for something that `device` has, is another device.
std::string Hidden(const DeviceInfo& device, const std::string& what, const DeviceInfo* found) {
  if (found == &device || found == nullptr) return "";
  return "plddb: warning: " + Called(device) + " is not found by its " + what + ": " + Called(*found) + " answers\n";
}

std::string HiddenFrom(const DeviceList& database, const DeviceInfo& device) {
  std::string warnings;
  const unsigned int id = device.GetjtagDeviceID();
  warnings += Hidden(device, "IDCODE " + IdText(id), database.GetDeviceWithCommAndID("JTAG", id));
  if (const char* const name = device.GetName()) {
    warnings += Hidden(device, "name", database.GetDeviceWithName(name));
  }
  if (const char* const codeName = device.GetCodeName()) {
    warnings += Hidden(device, "code name " + std::string(codeName), database.GetDeviceWithCodeName(codeName));
  }
  return warnings;
}

}  // namespace

void WriteDatabase(const DeviceList& database, const std::string& path) {
  const std::string text = plddb::WriteDescriptions(database);
  if (path.empty()) return WriteOutput(text);
  FileBeside file(path);
  file.Write(text);
  file.TakePlace();
}

void ReportHidden(const DeviceList& database) {
  for (int i = 0; const FamilyList* const family = database.GetFamily(i); ++i) {
    const char* const name = family->GetName();
    if (name == nullptr || database.GetFamily(name) == family) continue;
    WriteMessage("plddb: warning: family " + std::string(name) +
                 " is there more than once; only the first answers by its name\n");
  }
  ForEachDevice(database, [&](const DeviceInfo& device) { WriteMessage(HiddenFrom(database, device)); });
}

}  // namespace tool
