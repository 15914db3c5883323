#pragma once

#include <cstddef>
#include <string_view>

#include "descriptions/faults.h"

/// \file
/// Checks that the XML parser lacks, and fuller messages for its errors.

namespace pugi {
struct xml_parse_result;
}

namespace plddb::descriptions {

/// The length in bytes of the first character of `text`; 0 if it is not UTF-8, or a control character that XML forbids.
std::size_t CharacterLength(std::string_view text);

/// Reports every byte that is not UTF-8 and every forbidden control character. Returns false at a NUL byte: the rest is not
/// text.
bool CheckCharacters(std::string_view text, Faults& faults);

/// Reports mistakes in the attribute's value that starts at `offset` of `text`, after its opening quote: a reference that is
/// not one of XML's own (&lt; &gt; &amp; &quot; &apos; &#10; &#x0A;), or a '<'. The parser would keep both unchanged, and cut
/// the value at a &#0;.
void CheckReferences(std::string_view text, std::size_t offset, Faults& faults);

/// Reports what broke the XML of `text`.
void ReportBrokenXml(std::string_view text, const pugi::xml_parse_result& result, Faults& faults);

}  // namespace plddb::descriptions
