// Runs one workload a number of times, for a tool that counts instructions around it. Prints the bytes of one run, and
// what storage it took. Without arguments it lists what there is to be measured.
#include "rivals.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

using bench::Document;
using bench::NamedWorkload;

void measure(const Document &document, const NamedWorkload &workload, long times) {
  auto work = workload.make(document);
  work->run(); // takes the storage that the following runs use again
  unsigned long long before = work->storage().systemCalls;
  for (; times > 0; --times)
    work->run();
  bench::Storage storage = work->storage();
  std::printf("%zu %llu %zu %zu\n", work->bytes(), storage.systemCalls - before, storage.peak, storage.result);
}

} // namespace

int main(int argc, char **argv) {
  if (argc != 1 && argc != 4) {
    std::fprintf(stderr, "usage: %s [DOCUMENT WORKLOAD TIMES]\n", argv[0]);
    return 2;
  }
  const std::vector<NamedWorkload> workloads = bench::everyWorkload();
  for (const Document &document : bench::allDocuments()) {
    for (const NamedWorkload &workload : workloads) {
      if (!workload.handles(document)) continue;
      if (argc == 1) {
        std::printf("%s %s %zu %s\n", document.name.data(), workload.name.data(), document.body.size(),
                    workload.isRival ? "rival" : "ours");
        continue;
      }
      if (document.name != argv[1] || workload.name != argv[2]) continue;
      try {
        measure(document, workload, std::strtol(argv[3], nullptr, 10));
        return 0;
      } catch (const std::exception &error) {
        std::fprintf(stderr, "%s %s: %s\n", argv[1], argv[2], error.what());
        return 1;
      }
    }
  }
  if (argc == 1) return 0;
  std::fprintf(stderr, "nothing to measure: %s %s\n", argv[1], argv[2]);
  return 2;
}
