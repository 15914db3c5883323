#include "tests/reference/lookup_rules.h"

#include <cstring>

namespace reference {
namespace {

constexpr std::size_t kBufferSize = 1024;

void UpperCase(char* text) {
  for (char* c = text; *c != '\0'; ++c) {
    if (*c >= 'a' && *c <= 'z') *c = static_cast<char>(*c - 32);
  }
}

void LowerCase(char* text) {
  for (char* c = text; *c != '\0'; ++c) {
    if (*c >= 'A' && *c <= 'Z') *c = static_cast<char>(*c + 32);
  }
}

bool Equal(const char* a, const char* b) { return std::strcmp(a, b) == 0; }

/// Whether the two agree in every bit of the mask.
bool AgreeUnder(unsigned int mask, unsigned int a, unsigned int b) { return (a & mask) == (b & mask); }

std::string WithoutSpaces(const std::string& text) {
  std::string kept;
  for (const char c : text) {
    if (c != ' ') kept.push_back(c);
  }
  return kept;
}

/// The position of the last "-", -1 when there is none.
int LastDash(const std::string& text) {
  int position = -1;
  for (int i = 0; i < static_cast<int>(text.size()); ++i) {
    if (text[static_cast<std::size_t>(i)] == '-') position = i;
  }
  return position;
}

bool EndsInSlashOne(const std::string& text) {
  return text.size() >= 2 && text[text.size() - 2] == '/' && text[text.size() - 1] == '1';
}

}  // namespace

bool WorkBuffer::Matches(const char* text) {
  if (text != nullptr) std::strcpy(own_, text);
  std::strcpy(argument_, wanted_);
  UpperCase(own_);
  UpperCase(argument_);
  return Equal(own_, argument_);
}

int FirstByCarriedText(const std::vector<CarriedDevice>& devices, const char* key, const char* text) {
  WorkBuffer carried(text);
  for (std::size_t i = 0; i < devices.size(); ++i) {
    const bool sameText = carried.Matches(devices[i].text);
    if (devices[i].key != nullptr && Equal(devices[i].key, key) && sameText) return static_cast<int>(i);
  }
  return -1;
}

bool AcceptsIdentifier(const char* comm, unsigned int mask, unsigned int isp, unsigned int jtag, unsigned int id) {
  if (id == 0 || mask == 0) return false;
  if (Equal(comm, "ISP")) return isp != 0 && AgreeUnder(mask, isp, id);
  if (Equal(comm, "JTAG")) return jtag != 0 && AgreeUnder(mask, jtag, id);
  if (Equal(comm, "DUAL")) return AgreeUnder(0xFF, isp, id) || AgreeUnder(mask, jtag, id);
  return false;
}

bool AcceptsWholeIdentifier(const char* comm, unsigned int isp, unsigned int jtag, unsigned int id) {
  if (id == 0) return false;
  if (Equal(comm, "ISP")) return isp == id;
  if (Equal(comm, "JTAG")) return jtag == id;
  if (Equal(comm, "DUAL")) return isp == id || jtag == id;
  return false;
}

std::string NormalFullName(const std::string& fullName) {
  const std::string whole = WithoutSpaces(fullName);
  std::string kept = whole;
  const int dash = LastDash(whole);
  if (dash > 0) {
    kept = whole.substr(0, static_cast<std::size_t>(dash));
    if (EndsInSlashOne(whole)) kept += "/1";
  }
  for (char& c : kept) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return kept;
}

bool IsEntityName(const char* backupPON, const char* entityName) {
  char source[kBufferSize] = "";
  char entity[kBufferSize] = "";
  char argument[kBufferSize] = "";
  if (backupPON != nullptr) std::strcpy(source, backupPON);
  char* end = entity;
  for (const char* c = source; *c != '\0'; ++c) {
    if (*c != ' ') *end++ = *c == '-' || *c == '/' ? '_' : *c;
  }
  std::strcpy(argument, entityName);
  LowerCase(argument);
  LowerCase(entity);
  return Equal(argument, entity);
}

}  // namespace reference
