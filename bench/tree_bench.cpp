// Building, copying, merging and destroying whole databases, compared with the same blocks of memory without the library.

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/allocation_recorder.h"
#include "bench/areas.h"
#include "bench/fixtures.h"
#include "bench/generated_database.h"

namespace {

constexpr int kMergeTarget = 100;  // devices that a database has before another one is merged into it

/// Every block of a tree, apart from the tree: its size, its content, and the order in which the tree frees them.
class BareBlocks {
 public:
  template <typename Make>
  explicit BareBlocks(Make make) {
    DeviceListOwner tree;
    {
      bench::AllocationRecorder recorder;
      tree = make();
      Keep(recorder.LiveBlocks());
    }
    bench::AllocationRecorder recorder;
    tree.reset();
    for (const std::byte* const address : recorder.Releases()) order_.push_back(positions_.at(address));
    positions_.clear();
  }

  void AllocateAndFill() {
    const std::byte* source = image_.data();
    for (std::size_t i = 0; i < sizes_.size(); ++i) {
      blocks_[i] = ::operator new(sizes_[i]);
      std::memcpy(blocks_[i], source, sizes_[i]);
      source += sizes_[i];
    }
    benchmark::ClobberMemory();
  }

  void Free() {
    for (const unsigned int position : order_) ::operator delete(blocks_[position]);
  }

 private:
  void Keep(const std::vector<bench::Block>& blocks) {
    for (const bench::Block& block : blocks) {
      positions_[block.address] = static_cast<unsigned int>(sizes_.size());
      sizes_.push_back(static_cast<unsigned int>(block.size));
      image_.insert(image_.end(), block.address, block.address + block.size);
    }
    blocks_.resize(sizes_.size());
  }

  std::unordered_map<const std::byte*, unsigned int> positions_;
  std::vector<unsigned int> sizes_;
  std::vector<std::byte> image_;
  std::vector<unsigned int> order_;
  std::vector<void*> blocks_;
};

/// What the measurements of one size share.
struct Fixture {
  explicit Fixture(int devices) : data(devices) {}

  bench::GeneratedDatabase data;
  DeviceListOwner source = data.Load();
  BareBlocks loaded = BareBlocks([this] { return data.Load(); });
  BareBlocks copied = BareBlocks([this] { return CopyDeviceList(*source); });
};

/// Times `work()`; `before()` and `after()` run around it with the clock stopped. The first round makes memory and is not
/// timed.
template <typename Before, typename Work, typename After>
void Time(benchmark::State& state, Before before, Work work, After after) {
  before();
  work();
  after();
  for (auto _ : state) {
    state.PauseTiming();
    before();
    state.ResumeTiming();
    work();
    state.PauseTiming();
    after();
    state.ResumeTiming();
  }
}

void Nothing() {}

void Load(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  DeviceListOwner tree;
  Time(
      state, Nothing, [&] { tree = fixture.data.Load(); }, [&] { tree.reset(); });
}

void Copy(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  DeviceListOwner tree;
  Time(
      state, Nothing, [&] { tree = CopyDeviceList(*fixture.source); }, [&] { tree.reset(); });
}

void Merge(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  const bench::GeneratedDatabase present(kMergeTarget);
  DeviceListOwner tree;
  Time(
      state, [&] { tree = present.Load(); }, [&] { tree->AddNewDeviceList(fixture.source.get()); }, [&] { tree.reset(); });
}

void Destroy(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  DeviceListOwner tree;
  Time(
      state, [&] { tree = fixture.data.Load(); }, [&] { tree.reset(); }, Nothing);
}

/// Before each round a tree is built and destroyed, which leaves the heap as the library's own rounds leave it: what an
/// allocation costs depends on what was freed before.
template <typename Make>
void BuildBlocks(benchmark::State& state, BareBlocks Fixture::*blocks, Make make) {
  Fixture& fixture = bench::FixtureOf<Fixture>(state);
  BareBlocks& bare = fixture.*blocks;
  Time(
      state, [&] { make(fixture).reset(); }, [&] { bare.AllocateAndFill(); }, [&] { bare.Free(); });
}

void LoadBlocks(benchmark::State& state) {
  BuildBlocks(state, &Fixture::loaded, [](const Fixture& fixture) { return fixture.data.Load(); });
}

void CopyBlocks(benchmark::State& state) {
  BuildBlocks(state, &Fixture::copied, [](const Fixture& fixture) { return CopyDeviceList(*fixture.source); });
}

void MergeBlocks(benchmark::State& state) {
  const bench::GeneratedDatabase present(kMergeTarget);
  BuildBlocks(state, &Fixture::copied, [&](const Fixture& fixture) {
    DeviceListOwner tree = present.Load();
    tree->AddNewDeviceList(fixture.source.get());
    return tree;
  });
}

void FreeBlocks(benchmark::State& state) {
  Fixture& fixture = bench::FixtureOf<Fixture>(state);
  const auto build = [&] {
    fixture.data.Load().reset();
    fixture.loaded.AllocateAndFill();
  };
  Time(
      state, build, [&] { fixture.loaded.Free(); }, Nothing);
}

template <typename Function>
void Register(const std::string& name, Function function) {
  auto* const benchmark = benchmark::RegisterBenchmark(("tree/" + name).c_str(), function);
  for (const int devices : bench::kDatabaseSizes) benchmark->Arg(devices);
  benchmark->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterTrees() {
  Register("load/library", Load);
  Register("load/floor", LoadBlocks);
  Register("copy/library", Copy);
  Register("copy/floor", CopyBlocks);
  Register("merge/library", Merge);
  Register("merge/floor", MergeBlocks);
  Register("destroy/library", Destroy);
  Register("destroy/floor", FreeBlocks);
}
