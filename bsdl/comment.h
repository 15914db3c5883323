#pragma once

#include <string>

#include "bsdl/Bsdl.h"

namespace plddb::bsdl {

/// The parts of `facts` that have no place in a description, one subject a line, each line after six blanks and with its line
/// end: the other instructions and codes, the capture pattern, the maximum TCK, and so on. Fit for an XML comment.
std::string CommentOn(const Facts& facts);

/// `text` as it may be in an XML comment: ASCII, no "--", no line ends.
std::string CommentText(std::string_view text);

}  // namespace plddb::bsdl
