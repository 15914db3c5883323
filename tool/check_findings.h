#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Descriptions.h"

namespace tool {

/// An error is what can never work, or a value that is lost; a warning is what may be meant so.
enum class Severity { kWarning, kError };

/// What plddb check finds, in the order of kCodes.
enum class Code {
  kLoad,
  kIdcodeBit0,
  kIdOutsideMask,
  kMaskZero,
  kIdHidden,
  kIdShared,
  kNameMissing,
  kNameHidden,
  kCodeNameHidden,
  kAliasHidden,
  kAliasUnused,
  kFamilyHidden,
  kOrderingNumberShared,
  kFuseCountShared,
  kAccessMode,
  kAccessModeMissing,
  kInstructionWide,
  kBypassOnes,
  kTextLong,
  kListUnclosed,
  kListAfterEmpty,
  kListOutside,
  kListLabel,
  kListNumber,
  kListSurplus,
  kListLong,
};

struct CodeRow {
  Code code;
  std::string_view name;
  Severity severity;
  std::string_view meaning;
};

// clang-format off
inline constexpr CodeRow kCodes[] = {
    {Code::kLoad,                 "load",                   Severity::kError,   "loading refuses the file"},
    {Code::kIdcodeBit0,           "idcode-bit-0",           Severity::kError,   "bit 0 of an IDCODE is 1, by the standard"},
    {Code::kIdOutsideMask,        "id-outside-mask",        Severity::kWarning, "identifier bits that the mask leaves out"},
    {Code::kMaskZero,             "mask-zero",              Severity::kError,   "an identifier with mask 0: no scan finds it"},
    {Code::kIdHidden,             "id-hidden",              Severity::kWarning, "an earlier device answers to all of its ids"},
    {Code::kIdShared,             "id-shared",              Severity::kWarning, "an earlier device answers to some of its ids"},
    {Code::kNameMissing,          "name-missing",           Severity::kWarning, "without it a device is taken for another"},
    {Code::kNameHidden,           "name-hidden",            Severity::kWarning, "an earlier device has the name, too"},
    {Code::kCodeNameHidden,       "code-name-hidden",       Severity::kWarning, "an earlier device has the code name, too"},
    {Code::kAliasHidden,          "alias-hidden",           Severity::kWarning, "an alias name that finds another device"},
    {Code::kAliasUnused,          "alias-unused",           Severity::kWarning, "an alias name that lookups pass over"},
    {Code::kFamilyHidden,         "family-hidden",          Severity::kWarning, "an earlier family has the name, too"},
    {Code::kOrderingNumberShared, "ordering-number-shared", Severity::kWarning, "an earlier device has this number, too"},
    {Code::kFuseCountShared,      "fuse-count-shared",      Severity::kWarning, "an earlier device has name and count, too"},
    {Code::kAccessMode,           "access-mode",            Severity::kError,   "an access mode other than JTAG, ISP and DUAL"},
    {Code::kAccessModeMissing,    "access-mode-missing",    Severity::kWarning, "lookups by access mode never find the device"},
    {Code::kInstructionWide,      "instruction-wide",       Severity::kError,   "a code wider than the instruction register"},
    {Code::kBypassOnes,           "bypass-ones",            Severity::kError,   "BYPASS is all ones, by the standard"},
    {Code::kTextLong,             "text-long",              Severity::kError,   "lookups compare up to 1,023 characters"},
    {Code::kListUnclosed,         "list-unclosed",          Severity::kError,   "an item without final ';' or quote is lost"},
    {Code::kListAfterEmpty,       "list-after-empty",       Severity::kError,   "what follows an empty item is lost"},
    {Code::kListOutside,          "list-outside",           Severity::kError,   "text outside the quotes of a list is lost"},
    {Code::kListLabel,            "list-label",             Severity::kWarning, "a number before the first ';' is a label"},
    {Code::kListNumber,           "list-number",            Severity::kError,   "an item that is read as another number"},
    {Code::kListSurplus,          "list-surplus",           Severity::kError,   "items beyond the records of a list are lost"},
    {Code::kListLong,             "list-long",              Severity::kError,   "a text of numbers too long to be read"},
};
// clang-format on

constexpr const CodeRow& RowOf(Code code) { return kCodes[static_cast<int>(code)]; }

/// A finding, and where it stands (as in plddb::Fault).
struct Finding {
  int line;
  int column;
  Code code;
  std::string text;
};

/// The findings of one file.
class Findings {
 public:
  void Add(int line, int column, Code code, std::string text) { found_.push_back({line, column, code, std::move(text)}); }

  /// At the value of the attribute, or at the element that lacks it.
  void Add(const plddb::Element& element, std::string_view attribute, Code code, std::string text);

  /// All of them, in file order.
  std::vector<Finding> Take();

 private:
  std::vector<Finding> found_;
};

/// `text` in quotes, as findings show it.
std::string Quoted(std::string_view text);

}  // namespace tool
