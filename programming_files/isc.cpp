// IEEE 1532 data files (.isc): "Entity xc2c64a_vq44_1532", the entity name of the device's BSDL file.

#include <algorithm>

#include "readers.h"
#include "text.h"

namespace plddb::programming_files {
namespace {

struct Entity {
  std::string_view name = {};
  std::size_t at = 0;
};

/// `word` without quotes and marks around it.
std::string_view WithoutMarks(std::string_view word) {
  while (!word.empty() && !IsWord(word.front())) word.remove_prefix(1);
  while (!word.empty() && !IsWord(word.back())) word.remove_suffix(1);
  return word;
}

/// What `words` name after the word "Entity": "Entity X;", "Entity: X", "entity name = "X"". Not in a BSDL file: "entity X is".
std::string_view NameIn(const std::vector<std::string_view>& words) {
  std::size_t i = 0;
  while (i < words.size() && UpperCase(WithoutMarks(words[i])) != "ENTITY") ++i;
  for (++i; i < words.size(); ++i) {
    const std::string_view name = WithoutMarks(words[i]);
    if (name.empty() || UpperCase(name) == "NAME") continue;
    return i + 1 < words.size() && UpperCase(words[i + 1]) == "IS" ? "" : name;
  }
  return {};
}

/// The first entity that `text` names.
Entity FindEntity(std::string_view text) {
  std::size_t start = 0;
  while (start < text.size()) {
    const std::string_view line = text.substr(start, text.find('\n', start) - start);
    const std::string_view name = NameIn(Words(line.substr(0, kLongestText)));
    if (!name.empty()) return {name, start};
    start += line.size() + 1;
  }
  return {};
}

}  // namespace

bool LooksLikeIsc(std::string_view head) {
  const std::string_view name = FindEntity(head).name;
  if (name.empty() || !IsText(head)) return false;
  const std::string upper = UpperCase(head.substr(0, 8192));
  return UpperCase(name).find("_1532") != std::string::npos || upper.find("1532") != upper.npos ||
         upper.find("ISC") != upper.npos;
}

void ReadIsc(Input& input, const KnownDevices& known, File& file) {
  const Entity entity = FindEntity(input.Window());
  std::string_view name = entity.name;
  Statement statement{Kind::kEntity, std::string(name)};
  const std::string upper = UpperCase(name);
  constexpr std::string_view suffix = "_1532";
  if (upper.size() > suffix.size() && upper.substr(upper.size() - suffix.size()) == suffix) name.remove_suffix(suffix.size());
  statement.text = name;
  const std::string_view part = name.substr(0, name.find('_'));
  statement.devices = known.WithNameIn(part).devices;
  std::string package(name.substr(std::min(part.size() + 1, name.size())));
  input.Skip(entity.at);
  statement.place = input.TextPlace();
  const Place place = statement.place;
  AddStatement(file, std::move(statement));
  if (package.empty()) return;
  Statement packageStatement{Kind::kPackage, package};
  packageStatement.place = place;
  AddStatement(file, std::move(packageStatement));
}

}  // namespace plddb::programming_files
