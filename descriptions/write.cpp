// Writes databases as a description file, in a form that is easy to read and to compare between versions.

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "Descriptions.h"
#include "TextForms.h"
#include "descriptions/describe.h"
#include "descriptions/elements.h"
#include "descriptions/fields.h"

namespace plddb {
namespace {

constexpr std::size_t kWidth = 100;  // columns of a line

std::size_t FirstReserved(std::string_view value, std::size_t start) {
  const auto isReserved = [](char c) {
    return c == '&' || c == '<' || c == '>' || c == '"' || static_cast<unsigned char>(c) < ' ';
  };
  const auto rest = value.substr(start);
  return start + static_cast<std::size_t>(std::find_if(rest.begin(), rest.end(), isReserved) - rest.begin());
}

std::string Reference(char c) {
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

/// Characters that nobody sees, or that move others, are written as references: the file may be shown on a terminal.
std::string Shown(std::string_view text) {
  const auto mayBeUnseen = [](char c) { return static_cast<unsigned char>(c) > '~'; };
  if (std::none_of(text.begin(), text.end(), mayBeUnseen)) return std::string(text);
  return EscapeUnseen(text, [](std::uint32_t code) { return "&#" + std::to_string(code) + ";"; });
}

/// "Name=\"value\"".
std::string ToText(const Attribute& attribute) {
  const std::string_view value = attribute.value;
  std::string text(attribute.name);
  text += "=\"";
  for (std::size_t start = 0; start < value.size();) {
    const std::size_t end = FirstReserved(value, start);
    text += Shown(value.substr(start, end - start));
    if (end < value.size()) text += Reference(value[end]);
    start = end + 1;
  }
  return text += '"';
}

/// The comments of a file, by the elements that they belong to.
class Comments {
 public:
  explicit Comments(const Outline* outline) {
    if (outline == nullptr) return;
    for (const Comment& comment : outline->comments) {
      texts_[{comment.line, comment.column, comment.place}].push_back(comment.text);
    }
  }

  bool IsEmpty() const { return texts_.empty(); }

  /// The comments at this place of `element`, which holds its place in the file.
  const std::vector<std::string_view>& At(const Element& element, Comment::Place place) const {
    static const std::vector<std::string_view> none;
    const auto found = texts_.find({element.line, element.column, place});
    return found == texts_.end() ? none : found->second;
  }

 private:
  std::map<std::tuple<int, int, Comment::Place>, std::vector<std::string_view>> texts_;
};

/// The group of each attribute of `element`. They come in the order of the table, except for the lists at its end.
std::vector<descriptions::Group> GroupsOf(const Element& element) {
  using descriptions::Group;
  std::vector<Group> groups(element.attributes.size(), Group::kNone);
  if (element.name != "Device") return groups;
  const descriptions::FieldTable& fields = descriptions::FieldsOf<DeviceInfo>();
  for (std::size_t i = 0; i < groups.size(); ++i) {
    for (std::size_t row = fields.Find(element.attributes[i].name); row < fields.size() && groups[i] == Group::kNone; --row) {
      groups[i] = fields[row].group;
    }
  }
  return groups;
}

/// Appends elements to a text. For an element from a file, `located` is the same element with its places there.
class Printer {
 public:
  /// The start tag of `element`, or all of it if it is empty.
  void Start(const Element& element, bool isEmpty) {
    Indent();
    const std::string_view end = isEmpty ? "/>" : ">";
    const std::size_t start = text_.size();
    text_ += '<';
    text_ += element.name;
    const std::size_t firstAttribute = text_.size();
    for (const Attribute& attribute : element.attributes) text_ += ' ' + ToText(attribute);
    if (2 * depth_ + text_.size() - start + end.size() > kWidth) {
      text_.resize(firstAttribute);
      PrintInLines(element, end.size());
    }
    text_ += end;
    text_ += '\n';
    if (!isEmpty) ++depth_;
  }

  void End(const Element& element) {
    --depth_;
    Indent();
    text_ += "</";
    text_ += element.name;
    text_ += ">\n";
  }

  void PrintComments(const std::vector<std::string_view>& comments) {
    for (const std::string_view comment : comments) {
      Indent();
      PrintComment(comment);
    }
  }

  /// On the line that was printed last.
  void PrintCommentsBeside(const std::vector<std::string_view>& comments) {
    for (const std::string_view comment : comments) {
      text_.back() = ' ';
      PrintComment(comment);
    }
  }

  std::string Take() { return std::move(text_); }

 private:
  void Indent() { text_.append(2 * depth_, ' '); }

  void PrintComment(std::string_view comment) {
    text_ += "<!--";
    text_ += Shown(comment);
    text_ += "-->\n";
  }

  /// One group of attributes per line; a group that is too long takes several lines.
  void PrintInLines(const Element& element, std::size_t endSize) {
    const std::size_t indent = 2 * depth_ + 1 + element.name.size() + 1;
    const auto groups = GroupsOf(element);
    std::size_t column = indent - 1;
    for (std::size_t i = 0; i < groups.size(); ++i) {
      const std::string attribute = ToText(element.attributes[i]);
      const std::size_t needed = 1 + attribute.size() + (i + 1 == groups.size() ? endSize : 0);
      const bool startsLine = i > 0 && (groups[i] != groups[i - 1] || column + needed > kWidth);
      text_ += startsLine ? '\n' + std::string(indent, ' ') : " ";
      text_ += attribute;
      column = (startsLine ? indent : column + 1) + attribute.size();
    }
  }

  std::string text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  std::size_t depth_ = 0;
};

using Place = Comment::Place;

/// Prints one element with its comments. `content` prints everything else in it.
template <typename Content>
void PrintAround(const Element& element, const Element& located, bool isEmpty, const Comments& comments, Printer& printer,
                 Content content) {
  const auto& besideStart = comments.At(located, Place::kBesideStart);
  const auto& beforeEnd = comments.At(located, Place::kBeforeEnd);
  isEmpty = isEmpty && besideStart.empty() && beforeEnd.empty();
  printer.PrintComments(comments.At(located, Place::kBefore));
  printer.Start(element, isEmpty);
  printer.PrintCommentsBeside(besideStart);
  content();
  printer.PrintComments(beforeEnd);
  if (!isEmpty) printer.End(element);
  printer.PrintCommentsBeside(comments.At(located, Place::kBeside));
}

/// `element` and everything in it. Recursive: descriptions are only a few levels deep.
void Print(const Element& element, const Element& located, const Comments& comments, Printer& printer) {
  PrintAround(element, located, element.children.empty(), comments, printer, [&] {
    for (std::size_t i = 0; i < element.children.size(); ++i) {
      Print(element.children[i], located.children[i], comments, printer);
    }
  });
}

/// `described` with its places, if these are needed.
Element Placed(const Element& described, const Element* outline, const Comments& comments) {
  return outline == nullptr || comments.IsEmpty() ? described : Located(described, *outline);
}

/// The next child of a kind; null without an outline.
class Children {
 public:
  Children(const Element* parent, std::string_view name) : parent_(parent), name_(name) {}

  const Element* Next() {
    while (parent_ != nullptr && next_ < parent_->children.size()) {
      const Element& child = parent_->children[next_++];
      if (child.name == name_) return &child;
    }
    return nullptr;
  }

 private:
  const Element* parent_;
  std::string_view name_;
  std::size_t next_ = 0;
};

void PrintFamily(FamilyList& family, const Element* outline, const Comments& comments, Printer& printer) {
  descriptions::Texts texts;
  const Element element = descriptions::DescribeFamily(family, texts);
  const Element located = Placed(element, outline, comments);
  const bool isEmpty = element.children.empty() && family.GetDevice(0) == nullptr;
  PrintAround(element, located, isEmpty, comments, printer, [&] {
    for (std::size_t i = 0; i < element.children.size(); ++i) {
      Print(element.children[i], located.children[i], comments, printer);
    }
    Children devices(outline, "Device");
    for (int d = 0; DeviceInfo* const device = family.GetDevice(d); ++d) {
      descriptions::Texts ofDevice;
      const Element described = descriptions::DescribeDevice(family, *device, ofDevice);
      Print(described, Placed(described, devices.Next(), comments), comments, printer);
    }
  });
}

void PrintFamilies(const Source& source, const Comments& comments, Printer& printer) {
  Children families(source.outline == nullptr ? nullptr : &source.outline->root, "Family");
  for (int f = 0; FamilyList* const family = source.database->GetFamily(f); ++f) {
    PrintFamily(*family, families.Next(), comments, printer);
  }
}

/// The families of a further file, between the comments of its root.
void PrintFurther(const Source& source, Printer& printer) {
  const Comments comments(source.outline);
  const Element& root = source.outline == nullptr ? Element() : source.outline->root;
  printer.PrintComments(comments.At(root, Place::kBefore));
  printer.PrintComments(comments.At(root, Place::kBesideStart));
  PrintFamilies(source, comments, printer);
  printer.PrintComments(comments.At(root, Place::kBeforeEnd));
  printer.PrintComments(comments.At(root, Place::kBeside));
  printer.PrintComments(comments.At(Element(), Place::kBeforeEnd));
}

/// Whether a source after the first has something to write.
bool HasContent(const Source& source) {
  return source.database->GetFamily(0) != nullptr || (source.outline != nullptr && !source.outline->comments.empty());
}

Element RootOf(const Source& source, descriptions::Texts& texts) {
  Element root = descriptions::DescribeDatabase(*source.database, texts);
  if (source.outline == nullptr) return root;
  for (const Attribute& attribute : source.outline->root.attributes) {
    if (descriptions::IsSchemaHint(attribute.name)) root.attributes.push_back(attribute);
  }
  return root;
}

}  // namespace

std::string WriteDescriptions(const DeviceList& database) { return WriteDescriptions(std::vector<Source>{{&database}}); }

std::string WriteDescriptions(const std::vector<Source>& sources) {
  const DeviceList none;
  const Source first = sources.empty() ? Source{&none} : sources.front();
  std::vector<Source> further = sources;
  if (!further.empty()) further.erase(further.begin());
  descriptions::Texts texts;
  const Element root = RootOf(first, texts);
  const Element outline = first.outline == nullptr ? Element() : first.outline->root;
  const bool isEmpty = first.database->GetFamily(0) == nullptr && std::none_of(further.begin(), further.end(), HasContent);
  const Comments comments(first.outline);
  Printer printer;
  PrintAround(root, outline, isEmpty, comments, printer, [&] {
    PrintFamilies(first, comments, printer);
    for (const Source& source : further) PrintFurther(source, printer);
  });
  printer.PrintComments(comments.At(Element(), Place::kBeforeEnd));
  return printer.Take();
}

}  // namespace plddb
