#pragma once

#include "Descriptions.h"

namespace tool {

/// `described`, what Describe says of a record, with the places in the file that say it. `outline` is the element of the file
/// that made the record. Records of lists have all their fields, those with their defaults included. What no place says has
/// line 0.
///
/// A list may be given as texts in attributes of the element around it, one for each column, and as elements. The records of
/// the elements come last; a record that texts made stands where these texts start.
plddb::Element Located(const plddb::Element& described, const plddb::Element& outline);

}  // namespace tool
