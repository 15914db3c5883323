#include "databases.h"

#include <utility>

#include "command.h"
#include "console.h"
#include "progress.h"
#include "standard_streams.h"

namespace tool {
namespace {

/// Standard input gives its text once; when it is named again it is empty, which is a fault of that file.
plddb::FileText TextOf(const std::string& path) {
  if (path == kStandardStream) return {ReadInput(), ""};
  return plddb::ReadDescriptionFile(path);
}

/// Also keeps the outline and the text of the file, where they are wanted.
plddb::LoadResult LoadFile(const std::string& path, Database& database, Outlines outlines) {
  plddb::FileText read = TextOf(path);
  if (!read.failure.empty()) return {nullptr, {{path, 1, 1, "cannot read the file: " + read.failure}}};
  if (outlines == Outlines::kNo) return plddb::ParseDescriptions(read.text, path);
  database.text = std::move(read.text);
  return plddb::ParseDescriptions(database.text, path, &database.outline);
}

const std::vector<Database>& Load(const std::vector<DataFile>& files, Outlines outlines) {
  static auto& databases = *new std::vector<Database>();
  databases.clear();
  std::string faults;
  Progress progress(files.size(), IsTerminal(kMessages) ? WriteProgress : nullptr);
  for (const DataFile& file : files) {
    progress.Next(file.path);
    Database& database = databases.emplace_back();
    plddb::LoadResult loaded = LoadFile(file.path, database, outlines);
    for (const plddb::Fault& fault : loaded.faults) faults += (faults.empty() ? "" : "\n") + plddb::ToString(fault);
    database.file = file.path;
    database.origin = file.origin;
    database.devices = std::move(loaded.database);
  }
  if (!faults.empty()) throw Failure(faults);
  return databases;
}

}  // namespace

const std::vector<Database>& LoadDatabases(const std::vector<std::string>& named, Outlines outlines) {
  return Load(DataFiles(named), outlines);
}

const std::vector<Database>& LoadFiles(const std::vector<std::string>& paths, Outlines outlines) {
  std::vector<DataFile> files;
  for (std::string& file : DescriptionFiles(paths)) files.push_back({std::move(file), Origin::kNamed});
  return Load(files, outlines);
}

std::vector<std::string_view> Makers(const std::vector<Database>& databases) {
  std::vector<std::string_view> makers;
  for (const Database& database : databases) {
    for (int f = 0; const FamilyList* const family = database.devices->GetFamily(f); ++f) {
      for (int d = 0; const DeviceInfo* const device = family->GetDevice(d); ++d) {
        if (device->GetVendor() != nullptr) makers.emplace_back(device->GetVendor());
      }
    }
  }
  return makers;
}

}  // namespace tool
