#include "progress.h"

#include <utility>

#include "Files.h"
#include "device_text.h"

namespace tool {
namespace {

constexpr std::chrono::seconds kPatience(1);
constexpr std::size_t kMostOfName = 40;  // so that the line fits any terminal: only one line can be erased

}  // namespace

Progress::Progress(std::size_t files, Write write, Now now)
    : files_(files), write_(std::move(write)), now_(std::move(now)), start_(now_()) {}

Progress::~Progress() { Erase(); }

void Progress::Next(const std::string& file) {
  ++file_;
  const std::string name = Printable(plddb::ToName(plddb::ToPath(file).filename()));
  Show("loading " + (name.size() > kMostOfName ? name.substr(0, kMostOfName - 3) + "..." : name) + " (" +
       std::to_string(file_) + " of " + std::to_string(files_) + ")...");
}

void Progress::Show(const std::string& line) {
  if (!write_ || now_() - start_ <= kPatience) return;
  Erase();
  write_(line);
  width_ = line.size();
}

/// With blanks, which every terminal knows.
void Progress::Erase() {
  if (width_ > 0) write_("\r" + std::string(width_, ' ') + "\r");
  width_ = 0;
}

}  // namespace tool
