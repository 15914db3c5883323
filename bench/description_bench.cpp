// Loading a description file, compared with parsing the same XML and then setting the same values through the library's
// setters.

#include <benchmark/benchmark.h>

#include <pugixml.hpp>
#include <string>

#include "Descriptions.h"
#include "bench/areas.h"
#include "bench/fixtures.h"
#include "bench/generated_database.h"

namespace {

using namespace std::string_literals;

void AppendAttribute(std::string& xml, const char* name, const char* value) { xml += " "s + name + "=\"" + value + '"'; }

template <typename Fields, typename Values>
void AppendTexts(std::string& xml, const Fields& fields, const Values& values) {
  for (std::size_t i = 0; i < values.size(); ++i) AppendAttribute(xml, fields[i].name, values[i]);
}

void AppendPackage(std::string& xml, const bench::GeneratedPackage& package) {
  xml += "      <Package";
  AppendTexts(xml, bench::kPackageTexts, package.texts);
  xml += ">\n";
  for (const bench::GeneratedAdapter& adapter : package.adapters) {
    xml += "        <Adapter";
    AppendAttribute(xml, "VendorName", adapter.vendor);
    AppendAttribute(xml, "AdapterName", adapter.name);
    xml += "/>\n";
  }
  xml += "      </Package>\n";
}

void AppendDevice(std::string& xml, const bench::GeneratedDevice& device) {
  xml += "    <Device";
  AppendTexts(xml, bench::kDeviceTexts, device.texts);
  for (std::size_t i = 0; i < device.numbers.size(); ++i) {
    AppendAttribute(xml, bench::kDeviceNumbers[i].name, std::to_string(device.numbers[i]).c_str());
  }
  AppendTexts(xml, bench::kDeviceColumns, device.columns);
  xml += ">\n";
  for (const char* const entry : device.ioEntries) {
    xml += "      <SysIO";
    AppendAttribute(xml, "Name", entry);
    xml += "/>\n";
  }
  for (const bench::GeneratedPackage& package : device.packages) AppendPackage(xml, package);
  xml += "    </Device>\n";
}

std::string XmlOf(const bench::GeneratedDatabase& database) {
  std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<DeviceDatabase Version=\"1.0\">\n";
  for (const bench::GeneratedFamily& family : database.Families()) {
    xml += "  <Family";
    AppendAttribute(xml, "Name", family.name);
    xml += ">\n";
    for (const bench::GeneratedDevice& device : family.devices) AppendDevice(xml, device);
    xml += "  </Family>\n";
  }
  return xml + "</DeviceDatabase>\n";
}

struct Fixture {
  explicit Fixture(int devices) : data(devices) {}

  bench::GeneratedDatabase data;
  std::string xml = XmlOf(data);
};

void Parse(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  const auto faults = plddb::ParseDescriptions(fixture.xml, "generated.xml").faults;
  if (!faults.empty()) {
    state.SkipWithError(ToString(faults.front()).c_str());
    return;
  }
  for (auto _ : state) {
    plddb::LoadResult result = plddb::ParseDescriptions(fixture.xml, "generated.xml");
    state.PauseTiming();
    result.database.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(fixture.xml.size()));
}

void ParseAlone(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  for (auto _ : state) {
    pugi::xml_document document;
    benchmark::DoNotOptimize(document.load_buffer(fixture.xml.data(), fixture.xml.size()).status);
  }
}

/// The document and the tree live together, as they do in the loader.
void ParseAndLoad(benchmark::State& state) {
  const Fixture& fixture = bench::FixtureOf<Fixture>(state);
  for (auto _ : state) {
    DeviceListOwner database;
    {
      pugi::xml_document document;
      benchmark::DoNotOptimize(document.load_buffer(fixture.xml.data(), fixture.xml.size()).status);
      database = fixture.data.Load();
    }
    state.PauseTiming();
    database.reset();
    state.ResumeTiming();
  }
}

void Register(const std::string& name, void (*function)(benchmark::State&)) {
  auto* const benchmark = benchmark::RegisterBenchmark(("description/" + name).c_str(), function);
  for (const int devices : {500, 5000}) benchmark->Arg(devices);  // a file of 50,000 is larger than the loader accepts
  benchmark->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterDescriptions() {
  Register("load/library", Parse);
  Register("load/floor", ParseAndLoad);
  Register("load/parse", ParseAlone);
}
