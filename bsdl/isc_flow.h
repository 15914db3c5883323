#pragma once

#include "bsdl/Bsdl.h"
#include "bsdl/text_cursor.h"

namespace plddb::bsdl {

/// Reads the times and sizes in the flows of IEEE 1532. Only these are looked for:
///
///   REPEAT 79872 (ISC_PROGRAM 32:? WAIT TCK 1, 305.0e-6)      79872 x 32 bits are programmed, each word takes 305 us
///   INITIALIZE (ISC_ERASE WAIT 350.0e-3)                      nothing outside a REPEAT adds bits
Programming ReadFlows(const Pieces& pieces);

}  // namespace plddb::bsdl
