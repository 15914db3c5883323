#pragma once

#include "DeviceStrElement.h"

namespace plddb::internal {

/// Sets two fields in one step. Each text may be part of either field: both are used as they were at the call. std::bad_alloc
/// leaves both fields as they were. A null text keeps its field.
inline void SetBoth(DeviceStrElement& first, const char* firstText, DeviceStrElement& second, const char* secondText) {
  DeviceStrElement newFirst;
  DeviceStrElement newSecond;
  newFirst.SetString(firstText);
  newSecond.SetString(secondText);
  if (firstText != nullptr) first.Swap(newFirst);
  if (secondText != nullptr) second.Swap(newSecond);
}

}  // namespace plddb::internal
