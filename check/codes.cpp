#include "check/codes.h"

#include <iterator>

namespace plddb::check {
namespace {

struct CodeRow {
  CodeId id;
  Code code;
};

constexpr Severity kError = Severity::kError;
constexpr Severity kWarning = Severity::kWarning;

// clang-format off
constexpr CodeRow kRows[] = {
    {CodeId::kUnreadable,           {"unreadable",             kError,   "the file cannot be read", ""}},
    {CodeId::kLoad,                 {"load",                   kError,   "loading refuses the file", ""}},
    {CodeId::kIdcodeBit0,           {"idcode-bit-0",           kError,   "bit 0 of an IDCODE is 1, by the standard", ""}},
    {CodeId::kIdOutsideMask,        {"id-outside-mask",        kWarning, "identifier bits that the mask leaves out", ""}},
    {CodeId::kMaskZero,             {"mask-zero",              kError,   "an identifier with mask 0: no scan finds it", ""}},
    {CodeId::kIdShadowed,           {"id-shadowed",            kWarning, "an earlier device answers to all of its ids", "id-hidden"}},
    {CodeId::kIdShared,             {"id-shared",              kWarning, "an earlier device answers to some of its ids", ""}},
    {CodeId::kNameMissing,          {"name-missing",           kWarning, "without it a device is taken for another", ""}},
    {CodeId::kNameShadowed,         {"name-shadowed",          kWarning, "an earlier device has the name, too", "name-hidden"}},
    {CodeId::kCodeNameShadowed,     {"code-name-shadowed",     kWarning, "an earlier device has the code name, too", "code-name-hidden"}},
    {CodeId::kAliasShadowed,        {"alias-shadowed",         kWarning, "an alias name that finds another device", "alias-hidden"}},
    {CodeId::kAliasUnused,          {"alias-unused",           kWarning, "an alias name that lookups pass over", ""}},
    {CodeId::kFamilyShadowed,       {"family-shadowed",        kWarning, "an earlier family has the name, too", "family-hidden"}},
    {CodeId::kOrderingNumberShared, {"ordering-number-shared", kWarning, "an earlier device has this number, too", ""}},
    {CodeId::kFuseCountShared,      {"fuse-count-shared",      kWarning, "an earlier device has name and count, too", ""}},
    {CodeId::kAccessMode,           {"access-mode",            kError,   "an access mode other than JTAG, ISP and DUAL", ""}},
    {CodeId::kAccessModeMissing,    {"access-mode-missing",    kWarning, "lookups by access mode never find the device", ""}},
    {CodeId::kInstructionWide,      {"instruction-wide",       kError,   "a code wider than the instruction register", ""}},
    {CodeId::kBypassOnes,           {"bypass-ones",            kError,   "BYPASS is all ones, by the standard", ""}},
    {CodeId::kTextLong,             {"text-long",              kError,   "lookups compare up to 1,023 characters", ""}},
    {CodeId::kListUnclosed,         {"list-unclosed",          kError,   "an item without final ';' or quote is lost", ""}},
    {CodeId::kListAfterEmpty,       {"list-after-empty",       kError,   "what follows an empty item is lost", ""}},
    {CodeId::kListOutside,          {"list-outside",           kError,   "text outside the quotes of a list is lost", ""}},
    {CodeId::kListLabel,            {"list-label",             kWarning, "a number before the first ';' is a label", ""}},
    {CodeId::kListNumber,           {"list-number",            kError,   "an item that is read as another number", ""}},
    {CodeId::kListSurplus,          {"list-surplus",           kError,   "items beyond the records of a list are lost", ""}},
    {CodeId::kListLong,             {"list-long",              kError,   "a text of numbers too long to be read", ""}},
};
// clang-format on

constexpr bool RowsAreInTheOrderOfTheIds() {
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].id != static_cast<CodeId>(i)) return false;
  }
  return true;
}
static_assert(RowsAreInTheOrderOfTheIds());

}  // namespace

const Code& CodeOf(CodeId id) { return kRows[static_cast<std::size_t>(id)].code; }

std::vector<Code> Codes() {
  std::vector<Code> codes;
  for (const CodeRow& row : kRows) codes.push_back(row.code);
  return codes;
}

const Code* FindCode(std::string_view name) {
  for (const CodeRow& row : kRows) {
    if (row.code.name == name || (!name.empty() && row.code.formerly == name)) return &row.code;
  }
  return nullptr;
}

}  // namespace plddb::check
