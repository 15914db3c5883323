// BSDL files: whatever the text is, its faults lead to places in it; and what is described loads as a description file.

#include "Bsdl.h"

#include <algorithm>

#include "fuzz/input.h"

using fuzz::Check;

namespace bsdl = plddb::bsdl;

namespace {

void CheckFaults(const std::vector<bsdl::Fault>& faults, std::size_t size) {
  for (const bsdl::Fault& fault : faults) {
    Check(fault.place.line >= 1 && static_cast<std::size_t>(fault.place.line) <= size + 1, "a fault has a line of the text");
    Check(fault.place.column >= 1 && static_cast<std::size_t>(fault.place.column) <= size + 1,
          "a fault has a column of the text");
    Check(!fault.text.empty() && fault.text.find('\n') == fault.text.npos, "a fault is one line of text");
  }
}

/// All strings show pieces of the text.
void CheckPieces(const bsdl::File& file) {
  const char* const first = file.text->data();
  for (const bsdl::Attribute& attribute : file.entity.attributes) {
    for (const bsdl::Piece& piece : attribute.text) {
      Check(piece.text.data() >= first && piece.text.data() + piece.text.size() <= first + file.text->size(),
            "a piece lies in the text");
    }
  }
}

void CheckDescriptions(const bsdl::Import& import) {
  const std::string text = bsdl::Write(import);
  plddb::Outline outline;
  const plddb::LoadResult loaded = plddb::ParseDescriptions(text, "written.xml", &outline);
  Check(loaded.database != nullptr, "what is written loads");
  Check(plddb::WriteDescriptions(*loaded.database) == plddb::WriteDescriptions(*import.database),
        "what is written is the same");
  const bsdl::Addition once = bsdl::AddTo("<DeviceDatabase/>", "my.xml", import);
  Check(once.faults.empty(), "what is described can be put into a file");
  Check(bsdl::AddTo(once.text, "my.xml", import).text == once.text, "what is there is not added again");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const bsdl::File file = bsdl::Parse(std::string(reinterpret_cast<const char*>(data), size), "input.bsd");
  CheckFaults(file.faults, size);
  CheckPieces(file);
  const bsdl::Import import = bsdl::Describe({file}, {"FAMILY", "", "", "", 1e-6});
  Check((import.database == nullptr) == bsdl::HasErrors(import.faults), "there is a database or there are errors");
  CheckFaults(import.faults, size);
  if (import.database != nullptr) CheckDescriptions(import);
  return 0;
}
