#include "element_reader.h"

#include <new>
#include <utility>

#include "descriptions/NearNames.h"
#include "descriptions/elements.h"
#include "descriptions/values.h"
#include "descriptions/xml_text.h"

namespace plddb::descriptions {
namespace {

/// "A, B or C".
std::string Listed(const std::vector<std::string_view>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 < names.size() ? ", " : " or ";
    text += names[i];
  }
  return text;
}

}  // namespace

bool ElementReader::Parse(bool withComments) {
  buffer_->reserve(text_.size() + 1);
  *buffer_ = text_;
  *buffer_ += '\n';  // pugixml overwrites the last character with its terminator, which would shift some offsets of errors
  // As a fragment, so that text outside the root element is not ignored; as UTF-8, so that the buffer is not converted.
  const unsigned int options = pugi::parse_default | pugi::parse_fragment | (withComments ? pugi::parse_comments : 0);
  const auto result = document_.load_buffer_inplace(buffer_->data(), buffer_->size(), options, pugi::encoding_utf8);
  if (result) return true;
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
  ReportBrokenXml(text_, result, faults_);
  return false;
}

Outline ElementReader::TakeOutline() {
  OutlineMaker maker(text_, [this](const char* inBuffer) { return OffsetOf(inBuffer); });
  Element root = maker.Root(document_);
  return {std::move(root), std::move(buffer_), maker.TakeComments()};
}

void ElementReader::AddFault(pugi::xml_node node, std::string text) {
  faults_.Add(OffsetOf(node.name()) - 1, std::move(text));  // at the '<'
}

void ElementReader::ReadFields(const FieldTable& fields, void* record, pugi::xml_node node) {
  given_.reset();
  pugi::xml_attribute attribute = node.first_attribute();
  for (const char* name = attribute.name(); *name != '\0' && !faults_.Full(); name = attribute.name()) {  // "" after the last
    CheckReferences(text_, OffsetOf(attribute.value()), faults_);
    ReadField(fields, attribute, name, node);
    attribute = attribute.next_attribute();
  }
  SetFields(fields, record, node);
}

void ElementReader::ReadField(const FieldTable& fields, pugi::xml_attribute attribute, std::string_view name,
                              pugi::xml_node node) {
  const std::size_t i = fields.Find(name);
  if (i == fields.size()) return UnknownAttribute(fields, attribute, node);
  if (given_[i]) return faults_.Add(OffsetOf(name.data()), "attribute " + std::string(name) + " is given twice");
  given_.set(i);
  const Field& field = fields[i];
  const char* const value = attribute.value();
  const bool isMissing = field.need == Need::kNotEmpty && *value == '\0';
  if (ReadValue(field.kind, value, values_[i]) && !isMissing) return;
  faults_.Add(OffsetOf(value), std::string(name) + " is " + Quoted(value) + ": expected " + Expectation(field.kind));
}

void ElementReader::SetFields(const FieldTable& fields, void* record, pugi::xml_node node) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const Field& field = fields[i];
    if (given_[i]) {
      field.set(record, values_[i]);
    } else if (field.need == Need::kBackup) {
      if (given_[i - 1]) field.set(record, values_[i - 1]);
    } else if (field.need != Need::kOptional) {
      AddFault(node, std::string(node.name()) + " needs the attribute " + std::string(field.name));
    }
  }
}

void ElementReader::UnknownAttribute(const FieldTable& fields, pugi::xml_attribute attribute, pugi::xml_node node) {
  if (IsSchemaHint(attribute.name())) return;
  std::vector<std::string_view> known;
  for (const Field& field : fields) known.push_back(field.name);
  const auto nearest = NearNames(attribute.name(), known, 1);
  std::string text = std::string(node.name()) + " has no attribute " + Quoted(attribute.name());
  if (!nearest.empty()) text += ": did you mean " + std::string(nearest.front()) + "?";
  faults_.Add(OffsetOf(attribute.name()), std::move(text));
}

void ElementReader::Unexpected(pugi::xml_node node, const std::vector<std::string_view>& known) {
  if (node.type() != pugi::node_element) return UnexpectedText(node);
  const auto nearest = NearNames(node.name(), known, 1);
  std::string text = "unknown element " + Quoted(node.name());
  if (node.parent() != document_) text += " in " + std::string(node.parent().name());
  text += ": expected " + (known.empty() ? "none here" : Listed(known));
  if (!nearest.empty() && known.size() > 1) text += "; did you mean " + std::string(nearest.front()) + "?";
  AddFault(node, std::move(text));
}

void ElementReader::UnexpectedText(pugi::xml_node node) {
  static constexpr std::string_view kCData = "<![CDATA[";
  static constexpr std::size_t kLongest = 100;  // no more is ever quoted
  const std::size_t start = OffsetOf(node.value());
  const bool isCData = node.type() == pugi::node_cdata;
  const std::size_t offset = isCData ? start - kCData.size() : text_.find_first_not_of(" \t\r\n", start);
  std::string_view found = text_.substr(offset, kLongest);
  found = found.substr(0, found.find_first_of("\r\n"));
  faults_.Add(offset, "unexpected text " + Quoted(found.substr(0, found.find('<', 1))) + ": values are written as attributes");
}

}  // namespace plddb::descriptions
