#include "description_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "Descriptions.h"
#include "command.h"
#include "data_files.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

/// A new file next to `path`, which is removed again unless it replaces `path`.
class FileBeside {
 public:
  explicit FileBeside(const std::string& path) : path_(path), name_(path + ".new-" + std::to_string(getpid())) {
    struct stat old = {};
    const bool replaces = stat(path.c_str(), &old) == 0;
    descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, replaces ? old.st_mode & 0777 : 0666);
    if (descriptor_ < 0) Fail(name_);
    if (replaces) static_cast<void>(fchmod(descriptor_, old.st_mode & 07777));  // if the file system has such modes
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
    throw Failure("plddb: error: cannot write " + Printable(file) + ": " + std::strerror(errno));
  }

  const std::string path_;
  std::string name_;
  int descriptor_ = -1;
};

/// A device, and its place in the written file.
struct Placed {
  DeviceInfo* device;
  int family;  // 1-based, as is the next
  int position;
};

/// Distinguishes two devices of one name: "XC9572XL (XC9500XL, device 2 of family 24)".
std::string NameWithPlace(const Placed& placed) {
  return DeviceName(*placed.device) + " (" + FamilyName(*placed.device) + ", device " + std::to_string(placed.position) +
         " of family " + std::to_string(placed.family) + ")";
}

/// A warning if `found`, the result of a lookup for a key of `device`, is another device.
std::string ShadowedDevice(const Placed& device, const std::string& what, const Placed* found) {
  if (found == nullptr || found->device == device.device) return "";
  return "plddb: warning: " + NameWithPlace(device) + " is not found by its " + what + ": " + NameWithPlace(*found) +
         " answers\n";
}

/// The first device of each name, ignoring the case of ASCII letters.
class FirstByText {
 public:
  void Add(const char* text, const Placed& placed) {
    if (text != nullptr) firsts_.try_emplace(ToKey(text), &placed);
  }

  /// Null for a null text.
  const Placed* Find(const char* text) const {
    const auto first = text == nullptr ? firsts_.end() : firsts_.find(ToKey(text));
    return first == firsts_.end() ? nullptr : first->second;
  }

 private:
  static std::string ToKey(std::string text) {
    for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
  }

  std::unordered_map<std::string, const Placed*> firsts_;
};

/// The first device that answers to an IDCODE. Databases have few masks: each is asked for every device.
class FirstById {
 public:
  void Add(const Placed& placed) {
    const unsigned int id = placed.device->GetjtagDeviceID();
    const unsigned int mask = placed.device->GetDeviceIDScanMask();
    if (id != 0 && mask != 0) firsts_[mask].try_emplace(id & mask, &placed);
  }

  const Placed* Find(unsigned int id) const {
    const Placed* found = nullptr;
    if (id == 0) return found;
    for (const auto& [mask, firsts] : firsts_) {
      const auto first = firsts.find(id & mask);
      if (first != firsts.end() && (found == nullptr || first->second < found)) found = first->second;
    }
    return found;
  }

 private:
  std::unordered_map<unsigned int, std::unordered_map<unsigned int, const Placed*>> firsts_;  // by mask, then by id
};

std::vector<FamilyList*> FamiliesOf(const Sources& sources) {
  std::vector<FamilyList*> families;
  for (const plddb::Source& source : sources) {
    for (int i = 0; FamilyList* const family = source.database->GetFamily(i); ++i) families.push_back(family);
  }
  return families;
}

/// In the order of the lookups.
std::vector<Placed> DevicesOf(const std::vector<FamilyList*>& families) {
  std::vector<Placed> devices;
  for (std::size_t f = 0; f < families.size(); ++f) {
    for (int d = 0; DeviceInfo* const device = families[f]->GetDevice(d); ++d) {
      devices.push_back({device, static_cast<int>(f) + 1, d + 1});
    }
  }
  return devices;
}

void ReportShadowedDevices(const std::vector<Placed>& devices) {
  FirstById ids;
  FirstByText names;
  FirstByText codeNames;
  for (const Placed& placed : devices) {
    ids.Add(placed);
    names.Add(placed.device->GetName(), placed);
    codeNames.Add(placed.device->GetCodeName(), placed);
  }
  for (const Placed& placed : devices) {
    const unsigned int id = placed.device->GetjtagDeviceID();
    const char* const codeName = placed.device->GetCodeName();
    WriteMessage(ShadowedDevice(placed, "IDCODE " + IdText(id), ids.Find(id)) +
                 ShadowedDevice(placed, "name", names.Find(placed.device->GetName())) +
                 ShadowedDevice(placed, "code name " + TextOrDash(codeName), codeNames.Find(codeName)));
  }
}

/// A warning that a family is not found by its name, since `found` is.
std::string ShadowedFamily(const char* name, const FamilyList& found) {
  const bool isRepeated = found.GetName() != nullptr && std::strcmp(found.GetName(), name) == 0;
  return "plddb: warning: family " + Printable(name) +
         (isRepeated ? " exists more than once; only the first is found by its name\n"
                     : " is not found by its name: family " + TextOrDash(found.GetName()) + " has it as its alias name\n");
}

/// A family is found by its name and by its alias name.
void ReportShadowedFamilies(const std::vector<FamilyList*>& families) {
  std::unordered_map<std::string_view, const FamilyList*> firsts;
  for (const FamilyList* const family : families) {
    for (const char* const name : {family->GetName(), family->GetAliasName()}) {
      if (name != nullptr) firsts.try_emplace(name, family);
    }
    const char* const name = family->GetName();
    if (name != nullptr && firsts[name] != family) WriteMessage(ShadowedFamily(name, *firsts[name]));
  }
}

/// The path to write to for `path`: links are followed, even to a file that does not exist yet, so that they stay links.
std::string Target(const std::string& path) {
  constexpr int kMostLinks = 40;  // as many as the system follows
  fs::path target = path;
  std::error_code unknown;
  for (int i = 0; i < kMostLinks; ++i) {
    if (!fs::is_symlink(fs::symlink_status(target, unknown))) return target.string();
    target = target.parent_path() / fs::read_symlink(target, unknown);
  }
  throw Failure("plddb: error: cannot write " + Printable(path) + ": its links lead in a circle");
}

/// A text that would not load is never written, for example one with more families than a file may have.
std::string LoadableText(const Sources& sources) {
  std::string text = plddb::WriteDescriptions(sources);
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "");
  if (loaded.faults.empty()) return text;
  throw Failure("plddb: error: nothing is written, since the file would not load: " + loaded.faults.front().text);
}

}  // namespace

void WriteSources(const Sources& sources, const std::string& path) { WriteDescriptionText(LoadableText(sources), path); }

void WriteDescriptionText(const std::string& text, const std::string& path) {
  if (path.empty() || path == kStandardStream) return WriteOutput(text);
  const std::string target = Target(path);
  std::error_code unknown;
  const fs::file_type kind = fs::status(target, unknown).type();
  if (kind == fs::file_type::none) {
    throw Failure("plddb: error: cannot write " + Printable(path) + ": " + unknown.message());
  }
  if (kind != fs::file_type::regular && kind != fs::file_type::not_found) {
    throw Failure("plddb: error: cannot write " + Printable(path) + ": it is not a regular file");
  }
  FileBeside file(target);
  file.Write(text);
  file.TakePlace();
}

void ReportShadowed(const Sources& sources) {
  const std::vector<FamilyList*> families = FamiliesOf(sources);
  ReportShadowedFamilies(families);
  ReportShadowedDevices(DevicesOf(families));
}

}  // namespace tool
