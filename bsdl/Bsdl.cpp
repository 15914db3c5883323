#include "Bsdl.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "Files.h"
#include "bsdl/entity_reader.h"
#include "bsdl/fact_reader.h"
#include "bsdl/fault_list.h"
#include "foundation/characters.h"

namespace plddb::bsdl {
namespace {

using internal::kByteOrderMark;

constexpr std::size_t kLargestFile = std::size_t{1} << 26;  // as of description files

/// "2024-05-17T10:20:30Z" for seconds since 1970, after the civil calendar; not gmtime, which shares its answer.
std::string TimeText(std::int64_t seconds) {
  const std::int64_t day = seconds / 86400 + 719468;  // since 0000-03-01, so that a leap day is the last of its year
  const std::int64_t second = seconds % 86400;
  const std::int64_t era = day / 146097;
  const std::int64_t dayOfEra = day % 146097;
  const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t month = (5 * dayOfYear + 2) / 153;  // 0 is March
  char text[80];
  static_cast<void>(std::snprintf(
      text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", static_cast<int>(yearOfEra + era * 400 + (month >= 10 ? 1 : 0)),
      static_cast<int>(month < 10 ? month + 3 : month - 9), static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1),
      static_cast<int>(second / 3600), static_cast<int>(second / 60 % 60), static_cast<int>(second % 60)));
  return text;
}

File Unread(const std::string& name, std::string text) {
  File file;
  file.name = name;
  file.faults.push_back({name, {1, 1}, Severity::kError, std::move(text)});
  return file;
}

}  // namespace

File Load(const std::string& path) {
  FileText read = ReadDescriptionFile(path);
  if (!read.failure.empty()) return Unread(path, "cannot read the file: " + read.failure);
  File file = Parse(std::move(read.text), path);
  if (const auto time = TimeOfFile(path)) file.time = TimeText(*time);
  return file;
}

File Parse(std::string text, const std::string& name) {
  if (text.size() > kLargestFile) return Unread(name, "cannot read the file: larger than 64 MiB");
  File file;
  file.name = name;
  file.text = std::make_shared<const std::string>(std::move(text));
  std::string_view view = *file.text;
  if (view.substr(0, kByteOrderMark.size()) == kByteOrderMark) view.remove_prefix(kByteOrderMark.size());
  FaultList faults(name);
  file.entity = ReadEntity(view, faults);
  file.facts = ReadFacts(file.entity, faults);
  file.faults = faults.Take();
  return file;
}

const Instruction* FindInstruction(const Facts& facts, std::string_view name) {
  const auto found = std::find_if(facts.instructions.begin(), facts.instructions.end(),
                                  [&](const Instruction& instruction) { return instruction.name.text == name; });
  return found == facts.instructions.end() ? nullptr : &*found;
}

}  // namespace plddb::bsdl
