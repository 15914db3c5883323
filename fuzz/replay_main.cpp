// Runs a fuzz target over files, and over all files of folders: the program around a target in builds without a fuzzer.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/input.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesOf(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool Replay(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "cannot read %s\n", path.c_str());
    return false;
  }
  std::fprintf(stderr, "%s\n", path.c_str());  // the last one named is the one that ended the program
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    for (const fs::path& path : FilesOf(arguments[i])) {
      if (!Replay(path)) return 1;
      ++replayed;
    }
  }
  std::fprintf(stderr, "%d inputs replayed\n", replayed);
  return replayed > 0 ? 0 : 1;
}
