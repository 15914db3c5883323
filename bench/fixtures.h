#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace bench {

/// Shared by the benchmarks with as many devices as `state` has. It is made at its first use and kept.
template <typename Fixture>
Fixture& FixtureOf(const benchmark::State& state) {
  static std::map<int, std::unique_ptr<Fixture>> fixtures;
  const int devices = static_cast<int>(state.range(0));
  auto& fixture = fixtures[devices];
  if (fixture == nullptr) fixture = std::make_unique<Fixture>(devices);
  return *fixture;
}

}  // namespace bench
