#pragma once

#include <cstddef>
#include <string_view>

#include "descriptions/faults.h"

/// \file
/// What the XML parser lets pass or says too briefly.

namespace pugi {
struct xml_parse_result;
}

namespace plddb::descriptions {

/// The bytes of the character that `text` begins with: 0 when it is not UTF-8, or a control character that XML forbids.
std::size_t CharacterLength(std::string_view text);

/// Reports every byte that is not UTF-8 and every forbidden control character. False when there is a NUL byte: what follows
/// it is not text.
bool CheckCharacters(std::string_view text, Faults& faults);

/// Reports what is wrong in the attribute's value that starts at `offset` of `text`, behind its opening quote: a reference that
/// is not one of XML's own (&lt; &gt; &amp; &quot; &apos; &#10; &#x0A;), or a '<'. The parser would keep both as they are, and
/// cut the value at a &#0;.
void CheckReferences(std::string_view text, std::size_t offset, Faults& faults);

/// Reports what broke the XML of `text`.
void ReportBrokenXml(std::string_view text, const pugi::xml_parse_result& result, Faults& faults);

}  // namespace plddb::descriptions
