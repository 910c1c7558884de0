// Times of every workload. Compare them within one run: machines differ, and so do their moods.
#include "workloads.h"

#include <benchmark/benchmark.h>

#include <string>

int main(int argc, char **argv) {
  for (const bench::NamedWorkload &workload : bench::allWorkloads()) {
    benchmark::RegisterBenchmark(std::string(workload.name).c_str(), [&workload](benchmark::State &state) {
      auto work = workload.make();
      work->run();
      unsigned long long before = work->systemCalls();
      for (auto iteration : state) {
        (void)iteration;
        work->run();
      }
      state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * work->bytes()));
      state.counters["allocator calls"] = static_cast<double>(work->systemCalls() - before);
    });
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
