#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The rules of the text formats written out literally: step by step, with work buffers and the string helpers that the rules
/// are stated in. Slow on purpose, and independent of the library, which has to give the same answers.
namespace reference {

/// The items of a semicolon item list, "LABEL;1;2;".
std::vector<std::string> SemicolonItems(const std::string& text);

/// The items of a quoted item list, `"A", "B"`.
std::vector<std::string> QuotedItems(const std::string& text);

/// A number at the start of a text: base 10, the low 32 bits of a 64-bit number.
int ToNumber(const std::string& text);

struct Range {
  int first = 0;
  int last = 0;
};

/// A range text, "0 to 31".
Range ToRange(const std::string& text);

/// The numbers of a multiboot text, read through a zero-filled buffer of `bufferSize` bytes.
std::vector<int> MultibootNumbers(const std::string& text, std::size_t bufferSize);

/// One control byte of an embedded memory block.
struct EBREntry {
  std::string BitName;
  bool Value = false;
  int Address = 0;
  int Column = 0;
};

/// The fresh entries for a text that holds a count.
std::vector<EBREntry> FreshEntries(const std::string& count);

/// Gives the entries their columns, row by row, from a range text.
void NumberColumns(std::vector<EBREntry>& entries, const std::string& range);

/// Gives the entries their addresses from a range text; the columns tell where a row starts.
void NumberAddresses(std::vector<EBREntry>& entries, const std::string& range);

}  // namespace reference
