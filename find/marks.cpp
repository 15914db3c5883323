// Marks on chips: a device's name, and after it package, speed grade and temperature grade, in the orders that makers use.

#include <algorithm>
#include <cstring>

#include "find/search.h"
#include "foundation/characters.h"

namespace plddb::find {
namespace {

constexpr std::size_t kShortestName = 4;  // of a mark whose rest is not understood

using internal::IsDigit;
using internal::IsLetter;
using internal::UpperCase;

bool IsSeparator(char c) { return std::strchr("-_/., ()", c) != nullptr || internal::IsWhiteSpace(c); }

// --- The device -------------------------------------------------------------------------------------------------------------

/// How a mark begins: a name of a device, or an ordering number with its package.
struct Beginning {
  std::size_t length = 0;         // in the mark
  std::string name = {};          // as the database writes it
  const char* package = nullptr;  // the type, if known from an ordering number
};

/// Whether a mark may go on after `length` characters: a number is not cut.
bool MayEnd(std::string_view mark, std::size_t length) {
  return length == mark.size() || !IsDigit(mark[length]) || !IsDigit(mark[length - 1]);
}

/// Whether hyphens and blanks count in names: some write "XC9572 XL" and "GW1NR9".
enum class Separators { kCount, kSkipped };

/// The length of `name` at the beginning of `mark`; 0 when the mark does not begin with it.
std::size_t LengthIn(const std::string& mark, const char* name, Separators separators) {
  std::size_t at = 0;
  for (; *name != '\0'; ++name) {
    if (separators == Separators::kSkipped && IsSeparator(*name)) continue;
    while (separators == Separators::kSkipped && at != 0 && at < mark.size() && IsSeparator(mark[at])) ++at;
    if (at == mark.size() || internal::ToUpper(mark[at]) != internal::ToUpper(*name)) return 0;
    ++at;
  }
  return at != 0 && MayEnd(mark, at) ? at : 0;
}

/// The part of an ordering number after its family: "10M08SAE144" of "MAX_10_10M08SAE144". Null for one with a hyphen, which
/// has a speed grade, or is a name and a package: those are read piece by piece.
const char* OrderedPart(const Package& package) {
  const char* const number = package.GetBackupPON();
  if (number == nullptr || *number == '\0' || std::strchr(number, '-') != nullptr) return nullptr;
  const char* const family = std::strrchr(number, '_');
  return family == nullptr ? number : family + 1;
}

/// The longest that `mark` begins with.
Beginning LongestBeginning(const std::string& mark, const FamilyList& family, const DeviceInfo& device, Separators separators) {
  Beginning longest;
  const auto tryName = [&](const char* name, const char* package) {
    const std::size_t length = LengthIn(mark, name, separators);
    if (length > longest.length) longest = {length, name, package};
  };
  for (const Key key : {Key::kName, Key::kCodeName, Key::kAlias}) {
    ForEachText(family, device, key, [&](const char* name) { tryName(name, nullptr); });
  }
  internal::AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
    const char* const part = OrderedPart(package);
    if (part != nullptr && package.GetType() != nullptr) tryName(part, package.GetType());
    return false;
  });
  return longest;
}

// --- The rest ---------------------------------------------------------------------------------------------------------------

/// Whether a code is that of a package type: the same, or with one G more at the end of its letters: VQG44 and VQ44.
bool IsCodeOf(std::string_view code, std::string_view type) {
  const auto withoutG = [](std::string_view text) {
    std::string upper = UpperCase(text);
    const std::size_t digits = upper.find_first_of("0123456789");
    if (digits != upper.npos && digits > 1 && upper[digits - 1] == 'G') upper.erase(digits - 1, 1);
    return upper;
  };
  return UpperCase(code) == UpperCase(type) || withoutG(code) == UpperCase(type);
}

/// A code of a package: letters and digits. Three letters that end in G mean that it is free of lead.
bool TellsLeadFree(std::string_view code, std::string_view type) {
  const std::size_t digits = code.find_first_of("0123456789");
  const bool endsInG = digits != code.npos && digits > 2 && internal::ToUpper(code[digits - 1]) == 'G';
  return endsInG || code.size() == type.size() + 1;
}

/// The type of a described package whose code ends `run`, letters and digits of a mark, and where in the run it starts.
struct Described {
  const char* type = nullptr;
  std::size_t start = 0;
};

Described DescribedCode(const DeviceInfo& device, std::string_view run) {
  Described best = {nullptr, run.size()};
  const auto tryCode = [&](std::size_t start, const Package& package) {
    if (start < best.start) best = {package.GetType(), start};
  };
  const char* const name = device.GetName();
  internal::AnyPackage(*device.GetDevicePackage(), [&](const Package& package) {
    if (package.GetType() == nullptr || *package.GetType() == '\0') return false;
    const char* const part = OrderedPart(package);
    const char* const code = part == nullptr || name == nullptr ? nullptr : internal::AfterPrefix(part, name);
    for (std::size_t start = 0; start < run.size() && IsLetter(run[start]); ++start) {
      const std::string_view end = run.substr(start);
      if (IsCodeOf(end, package.GetType()) || (code != nullptr && *code != '\0' && IsCodeOf(end, code))) {
        tryCode(start, package);
      }
    }
    return false;
  });
  return best;
}

/// Reads what follows the name in a mark.
class RestReader {
 public:
  RestReader(std::string_view rest, const DeviceInfo& device, Mark& mark) : rest_(rest), device_(device), mark_(mark) {}

  void Read() {
    while (at_ < rest_.size()) {
      if (IsSeparator(rest_[at_])) {
        ++at_;
      } else if (!ReadSpeed() && !ReadPackage() && !ReadGrade()) {
        ReadUnknown();
      }
    }
  }

 private:
  bool EndsAt(std::size_t at) const { return at >= rest_.size() || IsSeparator(rest_[at]); }
  char At(std::size_t at) const { return at < rest_.size() ? internal::ToUpper(rest_[at]) : '\0'; }
  std::size_t EndOf(bool (*isPart)(int c), std::size_t at) const {
    while (at < rest_.size() && isPart(rest_[at])) ++at;
    return at;
  }

  /// "-10", "-1L", "-L1", "-3N": one or two digits after a hyphen, with a letter of low power or of a variant. The hyphen may
  /// be missing before a described package: "1CSG324".
  bool ReadSpeed() {
    if (!mark_.speed.empty()) return false;
    const std::size_t start = At(at_) == 'L' ? at_ + 1 : at_;
    std::size_t end = EndOf(IsDigit, start);
    if (end == start || end > start + 2) return false;
    if ((at_ == 0 || rest_[at_ - 1] != '-') && !StartsPackage(end)) return false;
    const bool hasVariant = std::strchr("LNQ", At(end)) != nullptr && At(end) != '\0';
    if (hasVariant && (EndsAt(end + 1) || StartsPackage(end + 1)) && !StartsPackage(end)) ++end;
    mark_.speed = "-" + UpperCase(rest_.substr(at_, end - at_));
    at_ = end;
    return true;
  }

  /// Letters and digits from `at` on: where a package may be.
  std::string_view RunAt(std::size_t at) const {
    const std::size_t letters = EndOf(IsLetter, at);
    const std::size_t digits = EndOf(IsDigit, letters);
    return letters == at ? std::string_view() : rest_.substr(at, digits - at);
  }

  /// Whether a described package has the code that is at `at`, whole.
  bool StartsPackage(std::size_t at) const {
    const std::string_view run = RunAt(at);
    const Described described = DescribedCode(device_, run);
    return described.type != nullptr && described.start == 0;
  }

  bool ReadPackage() {
    if (!mark_.package.empty()) return false;
    const std::string_view run = RunAt(at_);
    const Described described = DescribedCode(device_, run);
    if (described.type != nullptr) {
      if (described.start > 0) mark_.unknown.push_back(UpperCase(run.substr(0, described.start)));
      mark_.package = described.type;
      mark_.isPackageDescribed = true;
      mark_.isLeadFree = TellsLeadFree(run.substr(described.start), described.type);
    } else if (HasShapeOfPackage(run)) {
      mark_.package = UpperCase(run);
    } else {
      return false;
    }
    at_ += run.size();
    return true;
  }

  /// One to four letters and two to four digits.
  static bool HasShapeOfPackage(std::string_view run) {
    const std::size_t letters = std::min(run.find_first_of("0123456789"), run.size());
    const std::size_t digits = run.size() - letters;
    return letters >= 1 && letters <= 4 && digits >= 2 && digits <= 4;
  }

  /// What distributors and tests put after the temperature grade: "TR", "ES", or the digits of a special selection.
  bool IsAddition(std::size_t at) const {
    const std::string_view addition = rest_.substr(at, std::min(rest_.find_first_of("-_/., ()", at), rest_.size()) - at);
    const bool isNumber = addition.size() > 2 && addition.find_first_not_of("0123456789") == addition.npos;
    return isNumber || UpperCase(addition) == "TR" || UpperCase(addition) == "ES";
  }

  /// "C", "I": a temperature grade, the last letter; "C8N", "I7": with the speed grade, and N or G for one free of lead.
  bool ReadGrade() {
    if (mark_.temperature != '\0' || *TemperatureName(At(at_)) == '\0') return false;
    std::size_t end = EndOf(IsDigit, at_ + 1);
    const bool hasSpeed = end > at_ + 1 && end <= at_ + 3 && mark_.speed.empty();
    const bool isLeadFree = hasSpeed && (At(end) == 'N' || At(end) == 'G') && EndsAt(end + 1);
    if (hasSpeed ? !isLeadFree && !EndsAt(end) : !EndsAt(at_ + 1) && !IsAddition(at_ + 1)) return false;
    mark_.temperature = At(at_);
    if (hasSpeed) mark_.speed = std::string(rest_.substr(at_ + 1, end - at_ - 1));
    mark_.isLeadFree = mark_.isLeadFree || isLeadFree;
    at_ = hasSpeed ? end + (isLeadFree ? 1 : 0) : at_ + 1;
    return true;
  }

  void ReadUnknown() {
    const std::size_t start = at_;
    if (IsDigit(rest_[at_])) {
      at_ = EndOf(IsDigit, at_);  // a package may follow
    } else if (*TemperatureName(At(at_ + 1)) != '\0' && IsDigit(At(at_ + 2)) && EndsAt(at_ + 3)) {
      ++at_;  // one letter, and then a grade: "PC6"
    } else if (const std::size_t run = RunAt(at_).size(); mark_.package.empty() && HasShapeOfPackage(RunAt(at_ + run))) {
      at_ += run;  // what makers put before a package: "C6F27"
    } else {
      while (!EndsAt(at_)) ++at_;
    }
    mark_.unknown.push_back(UpperCase(rest_.substr(start, at_ - start)));
  }

  std::string_view rest_;
  const DeviceInfo& device_;
  Mark& mark_;
  std::size_t at_ = 0;
};

Mark ReadMark(const std::string& text, const Beginning& beginning, const DeviceInfo& device) {
  Mark mark;
  mark.name = beginning.name;
  if (beginning.package != nullptr) {
    mark.package = beginning.package;
    mark.isPackageDescribed = true;
  }
  RestReader(std::string_view(text).substr(beginning.length), device, mark).Read();
  return mark;
}

/// The devices with the longest name that `text` begins with.
Matches FindLongest(const Databases& databases, const std::string& text, const std::string& family, Separators separators) {
  Matches found;
  std::size_t longest = 0;
  ForEachDevice(databases, family, [&](const FamilyList& list, const DeviceInfo& device, std::size_t database) {
    const Beginning beginning = LongestBeginning(text, list, device, separators);
    if (beginning.length == 0 || beginning.length < longest) return;
    Mark mark = ReadMark(text, beginning, device);
    if (beginning.length < kShortestName && !mark.unknown.empty()) return;
    if (beginning.length > longest) found.clear();
    longest = beginning.length;
    found.push_back({&device, database, Kind::kMark, {beginning.package == nullptr ? Key::kName : Key::kPon}, std::move(mark)});
  });
  return found;
}

// --- Other forms of a mark --------------------------------------------------------------------------------------------------

/// A form in which the device's name begins the mark, and the part of the mark that it lacks.
struct Form {
  std::string text;
  std::string leftOut = {};
};

/// Marks with a part within the device's name: '#' is a digit, '@' a letter. The part is left out of the name.
constexpr struct {
  const char* shape;  ///< Of the mark's beginning.
  std::size_t at, length;
} kInsertedParts[] = {
    {"GW#@-@@#", 5, 2},   {"GW#@@-@@#", 6, 2},  // the core voltage: GW1NR-LV9 is a GW1NR-9
    {"GW#@@@-@@#", 7, 2}, {"GW#@@@@-@@#", 8, 2}, {"5@@@@#", 3, 1}, {"5@@@@@#", 4, 1},  // the hard blocks: 5CGXFC5 is a 5CGXC5
};

bool HasShape(std::string_view text, std::string_view shape) {
  const auto agrees = [](char wanted, char c) {
    return wanted == '#' ? IsDigit(c) : wanted == '@' ? IsLetter(c) : internal::ToUpper(c) == wanted;
  };
  return text.size() >= shape.size() && std::equal(shape.begin(), shape.end(), text.begin(), agrees);
}

/// All forms of `text`, the likelier first.
std::vector<Form> FormsOf(const std::string& text) {
  std::vector<Form> forms = {{text}, {"XC" + text}};
  const std::string upper = UpperCase(text);
  for (const char* const grade : {"XA", "XQ"}) {  // automotive and defence grades of devices that are called XC...
    if (upper.compare(0, 2, grade) == 0) forms.push_back({"XC" + text.substr(2), grade});
  }
  for (const auto& [shape, at, length] : kInsertedParts) {
    if (HasShape(text, shape)) forms.push_back({std::string(text).erase(at, length), upper.substr(at, length)});
  }
  return forms;
}

Matches FindForms(const Databases& databases, const std::string& text, const std::string& family, Separators separators) {
  for (const Form& form : FormsOf(text)) {
    Matches found = FindLongest(databases, form.text, family, separators);
    for (Match& match : found) {
      if (!form.leftOut.empty()) match.mark->unknown.insert(match.mark->unknown.begin(), form.leftOut);
    }
    if (!found.empty()) return found;
  }
  return {};
}

/// `text` without its first words, where they are a maker or a family: "XC7A35T" of "Xilinx XC7A35T".
std::string WithoutMaker(const Databases& databases, const std::string& text) {
  std::size_t longest = 0;
  const auto tryName = [&](const std::string& name) {
    const bool isBeginning = !name.empty() && internal::AfterPrefix(text.c_str(), name.c_str()) != nullptr;
    if (isBeginning && name.size() < text.size() && IsSeparator(text[name.size()])) longest = std::max(longest, name.size());
  };
  tryName("AMD");  // today's maker of those that are described as Xilinx
  ForEachDevice(databases, "", [&](const FamilyList& family, const DeviceInfo& device, std::size_t) {
    ForEachText(family, device, Key::kFamily, tryName);
    const std::string makers = device.GetVendor() == nullptr ? "" : device.GetVendor();
    for (std::size_t start = 0; start < makers.size();) {
      const std::size_t end = std::min(makers.find('/', start), makers.size());
      tryName(makers.substr(start, end - start));
      start = end + 1;
    }
  });
  const std::size_t rest = longest == 0 ? text.npos : text.find_first_not_of("-_/., ", longest);
  return rest == text.npos ? "" : text.substr(rest);
}

/// Also after a maker, a family, or both.
Matches FindWithMaker(const Databases& databases, std::string text, const std::string& family, Separators separators) {
  for (int words = 0; words < 3 && !text.empty(); ++words) {
    Matches found = FindForms(databases, text, family, separators);
    if (!found.empty()) return found;
    text = WithoutMaker(databases, text);
  }
  return {};
}

}  // namespace

const char* TemperatureName(char letter) {
  switch (internal::ToUpper(letter)) {
    case 'C':
      return "commercial";
    case 'E':
      return "extended";
    case 'I':
      return "industrial";
    case 'M':
      return "military";
    case 'A':
    case 'Q':
      return "automotive";
    default:
      return "";
  }
}

Matches FindMark(const Databases& databases, const std::string& text, const std::string& family) {
  if (text.size() > kLongestPart) return {};
  Matches found = FindWithMaker(databases, text, family, Separators::kCount);
  const std::size_t unknown = found.empty() ? text.npos : found.front().mark->unknown.size();
  if (unknown == 0) return found;
  Matches other = FindWithMaker(databases, text, family, Separators::kSkipped);
  return other.empty() || other.front().mark->unknown.size() >= unknown ? found : other;
}

}  // namespace plddb::find
