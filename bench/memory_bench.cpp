// The memory that a device takes. Ignore the times here; the counters, all per device, are the result.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstring>
#include <string>
#include <vector>

#include "bench/allocation_recorder.h"
#include "bench/areas.h"
#include "bench/generated_database.h"

namespace {

using bench::Block;

/// What a device was given, apart from any record: texts with their terminating zeros, and numbers.
class Payload {
 public:
  explicit Payload(const DeviceInfo& device, const bench::GeneratedDevice& data) {
    AddAll(data.texts);
    AddAll(data.ioEntries);
    for (const bench::GeneratedPackage& package : data.packages) {
      AddAll(package.texts);
      for (const bench::GeneratedAdapter& adapter : package.adapters)
        AddAll(std::vector<const char*>{adapter.vendor, adapter.name});
    }
    AddLists(device);
  }

  std::size_t Texts() const { return texts_; }
  std::size_t Numbers() const { return numbers_; }

 private:
  /// The numbers of a record, set or not: 39 of 32 bits, 12 of 16 bits, one of 8 bits and a flag.
  static constexpr std::size_t kOwnNumbers = 39 * 4 + 12 * 2 + 1 + 1;

  template <typename Values>
  void AddAll(const Values& values) {
    for (const char* const text : values) texts_ += std::strlen(text) + 1;
  }

  void AddLists(const DeviceInfo& device) {
    for (const CControlRegOne& bit : device.GetlistControlRegOne()) Add(bit.BitName, 3);
    for (const CControlStatus& bit : device.GetlistControlStatus()) {
      Add(bit.BitName, 1);
      Add(bit.Control, 0);
      Add(bit.Text, 0);
    }
    for (const std::string& range : device.GetlistAddressRange()) Add(range, 0);
  }

  void Add(const std::string& text, std::size_t numbers) {
    texts_ += text.size() + 1;
    numbers_ += numbers * sizeof(int);
  }

  std::size_t texts_ = 0;
  std::size_t numbers_ = kOwnNumbers;
};

std::size_t Requested(const std::vector<Block>& blocks) {
  std::size_t bytes = 0;
  for (const Block& block : blocks) bytes += block.size;
  return bytes;
}

/// Including what the heap adds to each block: the rest up to its next size, and one word.
std::size_t OnHeap(const std::vector<Block>& blocks) {
  std::size_t bytes = 0;
  for (const Block& block : blocks) bytes += malloc_usable_size(block.address) + sizeof(std::size_t);
  return bytes;
}

/// The records themselves: a device, its packages and adapters, and the elements of its list of texts.
std::size_t Records(const bench::GeneratedDevice& data) {
  const std::size_t packages = data.packages.size();
  return sizeof(DeviceInfo) + packages * (sizeof(Package) + data.packages[0].adapters.size() * sizeof(Adapter)) +
         data.ioEntries.size() * sizeof(DeviceStrElement);
}

void Measure(benchmark::State& state, DeviceListOwner (*make)(const bench::GeneratedDatabase&)) {
  const bench::GeneratedDatabase data(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    bench::AllocationRecorder recorder;
    const DeviceListOwner tree = make(data);
    const std::vector<Block> blocks = recorder.LiveBlocks();
    const auto perDevice = [&](std::size_t bytes) { return static_cast<double>(bytes) / static_cast<double>(state.range(0)); };
    const bench::GeneratedDevice& first = data.Families()[0].devices[0];
    const Payload payload(*tree->GetFamily(0)->GetDevice(0), first);
    state.counters["blocks"] = perDevice(blocks.size());
    state.counters["heap_bytes"] = perDevice(OnHeap(blocks));
    state.counters["requested_bytes"] = perDevice(Requested(blocks));
    state.counters["record_bytes"] = static_cast<double>(Records(first));
    state.counters["text_bytes"] = static_cast<double>(payload.Texts());
    state.counters["number_bytes"] = static_cast<double>(payload.Numbers());
  }
}

DeviceListOwner Load(const bench::GeneratedDatabase& data) { return data.Load(); }

DeviceListOwner LoadAndCopy(const bench::GeneratedDatabase& data) { return CopyDeviceList(*data.Load()); }

template <typename Make>
void Register(const char* name, Make make) {
  const auto run = [make](benchmark::State& state) { Measure(state, make); };
  auto* const benchmark = benchmark::RegisterBenchmark(name, run);
  for (const int devices : bench::kDatabaseSizes) benchmark->Arg(devices);
  benchmark->Iterations(1)->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterMemory() {
  Register("memory/loaded/library", Load);
  Register("memory/copied/library", LoadAndCopy);
}
