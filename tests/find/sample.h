#pragma once

#include <stdexcept>
#include <string>

#include "Descriptions.h"
#include "Find.h"

/// \file
/// Databases for the tests, and answers as texts.

/// A database of its description: the content of its root.
inline DeviceListOwner Described(const std::string& families) {
  plddb::LoadResult loaded = plddb::ParseDescriptions("<DeviceDatabase>" + families + "</DeviceDatabase>", "sample.xml");
  if (!loaded.faults.empty()) throw std::runtime_error(ToString(loaded.faults.front()));
  return std::move(loaded.database);
}

/// The code names of the matches, and how they were found: "exact: CODE1 (name, pon), CODE2 (name)"; empty for no matches.
inline std::string Shown(const plddb::find::Matches& matches) {
  std::string text;
  for (const plddb::find::Match& match : matches) {
    text += text.empty() ? std::string(NameOf(match.kind)) + ": " : ", ";
    text += match.device->GetCodeName();
    std::string keys;
    for (const plddb::find::Key key : match.keys) keys += (keys.empty() ? "" : ", ") + std::string(NameOf(key));
    text += " (" + keys + ")";
  }
  return text;
}
