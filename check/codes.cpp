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
    {CodeId::kMakerInvalid,         {"maker-invalid",          kError,   "no maker has the maker field 0x7F", ""}},
    {CodeId::kMakerUnlike,          {"maker-unlike",           kWarning, "a maker field unlike that of the vendor's other devices", ""}},
    {CodeId::kDecimalDigits,        {"decimal-digits",         kWarning, "a decimal number that looks like hexadecimal digits", ""}},
    {CodeId::kIdLength,             {"id-length",              kError,   "an IDCODE has 32 bits, by the standard", ""}},
    {CodeId::kIdOutsideMask,        {"id-outside-mask",        kWarning, "identifier bits that the mask leaves out", ""}},
    {CodeId::kMaskZero,             {"mask-zero",              kError,   "an identifier with mask 0: no scan finds it", ""}},
    {CodeId::kIdZero,               {"id-zero",                kWarning, "an identifier of 0, which JTAG and ISP lookups skip", ""}},
    {CodeId::kIdMissing,            {"id-missing",             kWarning, "the identifier that the access mode compares is missing", ""}},
    {CodeId::kIdShadowed,           {"id-shadowed",            kWarning, "an earlier device answers to all of its ids", "id-hidden"}},
    {CodeId::kIdShared,             {"id-shared",              kWarning, "an earlier device answers to some of its ids", ""}},
    {CodeId::kNameMissing,          {"name-missing",           kWarning, "lookups compare the previous device's name instead", ""}},
    {CodeId::kNameEmpty,            {"name-empty",             kWarning, "an empty name or code name", ""}},
    {CodeId::kNameShadowed,         {"name-shadowed",          kWarning, "an earlier device has the name, too", "name-hidden"}},
    {CodeId::kCodeNameShadowed,     {"code-name-shadowed",     kWarning, "an earlier device has the code name, too", "code-name-hidden"}},
    {CodeId::kAliasShadowed,        {"alias-shadowed",         kWarning, "an alias name that finds another device", "alias-hidden"}},
    {CodeId::kAliasUnused,          {"alias-unused",           kWarning, "an alias name that lookups skip", ""}},
    {CodeId::kFamilyNameMissing,    {"family-name-missing",    kWarning, "a family that no lookup finds by name", ""}},
    {CodeId::kFamilyShadowed,       {"family-shadowed",        kWarning, "an earlier family has the name, too", "family-hidden"}},
    {CodeId::kFamilyTextUnlike,     {"family-text-unlike",     kWarning, "a device that names another family than its own", ""}},
    {CodeId::kTextBlanks,           {"text-blanks",            kWarning, "blanks at an end of a text that lookups compare", ""}},
    {CodeId::kTextSigns,            {"text-signs",             kWarning, "signs within a compared text that users do not type", ""}},
    {CodeId::kTextLong,             {"text-long",              kError,   "lookups compare up to 1,023 characters", ""}},
    {CodeId::kOrderingNumberShared, {"ordering-number-shared", kWarning, "an earlier device has this number, too", ""}},
    {CodeId::kOrderingNumberUnlike, {"ordering-number-unlike", kWarning, "an ordering number that begins with another device's name", ""}},
    {CodeId::kOrderingNumberEmpty,  {"ordering-number-empty",  kWarning, "an empty ordering number", ""}},
    {CodeId::kOrderingNumberBackup, {"ordering-number-backup", kWarning, "a backup unlike the ordering number", ""}},
    {CodeId::kPackageTwice,         {"package-twice",          kWarning, "a device lists a package twice", ""}},
    {CodeId::kPackageTypeMissing,   {"package-type-missing",   kWarning, "a package without a type", ""}},
    {CodeId::kPackageTypeCase,      {"package-type-case",      kWarning, "a package type that others write in another letter case", ""}},
    {CodeId::kJdfShared,            {"jdf-shared",             kWarning, "JEDEC file names that lookups cannot tell apart", ""}},
    {CodeId::kEntityNameShared,     {"entity-name-shared",     kWarning, "ordering numbers that give one entity name", ""}},
    {CodeId::kFuseCountShared,      {"fuse-count-shared",      kWarning, "an earlier device has name and count, too", ""}},
    {CodeId::kFullNameShared,       {"full-name-shared",       kWarning, "full names that lookups by fuse count cannot tell apart", ""}},
    {CodeId::kFuseCountAlias,       {"fuse-count-alias",       kWarning, "a fuse count that is also an alias for another device", ""}},
    {CodeId::kAccessMode,           {"access-mode",            kError,   "an access mode other than JTAG, ISP and DUAL", ""}},
    {CodeId::kAccessModeMissing,    {"access-mode-missing",    kWarning, "lookups by access mode never find the device", ""}},
    {CodeId::kIrLength,             {"ir-length",              kWarning, "instruction codes without the length of their register", ""}},
    {CodeId::kInstructionWide,      {"instruction-wide",       kError,   "a code wider than the instruction register", ""}},
    {CodeId::kInstructionShared,    {"instruction-shared",     kError,   "two instructions with one code", ""}},
    {CodeId::kInstructionUnlike,    {"instruction-unlike",     kWarning, "a family's instruction unlike that of its devices", ""}},
    {CodeId::kBypassOnes,           {"bypass-ones",            kError,   "BYPASS is all ones, by the standard", ""}},
    {CodeId::kBypassLength,         {"bypass-length",          kError,   "the bypass register has one bit, by the standard", ""}},
    {CodeId::kBackupUnlike,         {"backup-unlike",          kWarning, "a backup unlike the value that it restores", ""}},
    {CodeId::kListUnclosed,         {"list-unclosed",          kError,   "an item without final ';' or quote is lost", ""}},
    {CodeId::kListAfterEmpty,       {"list-after-empty",       kError,   "what follows an empty item is lost", ""}},
    {CodeId::kListOutside,          {"list-outside",           kError,   "text outside the quotes of a list is lost", ""}},
    {CodeId::kListLabel,            {"list-label",             kWarning, "a number before the first ';' is a label", ""}},
    {CodeId::kListNumber,           {"list-number",            kError,   "an item that is read as another number", ""}},
    {CodeId::kListSurplus,          {"list-surplus",           kError,   "items beyond the records of a list are lost", ""}},
    {CodeId::kListShort,            {"list-short",             kWarning, "fewer items than records: the rest is 0 or empty", ""}},
    {CodeId::kListLong,             {"list-long",              kError,   "a text of numbers too long to be read", ""}},
    {CodeId::kBitShared,            {"bit-shared",             kWarning, "two bits with one name, index or place", ""}},
    {CodeId::kEbrIncomplete,        {"ebr-incomplete",         kWarning, "Column or Address of a block without the other", ""}},
    {CodeId::kEbrReversed,          {"ebr-reversed",           kError,   "columns that count down are not assigned", ""}},
    {CodeId::kEbrWidth,             {"ebr-width",              kWarning, "a row of a block that is no multiple of 8 columns", ""}},
    {CodeId::kEbrRows,              {"ebr-rows",               kWarning, "a block whose entries, columns and addresses disagree", ""}},
    {CodeId::kAllowUnused,          {"allow-unused",           kWarning, "a comment that allows nothing", ""}},
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
