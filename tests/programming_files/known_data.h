#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "Descriptions.h"
#include "ProgrammingFile.h"

namespace known_data {

using plddb::programming_files::File;
using plddb::programming_files::Kind;
using plddb::programming_files::Reader;
using plddb::programming_files::Statement;
using plddb::programming_files::Verdict;

using Names = std::vector<std::string>;
using Ids = std::vector<std::uint32_t>;

/// The descriptions that come with the library, in the order in which the tool loads them.
inline const std::vector<const DeviceList*>& Databases() {
  static const std::vector<const DeviceList*> databases = [] {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(PLDDB_DATA_DIR)) {
      if (entry.path().extension() == ".xml") files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    static std::vector<DeviceListOwner> owners;
    std::vector<const DeviceList*> loaded;
    for (const std::string& file : files) {
      owners.push_back(plddb::LoadDescriptions(file).database);
      loaded.push_back(owners.back().get());
    }
    return loaded;
  }();
  return databases;
}

inline const Reader& KnownReader() {
  static const Reader reader(Databases());
  return reader;
}

inline File Read(std::string_view bytes) { return KnownReader().Read(bytes); }

inline std::string FormatOf(const File& file) { return ToText(file.format); }

inline Names NamesOf(const std::vector<const DeviceInfo*>& devices) {
  Names names;
  for (const DeviceInfo* const device : devices) names.emplace_back(device->GetName());
  return names;
}

/// The devices that the file with these bytes can be for.
inline Names DevicesFor(std::string_view bytes) { return NamesOf(KnownReader().Judge(Read(bytes)).devices); }

inline bool IsKnown(std::string_view bytes) { return KnownReader().Judge(Read(bytes)).isKnown; }

/// The statements of a kind, as "TEXT VALUE/MASK" for ids and as their text for others.
inline Names Statements(const File& file, Kind kind) {
  Names texts;
  for (const Statement& statement : file.statements) {
    if (statement.kind != kind) continue;
    char id[32];
    std::snprintf(id, sizeof id, "%08X/%08X", static_cast<unsigned int>(statement.value),
                  static_cast<unsigned int>(statement.mask));
    texts.push_back(kind == Kind::kId ? id : statement.text);
  }
  return texts;
}

/// A chain of these ids, nearest TDO first; 0 is a position without an id.
inline plddb::chain::Chain ChainOf(const Ids& ids) {
  plddb::chain::Scan scan;
  for (const std::uint32_t id : ids) {
    plddb::chain::ScannedTap tap;
    if (id != 0) tap.id = id;
    scan.taps.push_back(tap);
  }
  return plddb::chain::Identify(Databases(), "JTAG", scan);
}

inline Verdict JudgeOn(std::string_view bytes, const Ids& ids) { return KnownReader().Judge(Read(bytes), ChainOf(ids)); }

/// "fits 0", "fits-several 0 2", "fits-none".
inline std::string FitOn(std::string_view bytes, const Ids& ids) {
  const Verdict verdict = JudgeOn(bytes, ids);
  std::string text = ToText(verdict.fit);
  for (const std::size_t position : verdict.positions) text += " " + std::to_string(position);
  return text;
}

inline std::string AllReasons(const Verdict& verdict) {
  std::string text;
  for (const std::string& reason : verdict.reasons) text += reason + "\n";
  return text;
}

}  // namespace known_data
