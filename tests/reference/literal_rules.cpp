#include "tests/reference/literal_rules.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace reference {
namespace {

/// A zero-terminated work buffer with room for `length` characters.
using Buffer = std::vector<char>;

Buffer EmptyBuffer(std::size_t length) { return Buffer(length + 1, '\0'); }

Buffer CopyOf(const std::string& text) {
  Buffer buffer = EmptyBuffer(text.size());
  std::strcpy(buffer.data(), text.c_str());
  return buffer;
}

int Length(const Buffer& buffer) { return static_cast<int>(std::strlen(buffer.data())); }

bool IsEmpty(const Buffer& buffer) { return buffer[0] == '\0'; }

/// The position of the first `c`, -1 when there is none.
int Find(const Buffer& buffer, char c) {
  for (int i = 0; i < Length(buffer); ++i) {
    if (buffer[static_cast<std::size_t>(i)] == c) return i;
  }
  return -1;
}

/// The position of the first "to", -1 when there is none.
int FindTo(const Buffer& buffer) {
  for (int i = 0; i + 1 < Length(buffer); ++i) {
    if (buffer[static_cast<std::size_t>(i)] == 't' && buffer[static_cast<std::size_t>(i) + 1] == 'o') return i;
  }
  return -1;
}

/// The first `n` characters: none for a count below 1, all for a count beyond the length.
Buffer Left(const Buffer& source, int n) {
  Buffer result = EmptyBuffer(source.size());
  for (int i = 0; i < n && i < Length(source); ++i) result[static_cast<std::size_t>(i)] = source[static_cast<std::size_t>(i)];
  return result;
}

/// The last `n` characters: none for a count below 1, all for a count beyond the length.
Buffer Right(const Buffer& source, int n) {
  if (n < 0) n = 0;
  int start = Length(source) - n;
  if (start < 0) start = 0;
  Buffer result = EmptyBuffer(source.size());
  std::strcpy(result.data(), source.data() + start);
  return result;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }

void TrimLeft(Buffer& buffer) {
  while (IsBlank(buffer[0])) std::memmove(buffer.data(), buffer.data() + 1, std::strlen(buffer.data()));
}

void TrimRight(Buffer& buffer) {
  while (!IsEmpty(buffer) && IsBlank(buffer[std::strlen(buffer.data()) - 1])) buffer[std::strlen(buffer.data()) - 1] = '\0';
}

std::string TextOf(const Buffer& buffer) { return buffer.data(); }

/// The low 32 bits as a signed number.
int Low32(long long value) {
  const auto bits = static_cast<std::uint32_t>(static_cast<std::uint64_t>(value));
  std::int32_t result = 0;
  std::memcpy(&result, &bits, sizeof result);
  return result;
}

}  // namespace

std::vector<std::string> SemicolonItems(const std::string& text) {
  std::vector<std::string> items;
  Buffer working = CopyOf(text);
  for (;;) {
    // Nothing left to work on: the end.
    if (IsEmpty(working)) return items;
    // The rest is the text after the first semicolon, or all of it without one.
    const int p = Find(working, ';');
    const Buffer rest = Right(working, Length(working) - 1 - p);
    // The raw item is the text before the next semicolon; without one it is empty.
    const int q = Find(rest, ';');
    Buffer item = Left(rest, q);
    // An empty raw item ends the list. Blanks have not been trimmed yet.
    if (IsEmpty(item)) return items;
    // Go on with the rest: it still begins with the item, which becomes the "label" of the next round.
    working = rest;
    TrimLeft(item);
    TrimRight(item);
    items.push_back(TextOf(item));
  }
}

std::vector<std::string> QuotedItems(const std::string& text) {
  std::vector<std::string> items;
  // An empty text holds nothing.
  if (text.empty()) return items;
  Buffer working = CopyOf(text);
  for (;;) {
    // The candidate is the text after the first quote, or all of it without one.
    const int p = Find(working, '"');
    const Buffer candidate = Right(working, Length(working) - 1 - p);
    // The raw item is the text before the next quote; without one it is empty.
    const int q = Find(candidate, '"');
    Buffer item = Left(candidate, q);
    // An empty raw item ends the list. Blanks have not been trimmed yet.
    if (IsEmpty(item)) return items;
    // Continue after the closing quote, without leading blanks.
    working = Right(candidate, Length(candidate) - 1 - q);
    TrimLeft(working);
    TrimLeft(item);
    TrimRight(item);
    items.push_back(TextOf(item));
    // Nothing left to work on: the end.
    if (IsEmpty(working)) return items;
  }
}

int ToNumber(const std::string& text) {
  static_assert(sizeof(long long) == 8, "numbers are read with 64 bits");
  return Low32(std::strtoll(text.c_str(), nullptr, 10));
}

Range ToRange(const std::string& text) {
  const Buffer whole = CopyOf(text);
  // Cut at the first "to", wherever it is.
  const int p = FindTo(whole);
  Buffer after = Right(whole, Length(whole) - 2 - p);
  Buffer before = Left(whole, p);
  TrimLeft(after);
  TrimRight(after);
  TrimLeft(before);
  TrimRight(before);
  Range range;
  range.first = ToNumber(TextOf(before));
  range.last = ToNumber(TextOf(after));
  return range;
}

std::vector<int> MultibootNumbers(const std::string& text, std::size_t bufferSize) {
  std::vector<int> numbers;
  Buffer buffer(bufferSize, '\0');
  // A text that does not fit, its terminating zero included, is ignored as a whole.
  if (text.size() < bufferSize) std::memcpy(buffer.data(), text.c_str(), text.size());
  // Each token between the four delimiters is one number.
  for (char* token = std::strtok(buffer.data(), "; \t\n"); token != nullptr; token = std::strtok(nullptr, "; \t\n")) {
    numbers.push_back(Low32(std::strtoll(token, nullptr, 10)));
  }
  return numbers;
}

std::vector<EBREntry> FreshEntries(const std::string& count) {
  const int n = ToNumber(count);
  std::vector<EBREntry> entries;
  for (long i = 1; i <= n; ++i) {
    // The name is the position, counted from 1; all else is false and zero.
    char name[32];
    static_cast<void>(std::snprintf(name, sizeof name, "%ld", i));
    EBREntry entry;
    entry.BitName = name;
    entries.push_back(entry);
  }
  return entries;
}

void NumberColumns(std::vector<EBREntry>& entries, const std::string& text) {
  if (entries.empty()) return;
  // The width in 32-bit arithmetic; a width of 0 must divide nothing.
  const Range range = ToRange(text);
  const int width = Low32(static_cast<long long>(range.last) - range.first + 1);
  if (width == 0) return;
  // An unsigned 64-bit division, the width widened with its sign: a negative one is a huge divisor.
  const std::uint64_t columns = std::uint64_t{entries.size()} * 8;
  const auto divisor = static_cast<std::uint64_t>(static_cast<std::int64_t>(width));
  const int rows = Low32(static_cast<long long>(columns / divisor));
  if (rows <= 0) return;
  // Eight columns an entry.
  const int perRow = width / 8;
  std::size_t next = 0;
  for (int row = 0; row < rows; ++row) {
    int column = range.first;
    for (int k = 0; k < perRow; ++k) {
      entries[next].Column = column;
      column = Low32(static_cast<long long>(column) + 8);
      ++next;
    }
  }
}

void NumberAddresses(std::vector<EBREntry>& entries, const std::string& text) {
  if (entries.empty()) return;
  const Range range = ToRange(text);
  entries[0].Address = range.first;
  const int firstColumn = entries[0].Column;
  int address = range.first;
  for (std::size_t k = 1; k < entries.size(); ++k) {
    // The columns are back at the first one: a new row begins, one up or one down as the range runs.
    if (entries[k].Column == firstColumn) {
      const long long step = range.first <= range.last ? 1 : -1;
      address = Low32(static_cast<long long>(address) + step);
    }
    entries[k].Address = address;
  }
}

}  // namespace reference
