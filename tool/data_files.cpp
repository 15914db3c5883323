#include "data_files.h"

#include <utility>

#include "command.h"
#include "device_text.h"

namespace tool {
namespace {

std::vector<DataFile> FilesOrFailure(plddb::DataFileList list) {
  std::string faults;
  for (const plddb::Fault& fault : list.faults) faults += (faults.empty() ? "" : "\n") + plddb::ToString(fault);
  if (!faults.empty()) throw Failure(faults);
  return std::move(list.files);
}

}  // namespace

const char* NameOf(Origin origin) {
  constexpr const char* names[] = {"command line", "PLDDB_PATH", "user", "shipped"};
  return names[static_cast<int>(origin)];
}

std::vector<std::string> DescriptionFiles(const std::vector<std::string>& paths) {
  std::vector<std::string> files;
  for (DataFile& file : FilesOrFailure(plddb::NamedFiles(paths))) files.push_back(std::move(file.path));
  return files;
}

std::vector<DataFile> DataFiles(const std::vector<std::string>& named) {
  std::vector<std::string> first;
  std::vector<std::string> instead;
  for (const std::string& path : named) {
    if (path.empty() || path == "+") throw WrongUsage("--db: the name of a file or folder is missing");
    path.front() == '+' ? first.push_back(path.substr(1)) : instead.push_back(path);
  }
  std::vector<std::string> all = first;
  all.insert(all.end(), instead.begin(), instead.end());
  std::vector<DataFile> files = FilesOrFailure(instead.empty() ? plddb::DataFiles(first) : plddb::NamedFiles(all));
  if (files.empty()) {
    throw Failure("plddb: error: no device descriptions in " + Printable(plddb::DataFolder()) + "; name a file with --db");
  }
  return files;
}

}  // namespace tool
