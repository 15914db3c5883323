#include <benchmark/benchmark.h>
#include <malloc.h>

#include <climits>

#include "bench/areas.h"

int main(int argc, char** argv) {
  // The process keeps its memory: this measures the program, not how fast the system hands out pages.
  mallopt(M_TRIM_THRESHOLD, INT_MAX);
  mallopt(M_MMAP_MAX, 0);

  RegisterParsers();
  RegisterLookups();
  RegisterTrees();
  RegisterMemory();
#ifdef PLDDB_BENCH_DESCRIPTIONS
  RegisterDescriptions();
#endif
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
