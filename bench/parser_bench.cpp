// The text formats of the setters, over texts of 1 KB to 16 MB: time has to grow with the text and no faster.

#include <benchmark/benchmark.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DeviceListOwner.h"
#include "bench/areas.h"
#include "foundation/text_lists.h"
#include "tests/reference/literal_rules.h"

using namespace plddb::internal;

namespace {

using Texts = std::vector<std::string>;

constexpr long kSmallest = 1L << 10;
constexpr long kLargest = 16L << 20;

/// The literal rules copy the rest of the text for every item, which takes too long at 16 MB.
constexpr long kLargestLiteral = 64L << 10;

/// A text of `size` bytes: `start`, and then the items of `cycle` over and over.
std::string Repeat(std::size_t size, const std::string& start, const Texts& cycle) {
  std::string text = start;
  for (std::size_t i = 0; text.size() + cycle[i % cycle.size()].size() <= size; ++i) text += cycle[i % cycle.size()];
  return text;
}

std::string SemicolonText(long size) {
  return Repeat(static_cast<std::size_t>(size), "REG;",
                {"2.08;", "ACTIVE_LOW;", " 44.33 ;", "0 to 1023;", "PERSISTENT_SPI;", "1;", "LVCMOS33D;"});
}

std::string NumberItemsText(long size) {
  return Repeat(static_cast<std::size_t>(size), "ADDRESS;", {"0;", "17;", " 1023 ;", "65535;", "8;", "5242880;"});
}

std::string QuotedText(long size) {
  return Repeat(static_cast<std::size_t>(size), "IO ", {"\"LVCMOS33\", ", "\"LVTTL\", ", "\" SSTL18_I \" ", "\"PCI33\",\n"});
}

std::string MultibootText(long size) {
  return Repeat(static_cast<std::size_t>(size), "0", {"; 16", "; 1048576", " 48", ";\t65536", "\n7"});
}

/// Calls `visit(std::string_view)` for the text before each `end`: the least work that finds items in a text.
template <typename Visit>
void ForEachSpan(const std::string& text, char end, Visit visit) {
  const char* rest = text.data();
  const char* const last = rest + text.size();
  while (rest != last) {
    const auto* const found = static_cast<const char*>(std::memchr(rest, end, static_cast<std::size_t>(last - rest)));
    if (found == nullptr) return;
    visit(std::string_view(rest, static_cast<std::size_t>(found - rest)));
    rest = found + 1;
  }
}

long CountSpans(const std::string& text, char end) {
  long count = 0;
  ForEachSpan(text, end, [&](std::string_view) { ++count; });
  return count;
}

/// Registers a measurement of `parse(text)`, where `text` is what `make(size)` gives, over texts of up to `largest` bytes.
template <typename Make, typename Parse>
void Register(const std::string& name, Make make, Parse parse, long largest = kLargest) {
  const auto run = [make, parse](benchmark::State& state) mutable {
    std::string text = make(state.range(0));
    parse(text);  // makes memory
    for (auto _ : state) {
      benchmark::DoNotOptimize(text.data());
      benchmark::ClobberMemory();
      parse(text);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
  };
  benchmark::RegisterBenchmark(("parser/" + name).c_str(), run)->RangeMultiplier(4)->Range(kSmallest, largest);
}

/// What setters write into. Lists keep their storage between the calls, those of the floors do too.
struct Device {
  DeviceListOwner database = MakeDeviceList();
  DeviceInfo& record = *database->NewFamily()->NewDevice();
};

template <typename Make>
void RegisterMemchr(const std::string& name, Make make, char end) {
  Register(name + "/memchr", make, [end](const std::string& text) {
    auto count = CountSpans(text, end);
    benchmark::DoNotOptimize(count);
  });
}

void RegisterSemicolonList() {
  const auto device = std::make_shared<Device>();
  Register("semicolon/library", SemicolonText,
           [device](const std::string& text) { device->record.SetlistAddressRange(text.c_str()); });
  Register("semicolon/floor", SemicolonText, [texts = Texts()](const std::string& text) mutable {
    texts.clear();
    ForEachSpan(text, ';', [&](std::string_view item) { texts.emplace_back(item); });
    benchmark::ClobberMemory();
  });
  RegisterMemchr("semicolon", SemicolonText, ';');
  const auto literal = [](const std::string& text) { benchmark::DoNotOptimize(reference::SemicolonItems(text)); };
  Register("semicolon/literal", SemicolonText, literal, kLargestLiteral);
}

/// A column of numbers: the same list, written into records.
void RegisterSemicolonNumbers() {
  const auto device = std::make_shared<Device>();
  Register("semicolon-numbers/library", NumberItemsText, [device](const std::string& text) {
    device->record.SetListPersistent_fuseAddress(text.c_str());  // replaces the list
  });
  Register(
      "semicolon-numbers/floor", NumberItemsText, [records = std::vector<CPersistent_fuse>()](const std::string& text) mutable {
        records.clear();
        ForEachSpan(text, ';', [&](std::string_view item) { records.emplace_back().Address = static_cast<int>(item.size()); });
        benchmark::ClobberMemory();
      });
  RegisterMemchr("semicolon-numbers", NumberItemsText, ';');
}

/// As the library parses it, apart from the records that the setters make.
void RegisterQuotedCursor() {
  Register("quoted-cursor/library", QuotedText, [texts = Texts()](const std::string& text) mutable {
    texts.clear();
    plddb::internal::ForEachQuotedItem(text.c_str(), [&](std::string_view item) { texts.emplace_back(item); });
    benchmark::ClobberMemory();
  });
  Register("quoted-cursor/floor", QuotedText, [texts = Texts()](const std::string& text) mutable {
    texts.clear();
    bool inside = false;
    ForEachSpan(text, '"', [&](std::string_view item) {
      if (inside) texts.emplace_back(item);
      inside = !inside;
    });
    benchmark::ClobberMemory();
  });
  RegisterMemchr("quoted-cursor", QuotedText, '"');
  const auto literal = [](const std::string& text) { benchmark::DoNotOptimize(reference::QuotedItems(text)); };
  Register("quoted-cursor/literal", QuotedText, literal, kLargestLiteral);
}

using Elements = std::vector<std::unique_ptr<DeviceStrElement>>;

/// As the setter does it: each item becomes an element and a text, both on the heap.
void RegisterQuotedList() {
  const auto device = std::make_shared<Device>();
  Register("quoted/library", QuotedText, [device](const std::string& text) { device->record.SetSysIOList(text.c_str()); });
  const auto floor = [elements = std::make_shared<Elements>(), item = std::string()](const std::string& text) mutable {
    elements->clear();
    bool inside = false;
    ForEachSpan(text, '"', [&](std::string_view span) {
      if (inside) {
        item.assign(span);
        elements->push_back(std::make_unique<DeviceStrElement>());
        elements->back()->SetString(item.c_str());
      }
      inside = !inside;
    });
    benchmark::ClobberMemory();
  };
  Register("quoted/floor", QuotedText, floor);
}

void RegisterMultibootNumbers() {
  // The setter takes texts of up to 1,023 characters, so the cursor that it uses is measured.
  Register("multiboot/library", MultibootText, [numbers = std::vector<int>()](const std::string& text) mutable {
    numbers.clear();
    plddb::internal::ForEachToken(text.c_str(),
                                  [&](std::string_view token) { numbers.push_back(plddb::internal::ParseNumber(token)); });
    benchmark::ClobberMemory();
  });
  RegisterMemchr("multiboot", MultibootText, ';');
  Register("multiboot/literal", MultibootText,
           [](const std::string& text) { benchmark::DoNotOptimize(reference::MultibootNumbers(text, text.size() + 1)); });
}

}  // namespace

void RegisterParsers() {
  RegisterSemicolonList();
  RegisterSemicolonNumbers();
  RegisterQuotedCursor();
  RegisterQuotedList();
  RegisterMultibootNumbers();
}
