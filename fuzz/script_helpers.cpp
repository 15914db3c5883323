#include "fuzz/script_helpers.h"

#include <cstring>

#include "DeviceList.h"
#include "fuzz/input.h"

namespace fuzz {
namespace {

/// A buffer of exactly the length that a text needs, so that a sanitizer notices an access to the byte after it.
std::vector<char> BufferFor(const char* text) {
  std::vector<char> buffer((text == nullptr ? 0 : std::strlen(text)) + 1, '\0');
  if (text != nullptr) std::strcpy(buffer.data(), text);
  return buffer;
}

void PlayParts(const char* text, int n) {
  const LString helper;
  const std::vector<char> empty = BufferFor(text);
  const std::size_t length = empty.size() - 1;
  std::vector<char> part = empty;
  util_strncpy(part.data(), text, n, 0);
  Check(std::strlen(part.data()) <= length, "a copied part is no longer than the text");
  helper.Left(part.data(), text, n);
  Check(std::strncmp(part.data(), empty.data(), std::strlen(part.data())) == 0, "the left part is how the text starts");
  helper.Left(part.data(), part.data(), n / 2);
  helper.Right(part.data(), text, n);
  Check(std::strcmp(empty.data() + length - std::strlen(part.data()), part.data()) == 0, "the right part is how it ends");
  helper.Right(part.data(), part.data(), n / 2);
  helper.Left(nullptr, text, n);
  helper.Right(nullptr, text, n);
  util_strncpy(nullptr, text, n, 0);
}

void PlayConversions(const char* text) {
  const LString helper;
  std::vector<char> buffer = BufferFor(text);
  const std::size_t length = buffer.size() - 1;
  strlwr(buffer.data());
  strupr(buffer.data());
  Check(std::strlen(buffer.data()) == length, "a converted text has its length");
  helper.TrimLeft(buffer.data());
  helper.TrimRight(buffer.data());
  Check(std::strlen(buffer.data()) <= length, "a trimmed text is no longer");
  helper.TrimLeft(nullptr);
  helper.TrimRight(nullptr);
  strupr(static_cast<char*>(nullptr));
  strlwr(nullptr);
}

void PlaySearches(const char* text, const char* part, int start) {
  const LString helper;
  const int found = helper.Find(text, part);
  Check(found == FindSubString(text, part, 0, true), "both exact searches agree");
  if (found >= 0) Check(std::strncmp(text + found, part, std::strlen(part)) == 0, "the text is where it was found");
  const int later = FindSubString(text, part, start, false);
  Check(later < 0 || later >= start, "a search begins at its start");
  helper.Find(text, part == nullptr ? '\0' : *part);
}

bool Holds(const LObjList& list, const std::vector<LObject*>& expected) {
  if (list.GetCount() != static_cast<int>(expected.size())) return false;
  for (int i = 0; i < list.GetCount(); ++i) {
    if (list.GetAt(i) != expected[static_cast<std::size_t>(i)]) return false;
  }
  return list.GetTail() == (expected.empty() ? nullptr : expected.back());
}

}  // namespace

void PlayStrings(World&, Arguments& arguments) {
  const char* const text = arguments.Text();
  const char* const part = arguments.Text();
  const int number = static_cast<int>(arguments.Number());
  PlayParts(text, number);
  PlayConversions(text);
  PlaySearches(text, part, number);
}

void PlayElements(World&, Arguments& arguments) {
  DeviceStrElement first;
  DeviceStrElement second;
  first.SetString(arguments.Text());
  second.SetString(arguments.Text());
  const std::string before = first.GetString() == nullptr ? "" : first.GetString();
  if (first.GetString() != nullptr) first.SetString(first.GetString() + before.size() / 2);
  Check(first.GetString() == nullptr || first.GetString() == before.substr(before.size() / 2), "a text may be its own part");
  first.Swap(second);
  first.Swap(first);
}

/// Adds, inserts and removes, as the characters of a text direct, and compares with a vector.
void PlayList(World&, Arguments& arguments) {
  const char* const steps = arguments.Text();
  DeviceStrElement elements[3];
  LObjList list;
  std::vector<LObject*> expected;
  for (const char c : std::string(steps == nullptr ? "" : steps)) {
    const unsigned int step = static_cast<unsigned char>(c);
    const int size = static_cast<int>(expected.size());
    const int position = static_cast<int>(step % 8) - 1;
    LObject* const object = step % 4 == 0 ? nullptr : &elements[step % 4 - 1];
    switch (step % 3) {
      case 0:
        list.AddTail(object);
        expected.push_back(object);
        break;
      case 1:
        list.Insert(position, object);
        if (position >= 0 && position <= size) expected.insert(expected.begin() + position, object);
        break;
      default:
        list.Delete(position);
        if (position >= 0 && position < size) expected.erase(expected.begin() + position);
    }
    Check(Holds(list, expected), "a list holds what was put into it, in order");
  }
  while (!list.IsEmpty()) list.RemoveTail();
  Check(list.RemoveTail() == nullptr, "an empty list has no tail");
}

}  // namespace fuzz
