#pragma once

#include <string_view>

#include "ProgrammingFile.h"
#include "input.h"
#include "known_devices.h"

/// \file
/// One reader a format, each in a file of its name. `LooksLike...` gets what a file starts with, up to Input::kWindow bytes;
/// `Read...` adds what the file states to `file`.

namespace plddb::programming_files {

bool LooksLikeJedec(std::string_view head);
void ReadJedec(Input& input, const KnownDevices& known, File& file);

bool LooksLikeXilinxBit(std::string_view head);
void ReadXilinxBit(Input& input, const KnownDevices& known, File& file);

/// Any binary may hold a configuration stream: sets the format only when one is found.
void ReadXilinxBin(Input& input, const KnownDevices& known, File& file);

bool LooksLikeIntelHex(std::string_view head);
void ReadIntelHex(Input& input, const KnownDevices& known, File& file);

bool LooksLikeSvf(std::string_view head);
void ReadSvf(Input& input, const KnownDevices& known, File& file);

bool LooksLikeXsvf(std::string_view head);
void ReadXsvf(Input& input, const KnownDevices& known, File& file);

bool LooksLikeStapl(std::string_view head);
void ReadStapl(Input& input, const KnownDevices& known, File& file);

bool LooksLikeGowin(std::string_view head);
void ReadGowin(Input& input, const KnownDevices& known, File& file);

bool LooksLikePof(std::string_view head);
bool LooksLikeSof(std::string_view head);
void ReadPof(Input& input, const KnownDevices& known, File& file);

bool LooksLikeRbf(std::string_view head);
void ReadRbf(Input& input, const KnownDevices& known, File& file);

bool LooksLikeEfinix(std::string_view head);
void ReadEfinix(Input& input, const KnownDevices& known, File& file);

bool LooksLikeIsc(std::string_view head);
void ReadIsc(Input& input, const KnownDevices& known, File& file);

/// Recognises files that are no programming files, or of an unknown format; sets format and remark.
void RecogniseOther(std::string_view head, bool isWhole, File& file);

/// \name For all readers
///@{

/// The most faults, or statements, that a reader keeps.
constexpr std::size_t kMostFaults = 100;
constexpr std::size_t kMostStatements = 100;
/// The most characters that a reader keeps of a text in a file.
constexpr std::size_t kLongestText = 256;

void AddFault(File& file, const Place& place, std::string text);

/// Adds `statement` unless the file states the same already.
void AddStatement(File& file, Statement statement);

/// Adds a name of `kind`, with its devices by KnownDevices::WithNameIn, and what follows it as a package.
void AddNameWithPackage(File& file, const KnownDevices& known, Kind kind, std::string_view text, const Place& place);

/// Whether `text` may be that of a text file: no control characters but white space, and mostly ASCII.
bool IsText(std::string_view text);
///@}

}  // namespace plddb::programming_files
