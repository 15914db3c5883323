#include "check_lists.h"

#include <charconv>
#include <cstdint>
#include <system_error>
#include <unordered_map>
#include <vector>


namespace tool {
namespace {

using Texts = std::vector<std::string_view>;

constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// What a format makes of a text.
struct Reading {
  Reading() { items.reserve(16); }  // as many as most lists have

  std::string_view label;  // of a semicolon list
  Texts items;
  std::string_view unclosed;   // lost, since the end of an item is missing
  std::string_view behind;     // lost behind an empty item
  std::string_view outside{};  // lost outside the quotes, up to the first such word
};

// --- The formats ------------------------------------------------------------------------------------------------------------

/// "LABEL;item;item;"
Reading ReadSemicolons(std::string_view text) {
  Reading reading;
  const auto label_end = text.find(';');
  if (label_end != text.npos) reading.label = Trim(text.substr(0, label_end));
  std::string_view rest = text.substr(label_end + 1);  // without any ';' npos + 1 is 0
  for (;;) {
    const auto end = rest.find(';');
    if (end == rest.npos) {
      reading.unclosed = Trim(rest);
      return reading;
    }
    if (end == 0) {
      const auto lost = rest.find_first_not_of("; \t\n\v\f\r");
      if (lost != rest.npos) reading.behind = rest.substr(lost);
      return reading;
    }
    reading.items.push_back(Trim(rest.substr(0, end)));
    rest.remove_prefix(end + 1);
  }
}

/// What stands outside of quotes and is neither blank nor a separator.
std::string_view FirstWord(std::string_view outside) {
  const auto first = outside.find_first_not_of(",; \t\n\v\f\r");
  if (first == outside.npos) return {};
  outside.remove_prefix(first);
  return Trim(outside.substr(0, outside.find_first_of(",;")));
}

/// "\"item\", \"item\""
Reading ReadQuoted(std::string_view text) {
  Reading reading;
  for (;;) {
    const auto open = text.find('"');
    if (reading.outside.empty()) reading.outside = FirstWord(text.substr(0, open));
    if (open == text.npos) return reading;
    text.remove_prefix(open + 1);
    const auto close = text.find('"');
    if (close == text.npos) {
      reading.unclosed = Trim(text);
      return reading;
    }
    if (close == 0) {
      const auto lost = text.find_first_not_of("\",; \t\n\v\f\r");
      if (lost != text.npos) reading.behind = text.substr(lost);
      return reading;
    }
    reading.items.push_back(Trim(text.substr(0, close)));
    text.remove_prefix(close + 1);
  }
}

/// "16; 32 48"
Reading ReadTokens(std::string_view text) {
  constexpr std::string_view delimiters = "; \t\n";
  Reading reading;
  for (auto first = text.find_first_not_of(delimiters); first != text.npos; first = text.find_first_not_of(delimiters)) {
    text.remove_prefix(first);
    reading.items.push_back(text.substr(0, text.find_first_of(delimiters)));
    text.remove_prefix(reading.items.back().size());
  }
  return reading;
}

// --- The lists --------------------------------------------------------------------------------------------------------------

enum class Items { kTexts, kNumbers };

constexpr std::size_t kAnyLength = SIZE_MAX;

struct ListText {
  std::string_view element;
  std::string_view attribute;
  Reading (*read)(std::string_view text);
  Items items = Items::kTexts;
  const char* creator = nullptr;     // the attribute that makes the records which this one fills
  std::size_t longest = kAnyLength;  // a longer text is ignored
};

// clang-format off
constexpr ListText kListTexts[] = {
    {"Family",       "OperationList",              ReadQuoted},
    {"Family",       "ListProgrammingModeControl", ReadSemicolons},
    {"BScanControl", "Controls",                   ReadSemicolons},
    {"Device",       "SysIOList",                  ReadQuoted},
    {"Device",       "ListControlReg0Frequency",   ReadSemicolons},
    {"Device",       "ListControlReg0MasterClock", ReadSemicolons, Items::kTexts,   "ListControlReg0Frequency"},
    {"Device",       "ListControlReg0ClockDivider", ReadSemicolons, Items::kTexts,  "ListControlReg0Frequency"},
    {"Device",       "ListControlReg1BitName",     ReadSemicolons},
    {"Device",       "ListControlReg1Address",     ReadSemicolons, Items::kNumbers, "ListControlReg1BitName"},
    {"Device",       "ListControlReg1Column",      ReadSemicolons, Items::kNumbers, "ListControlReg1BitName"},
    {"Device",       "ListPersistent_fuseAddress", ReadSemicolons, Items::kNumbers},
    {"Device",       "ListPersistent_fuseColumn",  ReadSemicolons, Items::kNumbers, "ListPersistent_fuseAddress"},
    {"Device",       "ListControlStatusBitName",   ReadSemicolons},
    {"Device",       "ListControlStatusControl",   ReadSemicolons, Items::kTexts,   "ListControlStatusBitName"},
    {"Device",       "ListControlStatusIndex",     ReadSemicolons, Items::kNumbers, "ListControlStatusBitName"},
    {"Device",       "listAddressRange",           ReadSemicolons},
    {"Device",       "MultibootCfgAddr",           ReadTokens,     Items::kNumbers, nullptr, 1023},
    {"Device",       "MultibootAutoAdd",           ReadTokens,     Items::kNumbers, nullptr, 63},
};
// clang-format on

/// Whether lists read all of `text` as a number, and as the one that stands there.
bool IsNumber(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  int number = 0;  // as many bits as the records keep
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

// --- The rules --------------------------------------------------------------------------------------------------------------

/// Tells what is wrong with the text of one attribute.
class ListCheck {
 public:
  ListCheck(const plddb::Element& element, const plddb::Attribute& attribute, const ListText& row, Findings& findings)
      : element_(element), attribute_(attribute), row_(row), findings_(findings), reading_(row.read(attribute.value)) {}

  void Run() {
    if (attribute_.value.size() > row_.longest) {
      return Add(Code::kListLong, "a text of " + std::to_string(attribute_.value.size()) + " characters is ignored: " +
                                      std::to_string(row_.longest) + " at most; elements take more");
    }
    CheckLosses();
    if (row_.items == Items::kNumbers) CheckNumbers();
    if (row_.creator != nullptr) CheckSurplus();
  }

 private:
  void Add(Code code, std::string text) { findings_.Add(attribute_.line, attribute_.column, code, std::move(text)); }

  void CheckLosses() {
    if (!reading_.unclosed.empty()) Add(Code::kListUnclosed, Quoted(reading_.unclosed) + " is lost: nothing closes it");
    if (!reading_.behind.empty()) Add(Code::kListAfterEmpty, Quoted(reading_.behind) + " is lost behind an empty item");
    if (!reading_.outside.empty()) Add(Code::kListOutside, Quoted(reading_.outside) + " is lost outside the quotes");
  }

  void CheckNumbers() {
    if (IsNumber(reading_.label)) {
      Add(Code::kListLabel, Quoted(reading_.label) + " is passed over: what stands before the first ';' is a label");
    }
    for (const std::string_view item : reading_.items) {
      if (!item.empty() && !IsNumber(item))
        Add(Code::kListNumber, Quoted(item) + " is not read as it stands: expected a decimal number");
    }
  }

  void CheckSurplus() {
    const plddb::Attribute* const creator = FindAttribute(element_, row_.creator);
    const std::size_t records = creator == nullptr ? 0 : ReadSemicolons(creator->value).items.size();
    if (reading_.items.size() <= records) return;
    Add(Code::kListSurplus, Quoted(reading_.items[records]) + " and what follows is lost: " + row_.creator + " makes " +
                                std::to_string(records) + (records == 1 ? " record" : " records"));
  }

  const plddb::Element& element_;
  const plddb::Attribute& attribute_;
  const ListText& row_;
  Findings& findings_;
  const Reading reading_;
};

using RowsByAttribute = std::unordered_map<std::string_view, const ListText*>;

RowsByAttribute RowsOf(std::string_view element) {
  RowsByAttribute rows;
  for (const ListText& row : kListTexts) {
    if (row.element == element) rows.emplace(row.attribute, &row);
  }
  return rows;
}

void CheckElement(const plddb::Element& element, const RowsByAttribute& rows, Findings& findings) {
  for (const plddb::Attribute& attribute : element.attributes) {
    const auto row = rows.find(attribute.name);
    if (row != rows.end()) ListCheck(element, attribute, *row->second, findings).Run();
  }
}

}  // namespace

void CheckLists(const Records& records, Findings& findings) {
  const RowsByAttribute of_family = RowsOf("Family");
  const RowsByAttribute of_bscan_control = RowsOf("BScanControl");
  const RowsByAttribute of_device = RowsOf("Device");
  for (const DescribedFamily& family : records.families) {
    CheckElement(*family.element, of_family, findings);
    for (const plddb::Element& child : family.element->children) {
      if (child.name == "BScanControl") CheckElement(child, of_bscan_control, findings);
    }
  }
  for (const DescribedDevice& device : records.devices) CheckElement(*device.element, of_device, findings);
}

}  // namespace tool
