#include "Bsdl.h"

#include <algorithm>
#include <utility>

#include "bsdl/entity_reader.h"
#include "bsdl/fact_reader.h"
#include "bsdl/fault_list.h"
#include "foundation/read_file.h"

namespace plddb::bsdl {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

File Unread(const std::string& name, std::string text) {
  File file;
  file.name = name;
  file.faults.push_back({name, {1, 1}, Severity::kError, std::move(text)});
  return file;
}

}  // namespace

File Load(const std::string& path) {
  std::string text;
  const std::string failure = internal::ReadFile(path, text);
  if (failure.empty()) return Parse(std::move(text), path);
  return Unread(path, "cannot read the file: " + failure);
}

File Parse(std::string text, const std::string& name) {
  if (text.size() > internal::kLargestFile) return Unread(name, "the text is larger than 64 MiB");
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
