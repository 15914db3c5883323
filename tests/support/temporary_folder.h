#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace support {

/// A new folder that is removed after the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("plddb-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));  // throws if it is not one of the same name that is in the way
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace support
