#include "TextForms.h"

#include "foundation/printed_forms.h"

namespace plddb {

std::string Printable(std::string_view text) { return internal::Printable(text); }

std::string Quoted(std::string_view text) { return internal::Quoted(text); }

std::string Hex(unsigned int value, int digits) { return internal::Hex(value, digits); }

}  // namespace plddb
