#pragma once

#include <string>

#include "descriptions/fields.h"

namespace plddb::descriptions {

/// Reads an attribute's text; false if it is not a value of `kind`. `value` lends `text`.
///
///   numbers   "12", "0x0C"; "-12" where the kind is signed   no blanks, no plus sign, and within the kind's limits
///   flags     "true", "false"
///   ranges    "0 to 31", "6 to 5"                            two decimal numbers, with any number of blanks
bool ReadValue(Kind kind, const char* text, Value& value);

/// The form of a value of `kind`: "a number from 0 to 255, decimal or 0x-hexadecimal".
std::string Expectation(Kind kind);

}  // namespace plddb::descriptions
