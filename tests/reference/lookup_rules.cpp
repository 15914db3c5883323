#include "tests/reference/lookup_rules.h"

#include <cstring>

namespace reference {
namespace {

constexpr std::size_t kBufferSize = 1024;

/// A zero-terminated work buffer. It takes texts that fit, and no others.
struct Buffer {
  char text[kBufferSize] = "";
};

void Copy(Buffer& buffer, const char* text) { std::strcpy(buffer.text, text); }

void UpperCase(Buffer& buffer) {
  for (char* c = buffer.text; *c != '\0'; ++c) {
    if (*c >= 'a' && *c <= 'z') *c = static_cast<char>(*c - 32);
  }
}

void LowerCase(Buffer& buffer) {
  for (char* c = buffer.text; *c != '\0'; ++c) {
    if (*c >= 'A' && *c <= 'Z') *c = static_cast<char>(*c + 32);
  }
}

bool Equal(const Buffer& a, const Buffer& b) { return std::strcmp(a.text, b.text) == 0; }

bool Bit(unsigned int value, int bit) { return (value >> bit) % 2 == 1; }

/// Whether the two agree in every bit of the mask.
bool AgreeUnder(unsigned int mask, unsigned int a, unsigned int b) {
  for (int bit = 0; bit < 32; ++bit) {
    if (Bit(mask, bit) && Bit(a, bit) != Bit(b, bit)) return false;
  }
  return true;
}

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

int FirstByCarriedText(const std::vector<CarriedDevice>& devices, const char* key, const char* text) {
  Buffer own;
  Buffer asked;
  for (std::size_t i = 0; i < devices.size(); ++i) {
    if (devices[i].text != nullptr) Copy(own, devices[i].text);
    Copy(asked, text);
    UpperCase(own);
    UpperCase(asked);
    const bool sameKey = devices[i].key != nullptr && std::strcmp(devices[i].key, key) == 0;
    if (sameKey && Equal(own, asked)) return static_cast<int>(i);
  }
  return -1;
}

bool AcceptsIdentifier(const std::string& comm, unsigned int mask, unsigned int isp, unsigned int jtag, unsigned int id) {
  if (id == 0 || mask == 0) return false;
  if (comm == "ISP") return isp != 0 && AgreeUnder(mask, isp, id);
  if (comm == "JTAG") return jtag != 0 && AgreeUnder(mask, jtag, id);
  if (comm == "DUAL") return AgreeUnder(0xFF, isp, id) || AgreeUnder(mask, jtag, id);
  return false;
}

bool AcceptsWholeIdentifier(const std::string& comm, unsigned int isp, unsigned int jtag, unsigned int id) {
  if (id == 0) return false;
  if (comm == "ISP") return AgreeUnder(0xFFFFFFFF, isp, id);
  if (comm == "JTAG") return AgreeUnder(0xFFFFFFFF, jtag, id);
  if (comm == "DUAL") return AgreeUnder(0xFFFFFFFF, isp, id) || AgreeUnder(0xFFFFFFFF, jtag, id);
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
  Buffer source;
  Buffer entity;
  Buffer argument;
  if (backupPON != nullptr) Copy(source, backupPON);
  std::size_t length = 0;
  for (const char* c = source.text; *c != '\0'; ++c) {
    if (*c == ' ') continue;
    entity.text[length++] = *c == '-' || *c == '/' ? '_' : *c;
  }
  Copy(argument, entityName);
  LowerCase(argument);
  LowerCase(entity);
  return Equal(argument, entity);
}

}  // namespace reference
