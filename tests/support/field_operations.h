#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "tests/support/device_fields.h"
#include "tests/support/family_fields.h"
#include "tests/support/whole_tree.h"

/// \file
/// The ordinary accessors of the field tables, as operations of tests/exported_operations.txt.

namespace support {

struct FieldOperation {
  std::string name;  ///< "DeviceInfo::SetName(char const*)"
  bool allocates;    ///< Sets a text.
  std::function<void(WholeTree&)> call;
};

// clang-format off
template <class Number> inline constexpr const char* kTypeName = nullptr;
template <> inline constexpr const char* kTypeName<unsigned char> = "unsigned char";
template <> inline constexpr const char* kTypeName<unsigned short> = "unsigned short";
template <> inline constexpr const char* kTypeName<unsigned int> = "unsigned int";
template <> inline constexpr const char* kTypeName<int> = "int";
template <> inline constexpr const char* kTypeName<bool> = "bool";
// clang-format on

template <class Record>
void AddOperations(const std::vector<Field<Record>>& fields, const std::string& className,
                   std::vector<FieldOperation>& operations) {
  for (const auto& field : fields) {
    std::visit(
        [&, prefix = className + "::"](const auto& access) {
          using Access = std::decay_t<decltype(access)>;
          if constexpr (std::is_same_v<Access, TextField<Record>>) {
            operations.push_back({prefix + field.setters.front() + "(char const*)", true,
                                  [set = access.set](WholeTree& tree) { (tree.Get<Record>().*set)(kAnyText); }});
          } else if constexpr (kIsOrdinary<Access>) {
            operations.push_back({prefix + field.setters.front() + "(" + kTypeName<typename Access::Type> + ")", false,
                                  [set = access.set](WholeTree& tree) { (tree.Get<Record>().*set)(1); }});
          }
          if constexpr (kIsOrdinary<Access>) {
            operations.push_back({prefix + field.getter + "() const", false,
                                  [get = access.get](WholeTree& tree) { (tree.Get<Record>().*get)(); }});
          }
        },
        field.access);
  }
}

/// All ordinary accessors of devices and families.
inline std::vector<FieldOperation> FieldOperations() {
  std::vector<FieldOperation> operations;
  AddOperations(DeviceFields(), "DeviceInfo", operations);
  AddOperations(FamilyFields(), "FamilyList", operations);
  return operations;
}

}  // namespace support
