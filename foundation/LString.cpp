#include "LString.h"

#include <cstring>
#include <string_view>

#include "StringServices.h"
#include "characters.h"

using namespace plddb::internal;

namespace {

void Write(char* dst, std::string_view text) {
  if (!text.empty()) std::memmove(dst, text.data(), text.size());  // the text may be part of dst
  dst[text.size()] = '\0';
}

std::string_view View(const char* text) { return text == nullptr ? std::string_view() : std::string_view(text); }

}  // namespace

LString::LString() = default;
LString::~LString() = default;

int LString::Find(const char* s, char c) const {
  const char text[] = {c, '\0'};
  return c == '\0' ? -1 : FindSubString(s, text, 0, true);
}

int LString::Find(const char* s, const char* sub) const { return FindSubString(s, sub, 0, true); }

void LString::Left(char* dst, const char* src, int n) const {
  if (dst == nullptr) return;
  Write(dst, View(src).substr(0, n < 0 ? 0 : static_cast<std::size_t>(n)));
}

void LString::Right(char* dst, const char* src, int n) const {
  if (dst == nullptr) return;
  const std::string_view text = View(src);
  const std::size_t kept = n < 0 ? 0 : static_cast<std::size_t>(n);
  Write(dst, kept < text.size() ? text.substr(text.size() - kept) : text);
}

void LString::TrimLeft(char* s) const {
  if (s != nullptr) Write(s, plddb::internal::TrimLeft(std::string_view(s)));
}

void LString::TrimRight(char* s) const {
  if (s != nullptr) Write(s, plddb::internal::TrimRight(std::string_view(s)));
}
