// Writes databases as a description file.

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Descriptions.h"
#include "descriptions/describe.h"

namespace plddb {
namespace {

/// Appends elements to a text.
class Printer {
 public:
  /// The start tag of `element`, or all of it when it is empty.
  void Start(const Element& element, bool isEmpty) {
    Indent();
    text_ += '<';
    text_ += element.name;
    for (const Attribute& attribute : element.attributes) PrintAttribute(attribute);
    text_ += isEmpty ? " />\n" : ">\n";
    if (!isEmpty) ++depth_;
  }

  void End(const Element& element) {
    --depth_;
    Indent();
    text_ += "</";
    text_ += element.name;
    text_ += ">\n";
  }

  /// `element` and all in it. Descriptions are a few levels deep, and so is the recursion.
  void Print(const Element& element) {
    const bool isEmpty = element.children.empty();
    Start(element, isEmpty);
    for (const Element& child : element.children) Print(child);
    if (!isEmpty) End(element);
  }

  std::string Take() { return std::move(text_); }

 private:
  void Indent() { text_.append(2 * depth_, ' '); }

  void PrintAttribute(const Attribute& attribute) {
    text_ += ' ';
    text_ += attribute.name;
    text_ += "=\"";
    PrintValue(attribute.value);
    text_ += '"';
  }

  void PrintValue(std::string_view value) {
    for (std::size_t start = 0; start < value.size();) {
      const std::size_t end = FirstReserved(value, start);
      text_ += value.substr(start, end - start);
      if (end < value.size()) text_ += Reference(value[end]);
      start = end + 1;
    }
  }

  static std::size_t FirstReserved(std::string_view value, std::size_t start) {
    const auto isReserved = [](char c) {
      return c == '&' || c == '<' || c == '>' || c == '"' || static_cast<unsigned char>(c) < ' ';
    };
    const auto rest = value.substr(start);
    return start + static_cast<std::size_t>(std::find_if(rest.begin(), rest.end(), isReserved) - rest.begin());
  }

  static std::string Reference(char c) {
    switch (c) {
      case '&':
        return "&amp;";
      case '<':
        return "&lt;";
      case '>':
        return "&gt;";
      case '"':
        return "&quot;";
      default:
        return "&#" + std::to_string(static_cast<int>(c)) + ";";
    }
  }

  std::string text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  std::size_t depth_ = 0;
};

void PrintFamily(FamilyList& family, Printer& printer) {
  descriptions::Texts texts;
  const Element element = descriptions::DescribeFamily(family, texts);
  const bool isEmpty = element.children.empty() && family.GetDevice(0) == nullptr;
  printer.Start(element, isEmpty);
  for (const Element& child : element.children) printer.Print(child);
  for (int d = 0; DeviceInfo* const device = family.GetDevice(d); ++d) {
    descriptions::Texts ofDevice;
    printer.Print(descriptions::DescribeDevice(family, *device, ofDevice));
  }
  if (!isEmpty) printer.End(element);
}

}  // namespace

std::string WriteDescriptions(const DeviceList& database) {
  return WriteDescriptions(std::vector<const DeviceList*>{&database});
}

std::string WriteDescriptions(const std::vector<const DeviceList*>& databases) {
  descriptions::Texts texts;
  const DeviceList none;
  const Element root = descriptions::DescribeDatabase(databases.empty() ? none : *databases.front(), texts);
  bool isEmpty = true;
  for (const DeviceList* const database : databases) isEmpty = isEmpty && database->GetFamily(0) == nullptr;
  Printer printer;
  printer.Start(root, isEmpty);
  for (const DeviceList* const database : databases) {
    for (int f = 0; FamilyList* const family = database->GetFamily(f); ++f) PrintFamily(*family, printer);
  }
  if (!isEmpty) printer.End(root);
  return printer.Take();
}

}  // namespace plddb
