#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ProgrammingFile.h"
#include "known_devices.h"

/// \file
/// What a file is for, from its statements.

namespace plddb::programming_files {

using Statements = std::vector<const Statement*>;

/// A device that a file programs: most files have one, files for chains may have several.
struct Target {
  Statements ids = {};
  Statements comments = {};            ///< That name it.
  std::vector<Padding> paddings = {};  ///< One of these is for it; empty for formats that have none.
  Devices devices = {};                ///< That it can be, most likely first.
  bool isAmbiguous = false;            ///< The devices differ in what the file is about.
  std::string conflict = {};           ///< Which statements contradict each other; empty for none.
};

/// At least one.
std::vector<Target> TargetsOf(const File& file);

Statements OfKind(const File& file, Kind kind);
std::string_view FamilyOf(const Statement& signature);  ///< Empty for words that are not known.

bool Contains(const Devices& devices, const DeviceInfo* device);
std::string Names(const Devices& devices);  ///< "XC95216, XC95288XL, XC95288XV", of many only the first.

}  // namespace plddb::programming_files
