#pragma once

#include <optional>
#include <string_view>

namespace plddb::bsdl {

/// The number that all of `text` is, such as "10", "10.0e6" or "1.E-3", which is finite and not negative; none for other texts.
/// On purpose without std::from_chars: not every standard library has that for numbers of this type. Exact up to 15 digits and
/// the power 22, and nearly so beyond.
std::optional<double> RealNumber(std::string_view text);

}  // namespace plddb::bsdl
