// Times of every document and workload. Compare them within one run: machines differ, and so do their moods.
#include "rivals.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void add(const bench::Document &document, const bench::NamedWorkload &workload) {
  std::string name = std::string(document.name) + "/" + std::string(workload.name);
  benchmark::RegisterBenchmark(name.c_str(), [&](benchmark::State &state) {
    auto work = workload.make(document);
    work->run();
    for (auto iteration : state) {
      (void)iteration;
      work->run();
    }
    state.SetBytesProcessed(static_cast<int64_t>(static_cast<size_t>(state.iterations()) * work->bytes()));
  });
}

} // namespace

int main(int argc, char **argv) {
  const std::vector<bench::NamedWorkload> workloads = bench::everyWorkload();
  for (const bench::Document &document : bench::allDocuments())
    for (const bench::NamedWorkload &workload : workloads)
      if (workload.handles(document)) add(document, workload);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
